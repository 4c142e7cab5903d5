// Numbers: the rules of their bytes, and their value.
#include <algorithm>
#include <cfloat>
#include <charconv>
#include <cstring>
#include <limits>
#include <string>

#include "base/sixteen_bytes.h"
#include "lexer/char_class.h"
#include "lexer/lexer.h"

namespace confgrove {
namespace {

enum class Sign { None, Plus, Minus };

// What has been seen of a number, and what is wrong with the next byte.
class NumberRules {
 public:
  // Takes `c` if it can continue the number. If it can't, `*fault` is what is wrong with it, or
  // null if it simply isn't part of the number.
  bool Accept(char c, const char** fault) {
    *fault = nullptr;
    if (IsDigit(c)) {
      (exponent_ ? exponent_digits_ : base_digits_) = true;
    } else if (c == '.') {
      *fault = AcceptPoint();
    } else if (c == '-' || c == '+') {
      *fault = AcceptSign(c == '-' ? Sign::Minus : Sign::Plus);
    } else if (c == 'e' || c == 'E' || c == 'd' || c == 'D') {
      if (exponent_) *fault = "double 'E', 'e', 'd' or 'D'";
      exponent_ = true;
    } else {
      return false;
    }
    return *fault == nullptr;
  }

  // What is missing when the number ends in front of a byte; null if it is complete.
  const char* Missing() const {
    if (exponent_ && !exponent_digits_) return "exp digits was forgotten";
    return base_digits_ ? nullptr : "base digits was forgotten";
  }

 private:
  const char* AcceptPoint() {
    if (point_) return "double point, syntax";
    if (exponent_) return "invlaid '.'";
    point_ = true;
    base_sign_ = Sign::Plus;
    return nullptr;
  }

  const char* AcceptSign(Sign sign) {
    const bool minus = sign == Sign::Minus;
    if (!base_digits_) {
      if (base_sign_ == Sign::Minus) return minus ? "double '-' before number" : "'-+' syntax";
      if (base_sign_ == Sign::Plus) return minus ? "'+-' syntax" : "'++' syntax";
      base_sign_ = sign;
      return nullptr;
    }
    if (!exponent_) return "'-' or '+' before 'E', 'e', 'd' or 'D'";
    if (exponent_digits_) return "illegal '-' or '+' in exp";
    if (exponent_sign_ == Sign::Minus) return minus ? "'--' before exp" : "'-+' before exp";
    if (exponent_sign_ == Sign::Plus) return minus ? "'+-' before exp" : "'++' before exp";
    exponent_sign_ = sign;
    return nullptr;
  }

  bool point_ = false;
  bool exponent_ = false;
  bool base_digits_ = false;
  bool exponent_digits_ = false;
  Sign base_sign_ = Sign::None;
  Sign exponent_sign_ = Sign::None;
};

// Whether a number that no double can hold is too large; it is too small otherwise. `text` has the
// form of a number.
bool IsTooLarge(std::string_view text) {
  const std::size_t exponent_at = text.find_first_of("eE");
  const std::string_view base = text.substr(0, exponent_at);
  const std::size_t first = base.find_first_of("123456789");
  const std::size_t point = std::min(base.find('.'), base.size());
  // Orders of magnitude of the first digit that isn't 0, from the point.
  const long long place = first < point ? static_cast<long long>(point - first)
                                        : -static_cast<long long>(first - point);
  long long exponent = 0;
  if (exponent_at != std::string_view::npos) {
    std::string_view digits = text.substr(exponent_at + 1);
    if (!digits.empty() && digits.front() == '+') digits.remove_prefix(1);
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    if (result.ec == std::errc::result_out_of_range) return digits.front() != '-';
  }
  return exponent > -place;
}

constexpr double Divisors[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                               1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

constexpr std::uint64_t ValueOf(char digit) { return static_cast<std::uint64_t>(digit - '0'); }

// The value of up to seven digits. Eight bytes are read, of a processor that has the first one
// lowest. In each step what stands in neighbours is joined in one of twice the size.
std::int64_t ValueOfDigits(const char* from, std::ptrdiff_t count) {
  constexpr std::uint64_t Zeros = 0x3030303030303030;
  constexpr std::uint64_t EvenPairs = 0x000000FF000000FF;
  std::uint64_t eight = 0;
  std::memcpy(&eight, from, sizeof eight);
  eight = (eight - Zeros) << (56 - 8 * count) << 8;  // zeros in front of the digits, none behind
  const std::uint64_t pairs = eight * 10 + (eight >> 8);
  const std::uint64_t value = (pairs & EvenPairs) * (1000000ULL << 32 | 100) +
                              (pairs >> 16 & EvenPairs) * (10000ULL << 32 | 1);
  return static_cast<std::int64_t>(value >> 32);
}

// Reads a number of up to seven digits in front of the point and as many behind it, without a
// branch on how many there are. Null if it has another form, or stands near the end.
const char* ReadShortNumber(const char* from, const char* end, double* value) {
  constexpr std::ptrdiff_t MostDigits = 7;
  constexpr std::ptrdiff_t ReadAtOnce = 8;  // when a value is computed
  if (!SixteenBytes::Fit(from, end, ReadAtOnce)) return nullptr;
  const SixteenBytes bytes(from);
  const ByteBits points = bytes.Are('.').bits();
  const std::ptrdiff_t minus = *from == '-' ? 1 : 0;
  const ByteBits inside = bytes.AreWithin('0', '9').bits() | points | static_cast<ByteBits>(minus);
  const int size = LowestBit(~inside);
  const ByteBits points_inside = points & ((1U << size) - 1);
  const int point = LowestBit(points_inside | 1U << size);
  const std::ptrdiff_t whole = point - minus;
  const std::ptrdiff_t decimals = size - point - (points_inside != 0 ? 1 : 0);
  const bool has_more_points = (points_inside & (points_inside - 1)) != 0;
  if (whole < 1 || whole > MostDigits || decimals > MostDigits || has_more_points ||
      Look(Classes.number_byte, from[size])) {
    return nullptr;
  }
  // Both are exact, so that their quotient is the double nearest to the number.
  constexpr std::int64_t Scales[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000};
  constexpr double Signs[] = {1, -1};
  const std::int64_t digits = ValueOfDigits(from + minus, whole) * Scales[decimals] +
                              ValueOfDigits(from + size - decimals, decimals);
  *value = static_cast<double>(digits) / Divisors[decimals] * Signs[minus];
  return from + size;
}

// Reads a number of the usual form, digits with a point among them at most and a sign in front at
// most. Null if it is of another form, or too long to be exact; else the byte behind it.
const char* ReadUsualNumber(const char* from, double* value) {
  constexpr std::ptrdiff_t MostDigits = 15;  // so many fit a double without rounding
  const bool minus = *from == '-';
  const char* begin = minus ? from + 1 : from;
  const char* at = begin;
  std::uint64_t digits = 0;  // of more than there may be it holds nothing of use
  for (; IsDigit(*at); ++at) digits = digits * 10 + ValueOf(*at);
  std::ptrdiff_t count = at - begin;
  if (count == 0 || count > MostDigits) return nullptr;
  std::ptrdiff_t decimals = 0;
  if (*at == '.') {
    const char* point = at++;
    for (; IsDigit(*at); ++at) digits = digits * 10 + ValueOf(*at);
    decimals = at - point - 1;
    count += decimals;
    if (count > MostDigits) return nullptr;
  }
  if (Look(Classes.number_byte, *at)) return nullptr;
  *value = static_cast<double>(static_cast<std::int64_t>(digits)) / Divisors[decimals];
  if (minus) *value = -*value;
  return at;
}

// Either of them, where a quotient isn't rounded twice.
const char* ReadExactNumber(const char* from, const char* end, double* value) {
  if constexpr (FLT_EVAL_METHOD != 0) return nullptr;
  const char* const behind = ReadShortNumber(from, end, value);
  return behind != nullptr ? behind : ReadUsualNumber(from, value);
}

// The value of the longest part of `text` from its beginning on that is a number; 0 without one.
double ToDouble(std::string_view text) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  std::string with_e;
  const std::size_t exponent_at = text.find_first_of("dD");
  if (exponent_at != std::string_view::npos) {
    with_e = text;
    with_e[exponent_at] = 'e';
    text = with_e;
  }
  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    value = IsTooLarge(text) ? std::numeric_limits<double>::infinity() : 0.0;
    if (text.front() == '-') value = -value;
  }
  return value;
}

}  // namespace

TokenKind Lexer::ReadNumber() {
  const char* const begin = at_;
  const char* const behind = ReadExactNumber(begin, end_, &number);
  if (behind == nullptr) return ReadUnusualNumber();
  at_ = behind;
  bytes = {begin, static_cast<std::size_t>(behind - begin)};
  WarnOfZero();
  return TokenNumber;
}

TokenKind Lexer::ReadUnusualNumber() {
  const char* const begin = at_;
  NumberRules rules;
  const char* fault = nullptr;
  while (rules.Accept(*at_, &fault)) ++at_;
  bytes = {begin, static_cast<std::size_t>(at_ - begin)};
  if (fault != nullptr) {
    ++at_;  // the byte at fault is dropped
  } else if (at_ != end_) {
    fault = rules.Missing();
  }
  if (fault != nullptr) ReportError(fault, begin);
  number = ToDouble(bytes);
  WarnOfZero();
  return TokenNumber;
}

// A zero of more than a few bytes may be meant for something else.
void Lexer::WarnOfZero() {
  constexpr std::size_t LongestQuietZero = 3;
  if (number != 0 || bytes.size() <= LongestQuietZero) return;
  listener_->ReportWarning("cannot parse number, set to zero", Offset(bytes.data()), Offset(at_));
}

}  // namespace confgrove
