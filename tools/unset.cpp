// unset: removes sections.
#include "commands.h"
#include "removal.h"

namespace confgrove::Tool {
namespace {

struct Arguments {
  std::string file, path;
  ChangeOptions options;
};

int Unset(const Arguments& given) {
  const std::string path = PathToChange(given.path);
  return ChangeFile(given.file, given.options, [&](Change* change) { Remove(change, path); });
}

}  // namespace

void AddUnset(CLI::App* app, Action* action) {
  const auto given = std::make_shared<Arguments>();
  CLI::App* const unset = app->add_subcommand("unset", "Remove a section and all below it");
  AddFile(unset, &given->file);
  AddPath(unset, &given->path);
  AddLinks(unset, &given->options);
  AddDiff(unset, &given->options);
  unset->callback([=] { *action = [given] { return Unset(*given); }; });
}

}  // namespace confgrove::Tool
