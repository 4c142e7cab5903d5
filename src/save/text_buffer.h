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
  TextBuffer() : bytes_(new char[Size]), at_(bytes_.get()), end_(at_ + Size) {}

  // From here on the text goes to `file`, which outlives the last Flush.
  void SendTo(Platform::OutputFile* file) { file_ = file; }

  void Append(std::string_view text) {
    if (text.size() > Room()) {
      Flush();
      if (text.size() > Size) {
        file_->Write(text);
        return;
      }
    }
    std::memcpy(at_, text.data(), text.size());
    at_ += text.size();
  }

  void Append(char c) {
    *Reserve(1) = c;
    ++at_;
  }

  void AppendRepeated(std::size_t count, char c) {
    while (count > 0) {
      const std::size_t piece = std::min(count, Size);
      std::memset(Reserve(piece), c, piece);
      at_ += piece;
      count -= piece;
    }
  }

  // Where `count` bytes are free, 64 KiB at most. What is written there counts up to Finish.
  char* Reserve(std::size_t count) {
    if (count > Room()) Flush();
    return at_;
  }
  void Finish(char* end) { at_ = end; }

  // Hands on what is left.
  void Flush() {
    file_->Write({bytes_.get(), static_cast<std::size_t>(at_ - bytes_.get())});
    at_ = bytes_.get();
  }

 private:
  static constexpr std::size_t Size = 64 * 1024;

  std::size_t Room() const { return static_cast<std::size_t>(end_ - at_); }

  std::unique_ptr<char[]> bytes_;         // Size of them
  char* at_;                              // where the next one goes
  char* const end_;                       // of `bytes_`
  Platform::OutputFile* file_ = nullptr;  // not owned
};

}  // namespace confgrove

#endif
