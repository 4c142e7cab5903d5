// How a value is spelled in the canonical layout.
#ifndef CONFGROVE_TEXT_SPELLING_H
#define CONFGROVE_TEXT_SPELLING_H

#include <cstdint>
#include <string>
#include <vector>

#include "text/file_text.h"
#include "tree/real_section.h"

namespace confgrove {

struct Spelling {
  std::string text;    // all that stands behind the name: " = 1"
  std::int32_t width;  // of the line up to there, as a save measures it
};

// Numbers as a save writes them if that is exact, and with all digits otherwise.
Spelling SpellingOf(const RealSection& section);

// Numbers as they stand in the file.
Spelling SpellingIn(const FileText& file, std::int32_t number);

// The numbers of a value in the text of a file.
std::vector<Span> NumbersIn(const FileText& file, Span value);

}  // namespace confgrove

#endif
