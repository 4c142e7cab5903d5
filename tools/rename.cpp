// rename: gives a section another name.
#include "commands.h"
#include "removal.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

struct Arguments {
  std::string file, path, name;
  ChangeOptions options;
};

int RenameIn(const Arguments& given) {
  const std::string path = PathToChange(given.path);
  const std::string new_name = NameToGive(given.name);
  return ChangeFile(given.file, given.options,
                    [&](Change* change) { Rename(change, path, new_name); });
}

}  // namespace

void AddRename(CLI::App* app, Action* action) {
  const auto given = std::make_shared<Arguments>();
  CLI::App* const rename =
      app->add_subcommand("rename", "Give a section another name; links that lead there follow");
  AddFile(rename, &given->file);
  AddPath(rename, &given->path);
  AddText(rename, "NAME", &given->name, "The new name, without dots")->required();
  AddDiff(rename, &given->options);
  rename->callback([=] { *action = [given] { return RenameIn(*given); }; });
}

}  // namespace confgrove::Tool
