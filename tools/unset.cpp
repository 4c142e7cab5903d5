// unset: removes sections.
#include <memory>

#include "commands.h"
#include "removal.h"

namespace confgrove::Tool {
namespace {

struct UnsetArguments {
  std::string file, path;
  ChangeOptions options;
};

int Unset(const UnsetArguments& given) {
  const std::string path = PathToChange(given.path);
  return ChangeFile(given.file, given.options, [&](Change* change) { Remove(change, path); });
}

}  // namespace

void AddUnset(Command* tool) {
  const auto given = std::make_shared<UnsetArguments>();
  Command unset = tool->AddCommand("unset", "Remove a section and all below it");
  unset.AddFile(&given->file);
  unset.AddPath(&given->path);
  AddLinks(&unset, &given->options);
  AddDiff(&unset, &given->options);
  unset.SetAction([given] { return Unset(*given); });
}

}  // namespace confgrove::Tool
