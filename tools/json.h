// The tree as JSON.
#ifndef CONFGROVE_TOOLS_JSON_H
#define CONFGROVE_TOOLS_JSON_H

#include <string>
#include <vector>

#include "tree.h"

namespace confgrove::Tool {

// An object for `node`, in UTF-8, its keys in file order:
//   "kind"             as KindOf gives it
//   "value"            string, number, or array of numbers; infinities are null, JSON has none
//   "target"           of a link
//   "comment", "inline_comment", "sections"  only where there are any
std::string ToJson(const Node& node);

// The same for a whole file, with "imports", names as written, in place of a value.
std::string ToJson(const Node& top, const std::vector<std::string>& imports);

}  // namespace confgrove::Tool

#endif
