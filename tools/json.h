// Sections as JSON.
#ifndef CONFGROVE_TOOLS_JSON_H
#define CONFGROVE_TOOLS_JSON_H

#include <confgrove/inspect.h>

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace confgrove::Tool {

// An object for the section and all below it, in UTF-8 and without a line end, its keys in file
// order:
//   "kind"             as KindOf gives it
//   "value"            string, number, or array of numbers; infinities are null, JSON has none
//   "target"           of a link
//   "file", "line", "column"  of its name, if `with_places`
//   "comment", "inline_comment", "sections"  only where there are any
std::string ToJson(Section* section, bool with_places);

// Of these, "kind" and "value" or "target" alone.
nlohmann::ordered_json ValueObject(Section* section);

// The same for a whole file, with "imports", names as written, in place of a value.
std::string ToJson(Config* config, bool with_places);

}  // namespace confgrove::Tool

#endif
