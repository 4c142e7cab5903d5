// Opening a configuration for a command.
#ifndef CONFGROVE_TOOLS_OPEN_FILE_H
#define CONFGROVE_TOOLS_OPEN_FILE_H

#include <confgrove/config.h>

#include <memory>
#include <string>

#include "file_name.h"
#include "outline.h"

namespace confgrove::Tool {

// Opens `file` with its imports, its settings being those of the process from then on. If that
// fails, the errors are shown and the command is refused.
std::unique_ptr<Config> LoadConfig(const FileName& file, bool with_warnings = false);

// Adds the values and comments that `section` and what is below it hold to the node that the
// outline gave for it. No lookup in it can fail, so the tree doesn't change.
void FillNode(Section* section, Node* node);

// A file as all its readers see it.
struct OpenFile {
  explicit OpenFile(FileName file_name);

  FileName name;
  std::string text;
  Outline outline;  // its nodes filled
  std::unique_ptr<Config> config;
};

}  // namespace confgrove::Tool

#endif
