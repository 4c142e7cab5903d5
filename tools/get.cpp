// get: prints a value, its kind or its comments.
#include <iostream>
#include <memory>
#include <optional>

#include "commands.h"
#include "messages.h"
#include "nearest.h"
#include "open_file.h"
#include "refusal.h"
#include "shown_section.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

struct GetArguments {
  std::string file;
  std::vector<std::string> paths;
  std::optional<std::string> instead;
  bool as_type = false;
  bool as_comment = false;
  bool as_inline_comment = false;
};

void RefuseWithNearest(const std::string& file, const std::string& path, Config* config) {
  const std::string nearest = IsPath(path) ? NearestPath(config, path) : "";
  if (nearest.empty()) RefuseMissing(file, path);
  throw Refusal(file + ": no section '" + NameToUtf8(path) + "'; the nearest that is there is '" +
                NameToUtf8(nearest) + "'");
}

void Print(const GetArguments& given, Config* config, const std::string& path) {
  const std::string& file = given.file;
  Section* const section = FindSection(config, path.c_str());
  if (section == nullptr && given.instead && IsPath(path)) {
    std::cout << *given.instead << '\n';
    return;
  }
  if (section == nullptr) RefuseWithNearest(file, path, config);
  const std::string shown = "'" + NameToUtf8(path) + "'";
  if (given.as_comment || given.as_inline_comment) {
    const std::string comment = section->GetComment("", given.as_inline_comment);
    if (comment.empty()) throw Refusal(file + ": no such comment at " + shown);
    std::cout << comment << (given.as_inline_comment ? "\n" : "");
    return;
  }
  Section* const end = FollowLinks(config, section).back();
  const SectionType type = OwnType(end);
  if (given.as_type) {
    std::cout << (type == SectionType::Link ? "none" : KindOf(end)) << '\n';
    return;
  }
  switch (type) {
    case SectionType::String: std::cout << end->GetString("") << '\n'; break;
    case SectionType::Number:
      for (const double number : NumbersOf(end)) std::cout << NumberText(number) << '\n';
      break;
    default: throw Refusal(file + ": no value at " + shown);
  }
}

// Each path by itself: one that is missing keeps none back.
int Get(const GetArguments& given) {
  const std::unique_ptr<Config> config = LoadInput(given.file);
  int result = ExitDone;
  for (const std::string& path : given.paths) {
    try {
      Print(given, config.get(), PathFromShell(path));
    } catch (const Refusal& refusal) {
      Complain(refusal.what());
      result = refusal.code;
    }
  }
  return result;
}

}  // namespace

void AddGet(Command* tool) {
  const auto given = std::make_shared<GetArguments>();
  Command get = tool->AddCommand("get", "Print values, an array one number a line");
  get.AddFile(&given->file);
  get.AddTexts("PATH", &given->paths, "Names joined by dots: limits.rate").Require();
  const Option type_flag = get.AddFlag("--type", &given->as_type,
                                       "Print its kind: string, number, array, block or none");
  const Option comment_flag =
      get.AddFlag("--comment", &given->as_comment, "Print the comment above it").Exclude(type_flag);
  const Option inline_flag =
      get.AddFlag("--inline", &given->as_inline_comment, "Print the comment behind it")
          .Exclude(type_flag)
          .Exclude(comment_flag);
  get.AddText("--default", &given->instead, "What to print for a path that isn't there")
      .Exclude(type_flag)
      .Exclude(comment_flag)
      .Exclude(inline_flag);
  get.SetAction([given] { return Get(*given); });
}

}  // namespace confgrove::Tool
