// TextBuffer: text on its way to a file.
#ifndef CONFGROVE_SAVE_TEXT_BUFFER_H
#define CONFGROVE_SAVE_TEXT_BUFFER_H

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

#include "platform/platform.h"

namespace confgrove {

// Collects text and hands it on in large pieces. The file it goes to is opened after the memory is
// there, so that a lack of memory costs no file.
class TextBuffer {
 public:
  TextBuffer() : bytes_(new char[Size]) {}

  // From here on the text goes to `file`, which outlives the last Flush.
  void SendTo(Platform::OutputFile* file) { file_ = file; }

  void Append(std::string_view text) {
    if (text.size() > Size - used_) {
      Flush();
      if (text.size() > Size) {
        file_->Write(text);
        return;
      }
    }
    std::memcpy(bytes_.get() + used_, text.data(), text.size());
    used_ += text.size();
  }

  void Append(char c) { *Reserve(1) = c; }

  void AppendRepeated(std::size_t count, char c) {
    while (count > 0) {
      const std::size_t piece = std::min(count, Size);
      std::memset(Reserve(piece), c, piece);
      count -= piece;
    }
  }

  // Hands on what is left.
  void Flush() {
    file_->Write({bytes_.get(), used_});
    used_ = 0;
  }

 private:
  static constexpr std::size_t Size = 64 * 1024;

  char* Reserve(std::size_t count) {
    if (count > Size - used_) Flush();
    used_ += count;
    return bytes_.get() + used_ - count;
  }

  std::unique_ptr<char[]> bytes_;  // Size of them
  std::size_t used_ = 0;
  Platform::OutputFile* file_ = nullptr;  // not owned
};

}  // namespace confgrove

#endif
