// The commands that read: check, get, list and imports.
#include <algorithm>
#include <iostream>

#include "commands.h"
#include "json.h"
#include "messages.h"
#include "open_file.h"
#include "refusal.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

[[noreturn]] void RefuseMissing(const std::string& file, const std::string& path) {
  const std::string shown = "'" + NameToUtf8(path) + "'";
  const std::string fault = FirstRefusal();
  throw Refusal(file + (fault.empty() ? ": no section " + shown : ": " + shown + ": " + fault));
}

void PrintNumbers(Config& config, const std::string& path) {
  std::vector<double> numbers(
      static_cast<std::size_t>(config.GetDoubles(nullptr, 0, path.c_str())));
  config.GetDoubles(numbers.data(), static_cast<std::int32_t>(numbers.size()), path.c_str());
  for (const double number : numbers) std::cout << NumberText(number) << '\n';
}

const char* KindAt(Config& config, const std::string& path) {
  switch (config.GetType(path.c_str())) {
    case SectionType::String: return "string";
    case SectionType::Number:
      return config.GetDoubles(nullptr, 0, path.c_str()) == 1 ? "number" : "array";
    default: return config.GetSectionCount(path.c_str()) > 0 ? "block" : "none";
  }
}

// The node of the section at `path`, which can stand in an import.
Node FindListed(OpenFile& file, const std::string& path) {
  ForgetMessages();
  Section* const section = file.config->GetSection(path.c_str());
  if (section == nullptr) RefuseMissing(file.name.shown, path);
  auto* const owner = dynamic_cast<Config*>(section->GetTop());
  if (owner == file.config.get()) return *FindNode(file.outline.top, path);
  const std::string owner_path = FileName::ForSystem(owner->GetFileName());
  Node node = *FindNode(ReadOutline(ReadText(owner_path, owner_path)).top, path);
  FillNode(section, &node);
  return node;
}

void PrintNode(const Node& node, const std::string& path) {
  const std::string value = ValueText(node);
  std::cout << NameToUtf8(path) << ' ' << KindOf(node) << (value.empty() ? "" : " ") << value
            << '\n';
  for (const Node& child : node.children) PrintNode(child, path + '.' + child.name);
}

// When the file of an import was last changed.
std::string TimeOf(const FileName& file, const std::string& import) {
  // A new configuration doesn't read its file, and knows its time. Blanks around a name are kept
  // in an import and nowhere else.
  std::string name = file.Compose(import);
  if (name.front() == ' ') name.insert(0, "./");
  const std::unique_ptr<Config> config(ConfCreate(name.c_str(), ConfCreateNew));
  if (FileName::ForSystem(config->GetFileName()) != FileName::ForSystem(file.directory + name))
    return "-";
  const char* const time = config->GetFileTime();
  return time == nullptr ? "-" : time;
}

void PrintImports(const FileName& file, const Outline& outline, std::size_t depth) {
  std::vector<std::string> imports = outline.imports;
  std::sort(imports.begin(), imports.end());  // as lookups go through them
  for (const std::string& import : imports) {
    const std::string path = file.PathOf(import);
    std::cout << std::string(2 * depth, ' ') << path << "  " << TimeOf(file, import) << '\n';
    PrintImports(file, ReadOutline(ReadText(path, path)), depth + 1);
  }
}

}  // namespace

int Check(const std::vector<std::string>& files) {
  int result = ExitDone;
  for (const std::string& file : files) {
    try {
      LoadConfig(FileName(file), true);
    } catch (const Refusal& refusal) {
      result = ExitRefused;
      Complain(refusal.what());
    }
  }
  return result;
}

int Get(const std::string& file, const std::string& path, Question question) {
  const std::unique_ptr<Config> config = LoadConfig(FileName(file));
  const std::string own_path = PathFromShell(path);
  const char* const at = own_path.c_str();
  if (config->GetSectionCount(at) < 0) RefuseMissing(file, own_path);
  const std::string shown = "'" + NameToUtf8(own_path) + "'";
  if (question == Question::Comment || question == Question::InlineComment) {
    const bool is_inline = question == Question::InlineComment;
    const std::string comment = config->GetComment(at, is_inline);
    if (comment.empty()) throw Refusal(file + ": no such comment at " + shown);
    std::cout << comment << (is_inline ? "\n" : "");
    return ExitDone;
  }
  if (question == Question::Type) {
    std::cout << KindAt(*config, own_path) << '\n';
    return ExitDone;
  }
  switch (config->GetType(at)) {
    case SectionType::String: std::cout << config->GetString(at) << '\n'; break;
    case SectionType::Number: PrintNumbers(*config, own_path); break;
    default: throw Refusal(file + ": no value at " + shown);
  }
  return ExitDone;
}

int List(const std::string& file, const std::string& path, bool as_json) {
  OpenFile opened{FileName(file)};
  const std::string own_path = PathFromShell(path);
  if (own_path.empty()) {
    const Node& top = opened.outline.top;
    if (as_json) std::cout << ToJson(top, opened.outline.imports) << '\n';
    if (!as_json) {
      for (const Node& child : top.children) PrintNode(child, child.name);
    }
    return ExitDone;
  }
  const Node node = FindListed(opened, own_path);
  if (as_json) {
    std::cout << ToJson(node) << '\n';
  } else {
    PrintNode(node, own_path);
  }
  return ExitDone;
}

int Imports(const std::string& file) {
  const OpenFile opened{FileName(file)};
  const char* const time = opened.config->GetFileTime();
  std::cout << file << "  " << (time == nullptr ? "-" : time) << '\n';
  PrintImports(opened.name, opened.outline, 1);
  return ExitDone;
}

}  // namespace confgrove::Tool
