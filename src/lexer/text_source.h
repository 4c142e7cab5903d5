// TextSource: the text of a file, piece by piece.
#ifndef CONFGROVE_LEXER_TEXT_SOURCE_H
#define CONFGROVE_LEXER_TEXT_SOURCE_H

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/platform.h"

namespace confgrove {

// Reads into one buffer again and again, which the processor then has at hand: a buffer for all of
// a large file would be new memory, which costs more than the reading. Each CR LF becomes one LF.
class TextSource {
 public:
  explicit TextSource(const std::string& path);

  // False if the file can't be opened or is a directory. All else is for an open one.
  bool is_open() const { return stamp_.has_value(); }

  // The file's, before the first byte was read.
  const Platform::FileStamp& stamp() const { return *stamp_; }

  // The next piece: whole lines, each with its LF, but for what the last line has none. A NUL
  // stands behind it. Empty at the end of the file or where a read fails. Until then the piece
  // before is gone with each call.
  std::string_view Next();

  // All that comes.
  std::string Rest();

 private:
  std::size_t Fill(std::size_t size);
  void Enlarge(std::size_t capacity);

  std::optional<Platform::InputFile> file_;  // until its end was seen
  std::optional<Platform::FileStamp> stamp_;
  std::unique_ptr<char[]> buffer_;
  std::size_t capacity_ = 0;  // of the buffer, the NUL included
  std::string begun_line_;    // behind the last piece, and part of the next
};

}  // namespace confgrove

#endif
