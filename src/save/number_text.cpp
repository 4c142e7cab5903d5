// Numbers as they are written and measured: a short way through integers for the usual ones, and
// the standard library for the rest.
#include "save/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

#include "save/text_buffer.h"

namespace confgrove {
namespace {

constexpr std::size_t LongestFixed = 320;  // sign, 309 digits, point, six decimals

constexpr double PowersOfTen[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};

// Rounds a product of less than 1e12 of a number and a power of ten. False if it is too near to
// halfway between two integers: the product itself is off by less than 1.2e-4, so that further away
// from there its rounding is that of the number.
bool RoundSafely(double product, std::uint64_t* rounded) {
  constexpr double Doubtful = 1e-3;
  const auto whole = static_cast<std::int64_t>(product);
  const double above_half = product - static_cast<double>(whole) - 0.5;
  if (std::fabs(above_half) < Doubtful) return false;
  *rounded = static_cast<std::uint64_t>(whole + (above_half > 0 ? 1 : 0));
  return true;
}

// Appends a whole number of up to six digits. False if it is none.
bool AppendWhole(double number, TextBuffer* out) {
  const double size = std::fabs(number);
  if (!(size < 1e6) || (size == 0 && std::signbit(number))) return false;
  auto rest = static_cast<std::uint32_t>(size);
  if (static_cast<double>(rest) != size) return false;
  char text[8];
  char* begin = text + sizeof text;
  do *--begin = static_cast<char>('0' + rest % 10);
  while ((rest /= 10) > 0);
  if (number < 0) *--begin = '-';
  out->Append({begin, static_cast<std::size_t>(text + sizeof text - begin)});
  return true;
}

// Appends a number from 0.0001 up to 1e6, the range that %g writes without an exponent. False if
// it is none, or if its last digit is in doubt.
bool AppendUsual(double number, TextBuffer* out) {
  constexpr int Digits = 6;
  const double size = std::fabs(number);
  if (!(size >= 1e-4 && size < 1e6)) return false;
  int whole_digits = 1;  // digits in front of the point; below 1, less the zeros behind it
  while (whole_digits < Digits && size >= PowersOfTen[whole_digits]) ++whole_digits;
  if (size < 1) {
    whole_digits = 0;
    while (size * PowersOfTen[1 - whole_digits] < 1) --whole_digits;
  }
  std::uint64_t rounded = 0;
  if (!RoundSafely(size * PowersOfTen[Digits - whole_digits], &rounded)) return false;
  if (rounded < 100000 || rounded >= 1000000) return false;

  char digits[Digits];
  for (int i = Digits; i-- > 0; rounded /= 10) digits[i] = static_cast<char>('0' + rounded % 10);
  int used = Digits;
  while (used > 1 && digits[used - 1] == '0') --used;

  char text[2 * Digits];
  char* end = text;
  if (number < 0) *end++ = '-';
  if (whole_digits < 1) {
    *end++ = '0';
    *end++ = '.';
    for (int zeros = -whole_digits; zeros > 0; --zeros) *end++ = '0';
  }
  for (int i = 0; i < used || i < whole_digits; ++i) {
    if (i == whole_digits && i > 0) *end++ = '.';
    *end++ = digits[i];
  }
  out->Append({text, static_cast<std::size_t>(end - text)});
  return true;
}

int CountDigits(std::uint64_t number) {
  int count = 1;
  for (; number >= 10; number /= 10) ++count;
  return count;
}

}  // namespace

void AppendNumber(double number, TextBuffer* out) {
  if (AppendWhole(number, out) || AppendUsual(number, out)) return;
  constexpr int SignificantDigits = 6;
  char buffer[LongestFixed];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, number,
                                    std::chars_format::general, SignificantDigits);
  out->Append({buffer, static_cast<std::size_t>(result.ptr - buffer)});
}

std::int32_t TrimmedLength(double number) {
  constexpr int Decimals = 6;
  std::uint64_t millionths = 0;
  if (std::fabs(number) < 1e6 && RoundSafely(std::fabs(number) * 1e6, &millionths)) {
    int decimals = Decimals;
    for (; decimals > 0 && millionths % 10 == 0; --decimals) millionths /= 10;
    const int digits = std::max(CountDigits(millionths), decimals + 1);
    return (std::signbit(number) ? 1 : 0) + digits + (decimals > 0 ? 1 : 0);
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
