// Removing and renaming sections, and what hangs on it: links that lead there, blocks left empty.
#ifndef CONFGROVE_TOOLS_REMOVAL_H
#define CONFGROVE_TOOLS_REMOVAL_H

#include <string>

#include "change.h"

namespace confgrove::Tool {

// Removes the section at `path` and all below it.
void Remove(Change* change, const std::string& path);

// Gives the section at `path` the name `new_name`; links that lead to it or below it follow.
void Rename(Change* change, const std::string& path, const std::string& new_name);

// Removes the links that lead to what has been removed, or refuses if they may not go.
void SettleLinks(Change* change, bool remove_links);

// Removes the blocks that were left empty. One stays, with a note, if a comment stands in it or a
// link leads to it.
void SettleEmptyBlocks(Change* change);

}  // namespace confgrove::Tool

#endif
