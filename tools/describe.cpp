// The parts of the description, manual pages, and the files that hold it all.
#include "describe.h"

#include <filesystem>
#include <fstream>

#include "refusal.h"

namespace confgrove::Tool {

std::vector<std::string> NamesOf(const OptionText& option) {
  std::vector<std::string> names;
  for (const std::string& name : option.short_names) names.push_back("-" + name);
  for (const std::string& name : option.long_names) names.push_back("--" + name);
  return names;
}

std::string Joined(const std::vector<std::string>& texts, const char* between) {
  std::string joined;
  for (const std::string& text : texts) joined += (&text == &texts.front() ? "" : between) + text;
  return joined;
}

namespace {

// Text for troff, within a line or as one.
std::string Roff(const std::string& text) {
  std::string result;
  bool line_begins = true;
  for (const char c : text) {
    if (line_begins && (c == '.' || c == '\'')) result += "\\&";
    if (c == '\\') {
      result += "\\e";
    } else if (c == '-') {
      result += "\\-";
    } else {
      result += c;
    }
    line_begins = c == '\n';
  }
  return result;
}

std::string Bold(const std::string& text) { return "\\fB" + Roff(text) + "\\fR"; }
std::string Italic(const std::string& text) { return "\\fI" + Roff(text) + "\\fR"; }

// What stands behind the name of an option, as in the help: "TEXT", "{a,b}".
std::string TypeOf(const OptionText& option) {
  return option.words.empty() ? option.type : "{" + Joined(option.words, ",") + "}";
}

std::string Usage(const OptionText& option) {
  std::string usage;
  if (option.name.empty()) {
    usage = Bold(NamesOf(option).back());
    if (option.takes_value) usage += " " + Italic(TypeOf(option));
  } else {
    usage = Italic(option.name);
  }
  if (option.repeats) usage += "...";
  return option.is_required ? usage : "[" + usage + "]";
}

void WriteHead(std::ostream& out, const std::string& name, const std::string& description) {
  out << ".TH \"" << name << "\" \"1\" \"\" \"confgrove " CONFGROVE_VERSION "\"\n"
      << ".SH NAME\n"
      << Roff(name) << " \\- " << Roff(description) << '\n';
}

void WriteOptions(std::ostream& out, const char* title, const std::vector<OptionText>& options) {
  if (options.empty()) return;
  out << ".SH " << title << '\n';
  for (const OptionText& option : options) {
    out << ".TP\n";
    if (option.name.empty()) {
      std::string names;
      for (const std::string& name : NamesOf(option)) {
        names += (names.empty() ? "" : ", ") + Bold(name);
      }
      out << names << (option.takes_value ? " " + Italic(TypeOf(option)) : "") << '\n';
    } else {
      out << Italic(option.name) << '\n';
    }
    out << Roff(option.about) << '\n';
  }
}

// "Exit code: 0 done, ..." without the title.
std::string ExitStatus(const ToolText& tool) {
  const std::size_t colon = tool.notes.find(": ");
  return colon == std::string::npos ? tool.notes : tool.notes.substr(colon + 2);
}

void WriteFoot(std::ostream& out, const ToolText& tool, const std::vector<std::string>& others) {
  out << ".SH EXIT STATUS\n" << Roff(ExitStatus(tool)) << '\n';
  out << ".SH SEE ALSO\n";
  for (const std::string& other : others) {
    out << ".BR " << Roff(other) << (&other == &others.back() ? " (5)\n" : " (1),\n");
  }
}

std::string PageOf(const ToolText& tool, const CommandText& command) {
  return tool.name + "-" + command.name;
}

void WriteManual(std::ostream& out, const ToolText& tool) {
  WriteHead(out, tool.name, tool.about);
  out << ".SH SYNOPSIS\n" << Bold(tool.name) << ' ' << Italic("COMMAND") << " ...\n";
  out << ".SH COMMANDS\nEach has a page of its own.\n";
  std::vector<std::string> others;
  for (const CommandText& command : tool.commands) {
    others.push_back(PageOf(tool, command));
    out << ".TP\n" << Bold(command.name) << '\n' << Roff(command.about) << '\n';
  }
  WriteOptions(out, "OPTIONS", tool.options);
  others.push_back(tool.name);
  WriteFoot(out, tool, others);
}

void WriteManual(std::ostream& out, const ToolText& tool, const CommandText& command) {
  WriteHead(out, PageOf(tool, command), command.about);
  out << ".SH SYNOPSIS\n" << Bold(tool.name + " " + command.name);
  for (const OptionText& option : command.options) {
    if (!option.is_help) out << "\n" << Usage(option);
  }
  for (const OptionText& argument : command.arguments) out << "\n" << Usage(argument);
  out << '\n';
  WriteOptions(out, "ARGUMENTS", command.arguments);
  WriteOptions(out, "OPTIONS", command.options);
  if (!command.notes.empty()) out << ".SH NOTES\n" << Roff(command.notes) << '\n';
  WriteFoot(out, tool, {tool.name, tool.name});
}

template <typename Write>
void WriteFile(const std::filesystem::path& file, Write write) {
  std::ofstream out(file, std::ios::binary);
  write(out);
  out.close();
  if (!out) throw Refusal("cannot write " + file.string());
}

}  // namespace

void Describe(const ToolText& tool, const std::string& directory) {
  const std::filesystem::path top(directory);
  const std::filesystem::path pages = top / "man1";
  std::filesystem::create_directories(pages);
  WriteFile(pages / (tool.name + ".1"), [&](std::ostream& out) { WriteManual(out, tool); });
  for (const CommandText& command : tool.commands) {
    WriteFile(pages / (PageOf(tool, command) + ".1"),
              [&](std::ostream& out) { WriteManual(out, tool, command); });
  }
  WriteFile(top / "bash", [&](std::ostream& out) { WriteBash(out, tool); });
  WriteFile(top / "zsh", [&](std::ostream& out) { WriteZsh(out, tool); });
  WriteFile(top / "fish", [&](std::ostream& out) { WriteFish(out, tool); });
}

}  // namespace confgrove::Tool
