// Sixteen bytes of a text, looked at together.
#ifndef CONFGROVE_BASE_SIXTEEN_BYTES_H
#define CONFGROVE_BASE_SIXTEEN_BYTES_H

#include <cstddef>
#include <cstdint>

#if defined(__SSE2__) && defined(__GNUC__)
#include <emmintrin.h>
#endif

namespace confgrove {

// How long a name or a number is can't be foretold. A loop over its bytes makes the processor go
// on at the wrong place when it ends, which costs as much as fifty instructions. These tell the
// length without a branch. Every processor of x86-64 has what it takes. Elsewhere no sixteen bytes
// ever fit, and whoever asks goes byte by byte, as it does near the end of a text.

// Which of the bytes are meant: bit 0 is the first, and bits 16 and up are 0.
using ByteBits = std::uint32_t;

constexpr std::ptrdiff_t SixteenBytesSize = 16;
constexpr ByteBits AllSixteen = 0xFFFF;

#if defined(__SSE2__) && defined(__GNUC__)

class SixteenBytes {
 public:
  // Whether so many stand between the two, with `more` behind them.
  static bool Fit(const char* begin, const char* end, std::ptrdiff_t more = 0) {
    return end - begin >= SixteenBytesSize + more;
  }

  explicit SixteenBytes(const char* begin)
      : bytes_(_mm_loadu_si128(reinterpret_cast<const __m128i*>(begin))) {}

  // The same with these bits set in each of them.
  SixteenBytes WithBits(char bits) const {
    return SixteenBytes(_mm_or_si128(bytes_, _mm_set1_epi8(bits)));
  }

  // One answer for each byte.
  class Answers {
   public:
    explicit Answers(__m128i answers) : answers_(answers) {}
    Answers operator|(Answers other) const {
      return Answers(_mm_or_si128(answers_, other.answers_));
    }
    ByteBits bits() const { return static_cast<ByteBits>(_mm_movemask_epi8(answers_)); }

   private:
    __m128i answers_;  // 0xFF: yes; 0: no
  };

  Answers Are(char c) const { return Answers(_mm_cmpeq_epi8(bytes_, _mm_set1_epi8(c))); }
  Answers AreWithin(char first, char last) const {
    const __m128i distance = _mm_sub_epi8(bytes_, _mm_set1_epi8(first));
    const __m128i most = _mm_set1_epi8(static_cast<char>(last - first));
    return Answers(_mm_cmpeq_epi8(_mm_min_epu8(distance, most), distance));
  }

 private:
  explicit SixteenBytes(__m128i bytes) : bytes_(bytes) {}

  __m128i bytes_;
};

// The place of the lowest bit that is set. One must be.
inline int LowestBit(ByteBits bits) { return __builtin_ctz(bits); }

#else

class SixteenBytes {
 public:
  static bool Fit(const char*, const char*, std::ptrdiff_t = 0) { return false; }

  explicit SixteenBytes(const char*) {}
  SixteenBytes WithBits(char) const { return *this; }

  class Answers {
   public:
    Answers operator|(Answers) const { return {}; }
    ByteBits bits() const { return 0; }
  };

  Answers Are(char) const { return {}; }
  Answers AreWithin(char, char) const { return {}; }
};

inline int LowestBit(ByteBits) { return 0; }

#endif

}  // namespace confgrove

#endif
