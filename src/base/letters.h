// The letters of names and paths.
#ifndef CONFGROVE_BASE_LETTERS_H
#define CONFGROVE_BASE_LETTERS_H

#include <array>
#include <cstddef>

namespace confgrove {

constexpr bool IsAsciiLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The CP1251 letters that names may hold; the two forms of the short I are not among them.
constexpr bool IsCyrillic(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte >= 0xC0 && byte != 0xC9 && byte != 0xE9) || byte == 0xA8 || byte == 0xB8;
}

constexpr std::array<bool, 256> MakePathLetters() {
  std::array<bool, 256> letters{};
  for (std::size_t i = 0; i < letters.size(); ++i) {
    const char c = static_cast<char>(i);
    letters[i] = IsAsciiLetter(c) || IsDigit(c) || IsCyrillic(c) || c == '_';
  }
  return letters;
}

inline constexpr std::array<bool, 256> PathLetters = MakePathLetters();

// Whether the names in a path may hold the byte.
constexpr bool IsPathLetter(char c) { return PathLetters[static_cast<unsigned char>(c)]; }

}  // namespace confgrove

#endif
