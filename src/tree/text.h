// Letters and paths as text.
#ifndef CONFGROVE_TREE_TEXT_H
#define CONFGROVE_TREE_TEXT_H

#include <string_view>

namespace confgrove {

constexpr bool IsAsciiLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The CP1251 letters that names may hold; the two forms of the short I are not among them.
constexpr bool IsCyrillic(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte >= 0xC0 && byte != 0xC9 && byte != 0xE9) || byte == 0xA8 || byte == 0xB8;
}

// `text` without the blanks at its ends. A text of blanks alone comes back whole.
std::string_view WithoutBlanks(std::string_view text);

// Symbols::check_path without the need for a string.
bool CheckPath(std::string_view path);

// The one rule of CheckPath that looks at the first byte: no digit, no dot. Reports a fault.
bool CheckPathBegin(char first);

}  // namespace confgrove

#endif
