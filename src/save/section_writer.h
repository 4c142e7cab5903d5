// The section writer: the canonical text of sections, appended to a buffer.
#ifndef CONFGROVE_SAVE_SECTION_WRITER_H
#define CONFGROVE_SAVE_SECTION_WRITER_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace confgrove {

class RealSection;
class TextBuffer;

// The messages about what is being written. They wait to the end of the save, since the handler
// that gets one may change the tree.
class SaveWarnings {
 public:
  // `format` may take the name of a section. Left out if there is no memory: the file goes first.
  void Add(const char* format, std::string_view name) noexcept;

  void Send() const;

 private:
  struct Warning {
    const char* format;
    std::string name;
  };
  std::vector<Warning> list_;
};

// Writes the lines of `comment`, each of which ends in LF, `depth` tabs deep.
void WriteComment(const char* comment, std::int32_t depth, TextBuffer* out);

// Writes the children of `parent` and all below them, `depth` tabs deep, with their inline comments
// in one column. Adds to `warnings`.
void WriteSiblings(const RealSection& parent, std::int32_t depth, TextBuffer* out,
                   SaveWarnings* warnings);

}  // namespace confgrove

#endif
