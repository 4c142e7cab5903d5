// Numbers as they are written and measured: a short way through integers for the usual ones, and
// the standard library for the rest. The short way takes no branch that depends on how many digits
// a number has: in real files that can't be predicted, and a branch mispredicted costs as much
// as all the rest of a number.
#include "save/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string_view>

namespace confgrove {
namespace {

constexpr int SignificantDigits = 6;       // of a number that is written
constexpr int Decimals = 6;                // of a number that is measured
constexpr std::size_t LongestFixed = 320;  // sign, 309 digits, point, six decimals

constexpr double PowersOfTen[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};

// Three decimal digits each: their text, the first one in the lowest byte, and above it, in the
// highest byte, how many are left without the zeros at the end.
constexpr std::array<std::uint32_t, 1000> MakeDigitGroups() {
  std::array<std::uint32_t, 1000> groups{};
  for (std::uint32_t i = 0; i < groups.size(); ++i) {
    const std::uint32_t first = i / 100;
    const std::uint32_t second = i / 10 % 10;
    const std::uint32_t third = i % 10;
    const std::uint32_t used = third > 0 ? 3 : second > 0 ? 2 : first > 0 ? 1 : 0;
    groups[i] = used << 24 | ('0' + third) << 16 | ('0' + second) << 8 | ('0' + first);
  }
  return groups;
}

constexpr std::array<std::uint32_t, 1000> DigitGroups = MakeDigitGroups();

// Six decimal digits, likewise; what stands in the bytes above their text means nothing.
struct SixDigits {
  explicit SixDigits(std::uint32_t number) {  // below 1,000,000
    const std::uint32_t high = DigitGroups[number / 1000];
    const std::uint32_t low = DigitGroups[number % 1000];
    const auto used_low = static_cast<int>(low >> 24);
    text = std::uint64_t{low} << 24 | (high & 0xFFFFFF);
    used = std::max(static_cast<int>(high >> 24), used_low + (used_low > 0 ? 3 : 0));
  }

  std::uint64_t text;
  int used;
};

// Writes eight bytes, the lowest one first.
void WriteBytes(std::uint64_t bytes, char* out) {
  out[0] = static_cast<char>(bytes);
  out[1] = static_cast<char>(bytes >> 8);
  out[2] = static_cast<char>(bytes >> 16);
  out[3] = static_cast<char>(bytes >> 24);
  out[4] = static_cast<char>(bytes >> 32);
  out[5] = static_cast<char>(bytes >> 40);
  out[6] = static_cast<char>(bytes >> 48);
  out[7] = static_cast<char>(bytes >> 56);
}

// Rounds a product of less than 1e12 of a number and a power of ten. False if it is too near to
// halfway between two integers: the product itself is off by less than 1.2e-4, so that further away
// from there its rounding is that of the number.
bool RoundSafely(double product, std::uint64_t* rounded) {
  constexpr double Doubtful = 1e-3;
  const double above = product + 0.5;
  const auto whole = static_cast<std::int64_t>(above);
  *rounded = static_cast<std::uint64_t>(whole);
  return std::fabs(product - static_cast<double>(whole)) < 0.5 - Doubtful;
}

// How many digits a number below 1,000,000 has.
int CountDigits(std::uint32_t number) {
  return 1 + (number >= 10 ? 1 : 0) + (number >= 100 ? 1 : 0) + (number >= 1000 ? 1 : 0) +
         (number >= 10000 ? 1 : 0) + (number >= 100000 ? 1 : 0);
}

// WriteNumber for 0 and for 1 up to 1e6. Null if the last digit is in doubt.
char* WriteFromOne(double size, char* out) {
  const int whole_digits = CountDigits(static_cast<std::uint32_t>(size));
  std::uint64_t rounded = 0;
  if (!RoundSafely(size * PowersOfTen[SignificantDigits - whole_digits], &rounded)) return nullptr;
  if (rounded >= 1000000) return nullptr;
  const SixDigits digits(static_cast<std::uint32_t>(rounded));
  const int point = 8 * whole_digits;  // its place in the text
  const std::uint64_t whole_text = digits.text & ((std::uint64_t{1} << point) - 1);
  WriteBytes(whole_text | std::uint64_t{'.'} << point | (digits.text - whole_text) << 8, out);
  return out + std::max(whole_digits, digits.used + (digits.used > whole_digits ? 1 : 0));
}

// WriteNumber for 0.0001 up to 1: all that %g writes without an exponent.
char* WriteBelowOne(double size, char* out) {
  // Behind the point.
  const int zeros = (size < 1e-1 ? 1 : 0) + (size < 1e-2 ? 1 : 0) + (size < 1e-3 ? 1 : 0);
  std::uint64_t rounded = 0;
  if (!RoundSafely(size * PowersOfTen[SignificantDigits + zeros], &rounded)) return nullptr;
  if (rounded >= 1000000) return nullptr;
  const SixDigits digits(static_cast<std::uint32_t>(rounded));
  constexpr std::string_view Begin = "0.000";
  std::memcpy(out, Begin.data(), Begin.size());
  WriteBytes(digits.text, out + 2 + zeros);
  return out + 2 + zeros + digits.used;
}

}  // namespace

char* WriteNumber(double number, char* out) {
  const double size = std::fabs(number);
  if (size < 1e6 && (size >= 1e-4 || size == 0)) {
    *out = '-';
    char* const digits = out + (std::signbit(number) ? 1 : 0);
    char* const end =
        size >= 1 || size == 0 ? WriteFromOne(size, digits) : WriteBelowOne(size, digits);
    if (end != nullptr) return end;
  }
  return std::to_chars(out, out + NumberRoom, number, std::chars_format::general, SignificantDigits)
      .ptr;
}

std::int32_t TrimmedLength(double number) {
  std::uint64_t millionths = 0;
  if (std::fabs(number) < 1e6 && RoundSafely(std::fabs(number) * 1e6, &millionths) &&
      millionths < 1000000000000) {
    const int decimals = SixDigits(static_cast<std::uint32_t>(millionths % 1000000)).used;
    return (std::signbit(number) ? 1 : 0) +
           CountDigits(static_cast<std::uint32_t>(millionths / 1000000)) + decimals +
           (decimals > 0 ? 1 : 0);
  }
  char buffer[LongestFixed];
  const auto result =
      std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::fixed, Decimals);
  std::string_view text(buffer, static_cast<std::size_t>(result.ptr - buffer));
  if (text.find('.') != std::string_view::npos) {
    text = text.substr(0, text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.remove_suffix(1);
  }
  return static_cast<std::int32_t>(text.size());
}

}  // namespace confgrove
