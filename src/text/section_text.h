// The text of sections that a file doesn't have yet.
#ifndef CONFGROVE_TEXT_SECTION_TEXT_H
#define CONFGROVE_TEXT_SECTION_TEXT_H

#include <string>
#include <string_view>

#include "text/style.h"
#include "tree/real_section.h"

namespace confgrove {

// "#" and the text of each line of `comment`, with `indent` in front and LF behind.
std::string CommentLines(std::string_view comment, std::string_view indent);

// " = 1": what stands behind the name of a section with a value.
std::string Assignment(const RealSection& section, const Style& style);

// The section and all below it on lines of their own, its comments too, each with LF behind.
std::string SectionLines(const RealSection& section, std::string_view indent, const Style& style);

// Its body alone, from '{' to '}', without the indentation in front and the LF behind.
std::string BodyLines(const RealSection& section, std::string_view indent, const Style& style);

// Whether the section and all below it can stand on one line: none has a comment.
bool FitsOnLine(const RealSection& section);

// The section and all below it, and its body, on one line.
std::string SectionOnLine(const RealSection& section, const Style& style);
std::string BodyOnLine(const RealSection& section, const Style& style);

}  // namespace confgrove

#endif
