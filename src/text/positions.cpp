// Offsets, lines and columns.
#include "text/positions.h"

#include <algorithm>

#include "lexer/char_class.h"

namespace confgrove {
namespace {

constexpr std::size_t Step = 1024;

// The bytes of the UTF-8 character that `text` begins with; 0 if it begins with none.
std::size_t CharacterSize(std::string_view text) {
  const auto byte = [text](std::size_t at) {
    return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
  };
  const unsigned lead = byte(0);
  if (lead < 0x80) return 1;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  const std::size_t size = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  for (std::size_t at = 1; at < size; ++at) {
    if ((byte(at) & 0xC0) != 0x80) return 0;
  }
  // Overlong forms, surrogates and what lies beyond the last character.
  const unsigned lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const unsigned highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  return byte(1) >= lowest && byte(1) <= highest ? size : 0;
}

}  // namespace

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t size = CharacterSize(text);
    if (size == 0) return false;
    text.remove_prefix(size);
  }
  return true;
}

Positions::Positions(std::string_view text, const Record& record, std::string_view bytes)
    : text_(text), is_utf8_(IsUtf8(text)), line_map_(bytes) {
  FindLines(record);
  CountCharacters();
}

// In a block comment LF alone ends a line; in a name or a link NUL is a letter.
void Positions::FindLines(const Record& record) {
  lines_.push_back(0);
  auto piece = record.pieces.begin();
  for (std::size_t at = 0; at < text_.size(); ++at) {
    if (text_[at] == '\n') {
      lines_.push_back(at + 1);
    } else if (text_[at] == '\r' || text_[at] == '\0') {
      while (piece != record.pieces.end() && piece->begin <= at) ++piece;
      if (piece == record.pieces.begin() || piece[-1].end <= at) {
        lines_.push_back(at + 1);
        continue;
      }
      const Piece& around = piece[-1];
      const bool in_comment =
          around.kind == PieceKind::BlockComment || around.kind == PieceKind::OpenBlockComment;
      const char first = text_[around.begin];
      const bool in_word = text_[at] == '\0' && (first == '@' || IsFirstLetter(first));
      if (!in_comment && !in_word) lines_.push_back(at + 1);
    }
  }
}

void Positions::CountCharacters() {
  std::size_t count = 0;
  for (std::size_t at = 0; at < text_.size(); ++at) {
    if (at % Step == 0) characters_.push_back(count);
    if (BeginsCharacter(text_[at])) ++count;
  }
  if (text_.size() % Step == 0) characters_.push_back(count);
}

std::size_t Positions::CharactersBefore(std::size_t offset) const {
  std::size_t count = characters_[offset / Step];
  for (std::size_t at = offset / Step * Step; at < offset; ++at) {
    if (BeginsCharacter(text_[at])) ++count;
  }
  return count;
}

std::int32_t Positions::Line(std::size_t offset) const {
  const auto behind = std::upper_bound(lines_.begin(), lines_.end(), offset);
  return static_cast<std::int32_t>(behind - lines_.begin());
}

std::int32_t Positions::Column(std::size_t offset) const {
  const std::size_t begin = lines_[static_cast<std::size_t>(Line(offset)) - 1];
  return 1 + static_cast<std::int32_t>(CharactersBefore(offset) - CharactersBefore(begin));
}

}  // namespace confgrove
