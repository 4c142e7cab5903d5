// The table of the commands, in the order of the help.
#include "commands.h"

namespace confgrove::Tool {

void AddCommands(CLI::App* app, Action* action) {
  app->name("confgrove");
  app->description("Reads, checks and changes configuration files without losing a setting.");
  app->set_version_flag("--version", "confgrove " CONFGROVE_VERSION);
  app->require_subcommand(1);
  app->footer("Exit code: 0 done, 1 not found, faulty or refused, 2 a wrong call.");
  for (const auto& add :
       {AddCheck, AddExplain, AddGet, AddList, AddWhere, AddImports, AddDiffCommand, AddFlatten,
        AddSet, AddUnset, AddRename, AddEdit, AddFormat, AddConvert}) {
    add(app, action);
  }
}

}  // namespace confgrove::Tool
