// The commands of the tool. Each adds itself to `app`; a call of it stores what is to be done in
// `*action`, which outlives `app`.
#ifndef CONFGROVE_TOOLS_COMMANDS_H
#define CONFGROVE_TOOLS_COMMANDS_H

#include "command_line.h"

namespace confgrove::Tool {

// Commands that read.
void AddCheck(CLI::App* app, Action* action);
void AddConvert(CLI::App* app, Action* action);
void AddDiffCommand(CLI::App* app, Action* action);
void AddExplain(CLI::App* app, Action* action);
void AddFlatten(CLI::App* app, Action* action);
void AddGet(CLI::App* app, Action* action);
void AddImports(CLI::App* app, Action* action);
void AddList(CLI::App* app, Action* action);
void AddWhere(CLI::App* app, Action* action);

// Commands that write.
void AddEdit(CLI::App* app, Action* action);
void AddFormat(CLI::App* app, Action* action);
void AddRename(CLI::App* app, Action* action);
void AddSet(CLI::App* app, Action* action);
void AddUnset(CLI::App* app, Action* action);

// All of them, and what the tool says of itself.
void AddCommands(CLI::App* app, Action* action);

}  // namespace confgrove::Tool

#endif
