// Sections as the tool shows them.
#ifndef CONFGROVE_TOOLS_SHOWN_SECTION_H
#define CONFGROVE_TOOLS_SHOWN_SECTION_H

#include <confgrove/inspect.h>

#include <string>
#include <vector>

namespace confgrove::Tool {

// "string", "number", "array", "link"; without a value "block", or "none" if nothing is below it.
const char* KindOf(Section* section);

// The value as people write it, in UTF-8: "text", 1.5, [1, 2], @target; empty without one.
std::string ValueText(Section* section);

// The path, kind and value of a section on one line, without its end.
std::string LineOf(Section* section);

// The numbers that a section of numbers holds itself.
std::vector<double> NumbersOf(Section* section);

// Whether both hold the same value themselves; of links, lead to the same path.
bool SameValue(Section* one, Section* other);

// The section itself and the links that are followed from it, by `config`, to what it stands for:
// the last one is no link, unless they run in a circle or lead nowhere.
std::vector<Section*> FollowLinks(Config* config, Section* section);

}  // namespace confgrove::Tool

#endif
