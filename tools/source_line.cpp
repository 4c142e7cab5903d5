// Characters on a screen: how wide they are, and what stands for those that can't be shown.
#include "source_line.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "standard_input.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

constexpr std::size_t TabStop = 8;
constexpr std::size_t WidestLine = 110;   // in columns
constexpr std::size_t WidestBefore = 50;  // of them in front of a place that isn't near the start
constexpr char32_t Replacement = 0xFFFD;

struct Range {
  char32_t first, last;
};

template <std::size_t Size>
bool IsIn(const Range (&ranges)[Size], char32_t character) {
  return std::any_of(std::begin(ranges), std::end(ranges), [character](const Range& range) {
    return character >= range.first && character <= range.last;
  });
}

constexpr Range Combining[] = {
    {0x300, 0x36F},   {0x483, 0x489},   {0x591, 0x5BD},   {0x610, 0x61A},   {0x64B, 0x65F},
    {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}};
constexpr Range Wide[] = {{0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},
                          {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},
                          {0xFF01, 0xFF60},   {0xFFE0, 0xFFE6},   {0x1F300, 0x1F64F},
                          {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};
// Marks that turn the direction of a text, and others without a width.
constexpr Range Invisible[] = {{0x80, 0x9F},      {0x61C, 0x61C},   {0x200B, 0x200F},
                               {0x2028, 0x202E},  {0x2060, 0x2069}, {0xFEFF, 0xFEFF},
                               {0xE0000, 0xE007F}};

char32_t Shown(char32_t character) {
  constexpr char32_t ControlPictures = 0x2400;
  if (character < 0x20) return ControlPictures + character;
  if (character == 0x7F) return 0x2421;
  return IsIn(Invisible, character) ? Replacement : character;
}

std::size_t WidthOf(char32_t character) {
  if (IsIn(Combining, character)) return 0;
  return IsIn(Wide, character) ? 2 : 1;
}

bool EndsLine(char c) { return c == '\n' || c == '\r' || c == '\0'; }

// Writes characters from left to right, as far as there is room.
class LineWriter {
 public:
  // Takes the next character off `rest`. False if there is no more room.
  bool Write(std::string_view* rest, bool is_utf8) {
    const bool tab = rest->front() == '\t';
    const char32_t character = Shown(TakeCharacter(rest, is_utf8));
    const std::size_t size = tab ? TabStop - column_ % TabStop : WidthOf(character);
    if (column_ + size > WidestLine) return false;
    if (tab) {
      text_.append(size, ' ');
    } else {
      AppendUtf8(character, &text_);
    }
    column_ += size;
    return true;
  }
  void WriteCut() {
    AppendUtf8(0x2026, &text_);
    ++column_;
  }

  std::size_t column() const { return column_; }
  std::string Take() { return std::move(text_); }

 private:
  std::string text_;
  std::size_t column_ = 0;
};

}  // namespace

std::string Visible(std::string_view text) {
  const bool is_utf8 = IsUtf8(text);
  std::string visible;
  while (!text.empty()) AppendUtf8(Shown(TakeCharacter(&text, is_utf8)), &visible);
  return visible;
}

SourceFile::SourceFile(std::string bytes) : bytes_(std::move(bytes)), is_utf8_(IsUtf8(bytes_)) {}

// The place so many characters in front of another one.
std::size_t SourceFile::Back(std::size_t offset, std::size_t characters) const {
  for (; characters > 0 && offset > 0; --characters) offset = BeginOfCharacter(offset - 1);
  return offset;
}

std::size_t SourceFile::BeginOfCharacter(std::size_t offset) const {
  const auto is_later = [this](char c) {
    return is_utf8_ && (static_cast<unsigned char>(c) & 0xC0) == 0x80;
  };
  while (offset > 0 && offset < bytes_.size() && is_later(bytes_[offset])) --offset;
  return offset;
}

SourceLine SourceFile::LineOf(const Place& place) const {
  SourceLine line;
  if (place.offset > bytes_.size()) return line;
  const auto before = static_cast<std::size_t>(place.column) - 1;
  const bool cut = before > WidestBefore;
  std::string_view rest = bytes_;
  rest.remove_prefix(Back(place.offset, cut ? WidestBefore : before));
  const auto at = [&] { return static_cast<std::size_t>(rest.data() - bytes_.data()); };
  LineWriter writer;
  if (cut) writer.WriteCut();
  bool room = true;
  const std::size_t begin = BeginOfCharacter(place.offset);
  while (at() < begin && room) room = writer.Write(&rest, is_utf8_);
  line.mark = writer.column();
  const std::size_t end = std::min(place.offset + place.length, bytes_.size());
  while (at() < end && room && (at() == begin || !EndsLine(rest.front()))) {
    if (rest.front() == '\n' || rest.front() == '\r') break;
    room = writer.Write(&rest, is_utf8_);
  }
  line.width = std::max<std::size_t>(writer.column() - line.mark, 1);
  while (room && !rest.empty() && !EndsLine(rest.front())) room = writer.Write(&rest, is_utf8_);
  if (!room) writer.WriteCut();
  line.text = writer.Take();
  return line;
}

std::size_t SourceFile::Utf16Column(const Place& place) {
  if (place.offset > bytes_.size() || place.column == 0) return 1;
  if (place.line != last_line_ || place.offset < last_offset_) {
    last_line_ = place.line;
    last_offset_ = Back(place.offset, static_cast<std::size_t>(place.column) - 1);
    last_column_ = 1;
  }
  auto between = std::string_view(bytes_).substr(last_offset_, place.offset - last_offset_);
  while (!between.empty()) last_column_ += TakeCharacter(&between, is_utf8_) > 0xFFFF ? 2 : 1;
  last_offset_ = place.offset;
  return last_column_;
}

SourceFile& SourceFiles::Get(const std::string& path) {
  const auto known = files_.find(path);
  if (known != files_.end()) return known->second;
  std::ifstream file(std::filesystem::u8path(ToKnownInput(path)), std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  return files_.emplace(path, SourceFile(std::move(bytes))).first->second;
}

}  // namespace confgrove::Tool
