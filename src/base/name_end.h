// Where a name ends.
#ifndef CONFGROVE_BASE_NAME_END_H
#define CONFGROVE_BASE_NAME_END_H

#include <string_view>

#include "base/letters.h"
#include "base/sixteen_bytes.h"

namespace confgrove {

// Which of the bytes aren't letters or digits of ASCII, or '_'.
inline ByteBits OtherThanLetters(SixteenBytes bytes) {
  constexpr char CaseBit = 'a' - 'A';
  const auto letters =
      bytes.WithBits(CaseBit).AreWithin('a', 'z') | bytes.AreWithin('0', '9') | bytes.Are('_');
  return letters.bits() ^ AllSixteen;
}

inline const char* BehindLetters(const char* at) {
  while (IsPathLetter(*at)) ++at;
  return at;
}

// The first byte from `at` on, a place in `text`, that isn't a letter of names. One stands behind
// the text. Letters other than ASCII's are passed over one by one.
inline const char* BehindName(std::string_view text, const char* at) {
  const char* const end = text.data() + text.size();
  for (; SixteenBytes::Fit(at, end); at += SixteenBytesSize) {
    const ByteBits others = OtherThanLetters(SixteenBytes(at));
    if (others != 0) return BehindLetters(at + LowestBit(others));
  }
  // The rest is looked at as a part of the last sixteen.
  if (at != end && SixteenBytes::Fit(text.data(), end)) {
    const std::ptrdiff_t in_front = SixteenBytesSize - (end - at);
    const ByteBits others = OtherThanLetters(SixteenBytes(end - SixteenBytesSize)) >> in_front;
    at = others != 0 ? at + LowestBit(others) : end;
  }
  return BehindLetters(at);
}

}  // namespace confgrove

#endif
