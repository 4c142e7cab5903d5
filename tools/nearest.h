// The path that was probably meant.
#ifndef CONFGROVE_TOOLS_NEAREST_H
#define CONFGROVE_TOOLS_NEAREST_H

#include <confgrove/inspect.h>

#include <string>

namespace confgrove::Tool {

// For a path that isn't there, the nearest that is: name by name, a name that is missing gives way
// to a sibling that is spelled much alike, and ends the path if there is none. "" if that leaves
// nothing.
std::string NearestPath(Config* config, const std::string& path);

}  // namespace confgrove::Tool

#endif
