// The line that a place in a text stands on. No search goes further than people look.
#ifndef CONFGROVE_TEXT_LINES_H
#define CONFGROVE_TEXT_LINES_H

#include <cstddef>
#include <string>
#include <string_view>

#include "lexer/char_class.h"

namespace confgrove {

constexpr std::size_t LongestLook = 512;

inline bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\f'; }

// Where the line at `place` begins and ends, or where the look ends.
inline std::size_t LineBegin(std::string_view text, std::size_t place) {
  const std::size_t least = place > LongestLook ? place - LongestLook : 0;
  while (place > least && !IsLineEnd(text[place - 1])) --place;
  return place;
}
inline std::size_t LineEnd(std::string_view text, std::size_t place) {
  const std::size_t most = text.size() - place > LongestLook ? place + LongestLook : text.size();
  while (place < most && !IsLineEnd(text[place])) ++place;
  return place;
}

inline std::size_t SkipBlanks(std::string_view text, std::size_t place) {
  while (place < text.size() && IsBlank(text[place])) ++place;
  return place;
}

// Whether there are only blanks between `place` and the beginning or the end of its line.
inline bool IsFirstOnLine(std::string_view text, std::size_t place) {
  const std::size_t begin = LineBegin(text, place);
  return SkipBlanks(text, begin) >= place && (begin == 0 || IsLineEnd(text[begin - 1]));
}
inline bool IsLastOnLine(std::string_view text, std::size_t place) {
  place = SkipBlanks(text, place);
  return place >= text.size() || IsLineEnd(text[place]);
}

// How far the line at `place` is indented, tabs being 8 columns.
inline std::size_t IndentAt(std::string_view text, std::size_t place) {
  std::size_t indent = 0;
  for (std::size_t at = LineBegin(text, place); at < place && IsBlank(text[at]); ++at) {
    indent = text[at] == '\t' ? (indent / 8 + 1) * 8 : indent + 1;
  }
  return indent;
}

// Bytes of a file in a sentence.
inline std::string Quoted(std::string_view bytes) {
  constexpr std::size_t Longest = 60;
  return "'" + std::string(bytes.substr(0, Longest)) + (bytes.size() > Longest ? "...'" : "'");
}

}  // namespace confgrove

#endif
