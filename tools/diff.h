// Showing what a save has changed or would change.
#ifndef CONFGROVE_TOOLS_DIFF_H
#define CONFGROVE_TOOLS_DIFF_H

#include <confgrove/save_in_place.h>

#include <string>

namespace confgrove::Tool {

// Prints the lines in which two texts of a file differ, as a unified diff; nothing if they don't.
void PrintDiff(const std::string& file, const std::string& before, const std::string& after);

// Why a save has been refused, with the file as the user knows it.
std::string ReasonOf(const SaveResult& result, const std::string& file);

}  // namespace confgrove::Tool

#endif
