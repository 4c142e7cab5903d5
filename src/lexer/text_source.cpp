// Reading a file by the piece.
#include "lexer/text_source.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "platform/line_ends.h"

namespace confgrove {
namespace {

constexpr std::size_t LargestAtFirst = 64 * 1024;

// For a piece that is the whole file: one byte more shows its end at the first attempt, and there
// is the NUL.
std::size_t CapacityAtFirst(std::uint64_t file_size) {
  constexpr std::size_t Surplus = 2;
  if (file_size == 0 || file_size > LargestAtFirst - Surplus) return LargestAtFirst;
  return static_cast<std::size_t>(file_size) + Surplus;
}

}  // namespace

TextSource::TextSource(const std::string& path) : file_(path) {
  if (file_->is_open()) stamp_ = file_->stamp();
}

std::string_view TextSource::Next() {
  if (!file_) return {};
  if (buffer_ == nullptr) Enlarge(CapacityAtFirst(stamp_->size));
  std::size_t size = begun_line_.copy(buffer_.get(), begun_line_.size());
  begun_line_.clear();
  for (;;) {
    if (size + 1 == capacity_) Enlarge(2 * capacity_);
    size = Fill(size);
    const std::string_view text(buffer_.get(), size);
    const std::size_t lines = file_ ? text.rfind('\n') + 1 : size;
    if (file_ && lines == 0) continue;  // a line that doesn't fit
    begun_line_ = text.substr(lines);
    buffer_[lines] = '\0';
    return text.substr(0, lines);
  }
}

// Reads as much as the buffer has room for behind the first `size` bytes. Gives how many there are.
std::size_t TextSource::Fill(std::size_t size) {
  const std::size_t wanted = capacity_ - 1 - size;
  const std::size_t got = file_->Read(&buffer_[size], wanted);
  if (got < wanted) file_.reset();
  const std::size_t done = size > 0 ? size - 1 : 0;  // a CR at its end may be half of a pair
  return done + Platform::JoinLineEnds(&buffer_[done], size + got - done);
}

void TextSource::Enlarge(std::size_t capacity) {
  std::unique_ptr<char[]> larger(new char[capacity]);
  std::copy_n(buffer_.get(), capacity_, larger.get());
  buffer_ = std::move(larger);
  capacity_ = capacity;
}

std::string TextSource::Rest() {
  std::string text;
  for (std::string_view piece = Next(); !piece.empty(); piece = Next()) text += piece;
  return text;
}

}  // namespace confgrove
