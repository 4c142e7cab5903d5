// What a byte can be to the parser.
#ifndef CONFGROVE_LEXER_CHAR_CLASS_H
#define CONFGROVE_LEXER_CHAR_CLASS_H

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "base/letters.h"

namespace confgrove {

// NUL is a line end, white space and a letter at once: outside of strings and comments it is
// skipped, in a string it ends the line, in a name or link it stands for itself.
constexpr bool IsLineEnd(char c) { return c == '\n' || c == '\r' || c == '\0'; }

inline bool HasLineEnd(std::string_view text) {
  return std::any_of(text.begin(), text.end(), IsLineEnd);
}

constexpr bool IsFirstLetter(char c) {
  return IsAsciiLetter(c) || IsCyrillic(c) || c == '_' || c == '\0';
}

constexpr bool IsLaterLetter(char c) { return IsFirstLetter(c) || IsDigit(c); }

// What begins with a byte, for a byte between two tokens.
enum class Lead : std::uint8_t {
  Illegal,
  Blank,
  LineEnd,
  Slash,
  Quote,
  Comment,
  Single,  // a token by itself
  Number,
  Link,
  Name
};

constexpr Lead LeadOf(char c) {
  if (IsLineEnd(c)) return Lead::LineEnd;
  if (IsFirstLetter(c)) return Lead::Name;
  if (IsDigit(c)) return Lead::Number;
  switch (c) {
    case ' ':
    case '\f':
    case '\t': return Lead::Blank;
    case '/': return Lead::Slash;
    case '"': return Lead::Quote;
    case '#': return Lead::Comment;
    case '@': return Lead::Link;
    case '+':
    case '-':
    case '.': return Lead::Number;
    case '$':
    case ',':
    case '=':
    case '[':
    case ']':
    case '{':
    case '}': return Lead::Single;
    default: return Lead::Illegal;
  }
}

// All of this by byte, so that reading takes one look.
struct CharClasses {
  std::array<Lead, 256> lead{};
  std::array<bool, 256> line_end{};
  std::array<bool, 256> string_end{};  // a line end or a quote
  std::array<bool, 256> link_byte{};   // a letter of a path, or a dot
  std::array<bool, 256> number_byte{};
};

constexpr CharClasses MakeCharClasses() {
  CharClasses classes;
  for (std::size_t i = 0; i < 256; ++i) {
    const char c = static_cast<char>(i);
    classes.lead[i] = LeadOf(c);
    classes.line_end[i] = IsLineEnd(c);
    classes.string_end[i] = IsLineEnd(c) || c == '"';
    classes.link_byte[i] = IsPathLetter(c) || c == '.';
    classes.number_byte[i] = IsDigit(c) || c == '.' || c == '+' || c == '-' || c == 'e' ||
                             c == 'E' || c == 'd' || c == 'D';
  }
  return classes;
}

inline constexpr CharClasses Classes = MakeCharClasses();

// How a byte is looked up in the tables.
template <typename Table>
constexpr auto Look(const Table& table, char c) {
  return table[static_cast<unsigned char>(c)];
}

}  // namespace confgrove

#endif
