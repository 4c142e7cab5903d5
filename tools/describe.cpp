// The parts of the description, manual pages, and the files that hold it all.
#include "describe.h"

#include <filesystem>
#include <fstream>

#include "refusal.h"

namespace confgrove::Tool {

std::vector<const CLI::App*> CommandsOf(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

std::vector<const CLI::Option*> OptionsOf(const CLI::App& command) {
  return command.get_options([](const CLI::Option* option) {
    return option->nonpositional() && !option->get_group().empty();
  });
}

std::vector<const CLI::Option*> PositionalsOf(const CLI::App& command) {
  return command.get_options([](const CLI::Option* option) {
    return option->get_positional() && !option->get_group().empty();
  });
}

bool TakesValue(const CLI::Option& option) { return option.get_items_expected_max() > 0; }

bool Repeats(const CLI::Option& option) { return option.get_items_expected_max() > 1; }

std::vector<std::string> NamesOf(const CLI::Option& option) {
  std::vector<std::string> names;
  for (const std::string& name : option.get_snames()) names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
  return names;
}

std::vector<std::string> WordsOf(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  const std::size_t begin = type.find('{');
  const std::size_t end = type.find('}');
  if (begin == std::string::npos || end == std::string::npos) return {};
  return CLI::detail::split(type.substr(begin + 1, end - begin - 1), ',');
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
std::string TypeOf(const CLI::Option& option) {
  const std::vector<std::string> words = WordsOf(option);
  return words.empty() ? option.get_type_name() : "{" + CLI::detail::join(words, ",") + "}";
}

std::string Usage(const CLI::Option& option) {
  std::string usage;
  if (option.nonpositional()) {
    usage = Bold(NamesOf(option).back());
    if (TakesValue(option)) usage += " " + Italic(TypeOf(option));
  } else {
    usage = Italic(option.get_name(true));
  }
  if (Repeats(option)) usage += "...";
  return option.get_required() ? usage : "[" + usage + "]";
}

void WriteHead(std::ostream& out, const std::string& name, const std::string& description) {
  out << ".TH \"" << name << "\" \"1\" \"\" \"confgrove " CONFGROVE_VERSION "\"\n"
      << ".SH NAME\n"
      << Roff(name) << " \\- " << Roff(description) << '\n';
}

void WriteOptions(std::ostream& out, const char* title,
                  const std::vector<const CLI::Option*>& options) {
  if (options.empty()) return;
  out << ".SH " << title << '\n';
  for (const CLI::Option* option : options) {
    out << ".TP\n";
    if (option->nonpositional()) {
      std::string names;
      for (const std::string& name : NamesOf(*option)) {
        names += (names.empty() ? "" : ", ") + Bold(name);
      }
      out << names << (TakesValue(*option) ? " " + Italic(TypeOf(*option)) : "") << '\n';
    } else {
      out << Italic(option->get_name(true)) << '\n';
    }
    out << Roff(option->get_description()) << '\n';
  }
}

// "Exit code: 0 done, ..." without the title.
std::string ExitStatus(const CLI::App& app) {
  const std::string footer = app.get_footer();
  const std::size_t colon = footer.find(": ");
  return colon == std::string::npos ? footer : footer.substr(colon + 2);
}

void WriteFoot(std::ostream& out, const CLI::App& app, const std::vector<std::string>& others) {
  out << ".SH EXIT STATUS\n" << Roff(ExitStatus(app)) << '\n';
  out << ".SH SEE ALSO\n";
  for (const std::string& other : others) {
    out << ".BR " << Roff(other) << (&other == &others.back() ? " (5)\n" : " (1),\n");
  }
}

std::string PageOf(const CLI::App& app, const CLI::App& command) {
  return app.get_name() + "-" + command.get_name();
}

template <typename Write>
void WriteFile(const std::filesystem::path& file, Write write) {
  std::ofstream out(file, std::ios::binary);
  write(out);
  out.close();
  if (!out) throw Refusal("cannot write " + file.string());
}

void Describe(const CLI::App& app, const std::filesystem::path& directory) {
  const std::filesystem::path pages = directory / "man1";
  std::filesystem::create_directories(pages);
  WriteFile(pages / (app.get_name() + ".1"), [&](std::ostream& out) { WriteManual(out, app); });
  for (const CLI::App* command : CommandsOf(app)) {
    WriteFile(pages / (PageOf(app, *command) + ".1"),
              [&](std::ostream& out) { WriteManual(out, app, *command); });
  }
  WriteFile(directory / "bash", [&](std::ostream& out) { WriteBash(out, app); });
  WriteFile(directory / "zsh", [&](std::ostream& out) { WriteZsh(out, app); });
  WriteFile(directory / "fish", [&](std::ostream& out) { WriteFish(out, app); });
}

}  // namespace

void WriteManual(std::ostream& out, const CLI::App& app) {
  WriteHead(out, app.get_name(), app.get_description());
  out << ".SH SYNOPSIS\n" << Bold(app.get_name()) << ' ' << Italic("COMMAND") << " ...\n";
  out << ".SH COMMANDS\nEach has a page of its own.\n";
  std::vector<std::string> others;
  for (const CLI::App* command : CommandsOf(app)) {
    others.push_back(PageOf(app, *command));
    out << ".TP\n" << Bold(command->get_name()) << '\n' << Roff(command->get_description()) << '\n';
  }
  WriteOptions(out, "OPTIONS", OptionsOf(app));
  others.push_back(app.get_name());
  WriteFoot(out, app, others);
}

void WriteManual(std::ostream& out, const CLI::App& app, const CLI::App& command) {
  WriteHead(out, PageOf(app, command), command.get_description());
  out << ".SH SYNOPSIS\n" << Bold(app.get_name() + " " + command.get_name());
  for (const CLI::Option* option : OptionsOf(command)) {
    if (option != command.get_help_ptr()) out << "\n" << Usage(*option);
  }
  for (const CLI::Option* positional : PositionalsOf(command)) out << "\n" << Usage(*positional);
  out << '\n';
  WriteOptions(out, "ARGUMENTS", PositionalsOf(command));
  WriteOptions(out, "OPTIONS", OptionsOf(command));
  // A command without a footer has that of `app`.
  if (command.get_footer() != app.get_footer())
    out << ".SH NOTES\n" << Roff(command.get_footer()) << '\n';
  WriteFoot(out, app, {app.get_name(), app.get_name()});
}

void AddDescribe(CLI::App* app) {
  const auto describe = [app](const std::string& directory) {
    Describe(*app, directory);
    throw CLI::Success();
  };
  app->add_option_function<std::string>("--describe", describe)->group("");
}

}  // namespace confgrove::Tool
