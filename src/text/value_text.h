// The text of new values, and what a file can't hold.
#ifndef CONFGROVE_TEXT_VALUE_TEXT_H
#define CONFGROVE_TEXT_VALUE_TEXT_H

#include <string>
#include <string_view>

#include "tree/real_section.h"

namespace confgrove {

// The fewest digits that read back as the same double. Plain digits as long as they are at hand:
// 1200000 and 0.00001, but 1e+22.
std::string NumberText(double number);

// The value of a section that has one, as it stands behind '='. `comma` stands between the numbers
// of an array.
std::string ValueText(const RealSection& section, std::string_view comma);

// Why a file can't hold it; null if it can.
const char* FaultOfName(std::string_view name);
const char* FaultOfValue(const RealSection& section);
const char* FaultOfComments(const RealSection& section);

// The same for a file name in a $import line.
const char* FaultOfImport(std::string_view name);

}  // namespace confgrove

#endif
