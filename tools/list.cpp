// list: prints the sections of a file.
#include <iostream>
#include <memory>

#include "commands.h"
#include "json.h"
#include "messages.h"
#include "open_file.h"
#include "refusal.h"
#include "shown_section.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

struct ListArguments {
  std::string file, path;
  bool as_json = false;
  bool as_records = false;
  bool with_places = false;
};

void PrintSections(Section* section, char end) {
  std::cout << LineOf(section) << end;
  for (std::int32_t i = 0; i < section->GetSectionCount(""); ++i) {
    PrintSections(section->GetSection("", i), end);
  }
}

int List(const ListArguments& given) {
  const std::unique_ptr<Config> config = LoadInput(given.file);
  const std::string path = PathFromShell(given.path);
  const char end = given.as_records ? '\0' : '\n';
  if (path.empty()) {
    if (given.as_json) std::cout << ToJson(config.get(), given.with_places) << '\n';
    if (given.as_json) return ExitDone;
    for (std::int32_t i = 0; i < config->GetSectionCount(""); ++i) {
      PrintSections(config->GetSection("", i), end);
    }
    return ExitDone;
  }
  Section* const section = FindSection(config.get(), path.c_str());
  if (section == nullptr) RefuseMissing(given.file, path);
  if (given.as_json) {
    std::cout << ToJson(section, given.with_places) << '\n';
  } else {
    PrintSections(section, end);
  }
  return ExitDone;
}

}  // namespace

void AddList(Command* tool) {
  const auto given = std::make_shared<ListArguments>();
  Command list = tool->AddCommand("list", "Print the sections of a file in their order");
  list.AddFile(&given->file);
  list.AddText("PATH", &given->path, "The section to begin at; the whole file without it");
  const Option json = list.AddFlag("--json", &given->as_json, "As JSON, with the comments");
  list.AddFlag("--null", &given->as_records, "A NUL behind each section in place of a line end")
      .Exclude(json);
  list.AddFlag("--where", &given->with_places, "With file, line and column, in JSON").Need(json);
  list.SetAction([given] { return List(*given); });
}

}  // namespace confgrove::Tool
