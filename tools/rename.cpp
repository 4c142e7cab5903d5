// rename: gives a section another name.
#include <memory>

#include "commands.h"
#include "removal.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

struct RenameArguments {
  std::string file, path, name;
  ChangeOptions options;
};

int RenameIn(const RenameArguments& given) {
  const std::string path = PathToChange(given.path);
  const std::string new_name = NameToGive(given.name);
  return ChangeFile(given.file, given.options,
                    [&](Change* change) { Rename(change, path, new_name); });
}

}  // namespace

void AddRename(Command* tool) {
  const auto given = std::make_shared<RenameArguments>();
  Command rename =
      tool->AddCommand("rename", "Give a section another name; links that lead there follow");
  rename.AddFile(&given->file);
  rename.AddPath(&given->path);
  rename.AddText("NAME", &given->name, "The new name, without dots").Require();
  AddDiff(&rename, &given->options);
  rename.SetAction([given] { return RenameIn(*given); });
}

}  // namespace confgrove::Tool
