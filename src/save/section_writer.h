// The section writer: the canonical text of sections, appended to a buffer.
#ifndef CONFGROVE_SAVE_SECTION_WRITER_H
#define CONFGROVE_SAVE_SECTION_WRITER_H

#include <cstdint>

namespace confgrove {

class RealSection;
class TextBuffer;

// Writes the lines of `comment`, each of which ends in LF, `depth` tabs deep.
void WriteComment(const char* comment, std::int32_t depth, TextBuffer* out);

// Writes the children of `parent` and all below them, `depth` tabs deep, with their inline comments
// in one column.
void WriteSiblings(const RealSection& parent, std::int32_t depth, TextBuffer* out);

}  // namespace confgrove

#endif
