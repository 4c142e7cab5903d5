// Positions: from offsets in the text of a file, as it is read, to places on the disk.
#ifndef CONFGROVE_TEXT_POSITIONS_H
#define CONFGROVE_TEXT_POSITIONS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "parser/record.h"
#include "text/line_map.h"

namespace confgrove {

// Of one file. Any place is found in a time that doesn't grow with the file's lines.
class Positions {
 public:
  // `text` has each CR LF as one LF, `bytes` is the same as on the disk. `text` and `record`
  // outlive this.
  Positions(std::string_view text, const Record& record, std::string_view bytes);

  std::size_t OnDisk(std::size_t offset) const { return line_map_.ToDisk(offset); }
  std::int32_t Line(std::size_t offset) const;    // from 1, as messages count
  std::int32_t Column(std::size_t offset) const;  // from 1, in characters

 private:
  void FindLines(const Record& record);
  void CountCharacters();
  std::size_t CharactersBefore(std::size_t offset) const;
  bool BeginsCharacter(char c) const {
    return !is_utf8_ || (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }

  std::string_view text_;
  bool is_utf8_;
  LineMap line_map_;
  std::vector<std::size_t> lines_;       // the beginning of each
  std::vector<std::size_t> characters_;  // before each multiple of a step
};

// Whether all of it is valid UTF-8. If not, it is CP1251.
bool IsUtf8(std::string_view text);

}  // namespace confgrove

#endif
