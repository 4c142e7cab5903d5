// The commands of the tool. Each adds itself.
#ifndef CONFGROVE_TOOLS_COMMANDS_H
#define CONFGROVE_TOOLS_COMMANDS_H

#include "command_line.h"

namespace confgrove::Tool {

// Commands that read.
void AddCheck(Command* tool);
void AddConvert(Command* tool);
void AddDiffCommand(Command* tool);
void AddExplain(Command* tool);
void AddFlatten(Command* tool);
void AddGet(Command* tool);
void AddImports(Command* tool);
void AddList(Command* tool);
void AddWhere(Command* tool);

// Commands that write.
void AddEdit(Command* tool);
void AddFormat(Command* tool);
void AddRename(Command* tool);
void AddSet(Command* tool);
void AddUnset(Command* tool);

// All of them.
void AddCommands(Command* tool);

}  // namespace confgrove::Tool

#endif
