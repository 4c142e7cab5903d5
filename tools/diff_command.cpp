// diff: tells what programs read differently from two files.
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "commands.h"
#include "json.h"
#include "layers.h"
#include "open_file.h"
#include "refusal.h"
#include "shown_section.h"
#include "standard_input.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

using Json = nlohmann::ordered_json;

struct DiffArguments {
  std::string old_file, new_file;
  bool comments = false;
  bool as_json = false;
};

std::string CommentOf(const LayeredSection& setting, bool inline_comment) {
  return setting.section->GetComment("", inline_comment);
}

// Compares two layered trees and prints each difference as it is found.
class Comparison {
 public:
  explicit Comparison(const DiffArguments& given) : given_(given) {}

  void CompareComments(const std::string& path, const LayeredSection& old_one,
                       const LayeredSection& new_one);
  void CompareBelow(const LayeredSection& old_one, const LayeredSection& new_one);

  bool differs() const { return differs_; }

 private:
  void Compare(const LayeredSection& old_one, const LayeredSection& new_one);
  void PrintAll(char sign, const LayeredSection& setting);
  void PrintLine(char sign, const std::string& path, const std::string& text);
  void PrintJson(const char* change, const LayeredSection* old_one, const LayeredSection* new_one);
  Json Description(const LayeredSection& setting) const;

  const DiffArguments& given_;
  bool differs_ = false;
};

std::string PathText(const LayeredSection& setting) { return NameToUtf8(PathOf(setting.section)); }

std::string ValueLine(const LayeredSection& setting) {
  const std::string value = ValueText(setting.section);
  return KindOf(setting) + (value.empty() ? "" : " " + value);
}

void Comparison::PrintLine(char sign, const std::string& path, const std::string& text) {
  differs_ = true;
  std::cout << sign << ' ' << path << ' ' << text << '\n';
}

Json Comparison::Description(const LayeredSection& setting) const {
  Json object = Json::object();
  if (setting.parent != nullptr) {
    object = ValueObject(setting.section);
    object["kind"] = KindOf(setting);
  }
  if (!given_.comments) return object;
  const std::string comment = CommentOf(setting, false);
  const std::string inline_comment = CommentOf(setting, true);
  if (!comment.empty()) object["comment"] = TextToUtf8(comment);
  if (!inline_comment.empty()) object["inline_comment"] = TextToUtf8(inline_comment);
  return object;
}

void Comparison::PrintJson(const char* change, const LayeredSection* old_one,
                           const LayeredSection* new_one) {
  differs_ = true;
  Json object = {{"path", ""}, {"change", change}};
  if (old_one != nullptr) {
    object["path"] = PathText(*old_one);
    object["old"] = Description(*old_one);
  }
  if (new_one != nullptr) {
    object["path"] = PathText(*new_one);
    object["new"] = Description(*new_one);
  }
  std::cout << object.dump() << '\n';
}

// A setting that one file alone has, and all below it.
void Comparison::PrintAll(char sign, const LayeredSection& setting) {
  if (!given_.as_json) {
    PrintLine(sign, PathText(setting), ValueLine(setting));
  } else if (sign == '+') {
    PrintJson("added", nullptr, &setting);
  } else {
    PrintJson("removed", &setting, nullptr);
  }
  for (const auto& child : setting.children) PrintAll(sign, *child);
}

void Comparison::CompareComments(const std::string& path, const LayeredSection& old_one,
                                 const LayeredSection& new_one) {
  if (!given_.comments) return;
  for (const bool inline_comment : {false, true}) {
    const std::string before = CommentOf(old_one, inline_comment);
    const std::string after = CommentOf(new_one, inline_comment);
    if (before == after) continue;
    if (given_.as_json) return PrintJson("changed", &old_one, &new_one);
    PrintLine('~', path,
              std::string(inline_comment ? "inline comment " : "comment ") +
                  Json(TextToUtf8(before)).dump() + " -> " + Json(TextToUtf8(after)).dump());
  }
}

void Comparison::Compare(const LayeredSection& old_one, const LayeredSection& new_one) {
  const bool same = SameValue(old_one.section, new_one.section);
  if (!same && given_.as_json) {
    PrintJson("changed", &old_one, &new_one);
  } else {
    const std::string path = PathText(old_one);
    if (!same) PrintLine('~', path, ValueLine(old_one) + " -> " + ValueLine(new_one));
    CompareComments(path, old_one, new_one);
  }
  CompareBelow(old_one, new_one);
}

void Comparison::CompareBelow(const LayeredSection& old_one, const LayeredSection& new_one) {
  for (const auto& child : old_one.children) {
    const auto found = new_one.by_name.find(child->section->GetName(""));
    if (found == new_one.by_name.end()) {
      PrintAll('-', *child);
    } else {
      Compare(*child, *found->second);
    }
  }
  for (const auto& child : new_one.children) {
    if (old_one.by_name.count(child->section->GetName("")) == 0) PrintAll('+', *child);
  }
}

int ShowDifferences(const DiffArguments& given) {
  RefuseUnless(given.old_file != StandardInput || given.new_file != StandardInput,
               "-: standard input is one file, and diff compares two", ExitWrongCall);
  const std::unique_ptr<Config> old_config = LoadInput(given.old_file);
  const std::unique_ptr<Config> new_config = LoadInput(given.new_file);
  const auto old_top = Layered(old_config.get(), given.old_file);
  const auto new_top = Layered(new_config.get(), given.new_file);
  Comparison comparison(given);
  comparison.CompareComments("(head)", *old_top, *new_top);
  comparison.CompareBelow(*old_top, *new_top);
  return comparison.differs() ? ExitRefused : ExitDone;
}

}  // namespace

void AddDiffCommand(Command* tool) {
  const auto given = std::make_shared<DiffArguments>();
  Command diff = tool->AddCommand("diff", "Print which settings differ between two files");
  diff.AddText("OLD_FILE", &given->old_file, "The file as it was").Require();
  diff.AddText("NEW_FILE", &given->new_file, "The file as it is").Require();
  diff.AddFlag("--comments", &given->comments, "Compare the comments of settings too");
  diff.AddFlag("--json", &given->as_json, "As JSON, an object a line");
  diff.SetAction([given] { return ShowDifferences(*given); });
}

}  // namespace confgrove::Tool
