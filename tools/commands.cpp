// The table of the commands, in the order of the help.
#include "commands.h"

namespace confgrove::Tool {

void AddCommands(Command* tool) {
  for (const auto& add :
       {AddCheck, AddExplain, AddGet, AddList, AddWhere, AddImports, AddDiffCommand, AddFlatten,
        AddSet, AddUnset, AddRename, AddEdit, AddFormat, AddConvert}) {
    add(tool);
  }
}

}  // namespace confgrove::Tool
