// Opening a configuration for a command.
#ifndef CONFGROVE_TOOLS_OPEN_FILE_H
#define CONFGROVE_TOOLS_OPEN_FILE_H

#include <confgrove/config.h>

#include <memory>
#include <string>

#include "file_name.h"

namespace confgrove::Tool {

// Opens `file` with its imports. If that fails, the errors are shown and the command is refused.
std::unique_ptr<Config> LoadConfig(const FileName& file);

// The same for a command that reads alone: "-" is standard input.
std::unique_ptr<Config> LoadInput(const std::string& file);

}  // namespace confgrove::Tool

#endif
