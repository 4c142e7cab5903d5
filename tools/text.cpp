// Names, numbers and encodings.
#include "text.h"

#include <confgrove/symbols.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "refusal.h"

namespace confgrove::Tool {
namespace {

constexpr char32_t NoCharacter = 0xFFFFFFFF;

// The characters of the bytes 0x80 to 0xBF in CP1251. Its one unused byte stands for itself.
constexpr std::array<char32_t, 64> UpperHalf = {
    0x0402, 0x0403, 0x201A, 0x0453, 0x201E, 0x2026, 0x2020, 0x2021, 0x20AC, 0x2030, 0x0409,
    0x2039, 0x040A, 0x040C, 0x040B, 0x040F, 0x0452, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x0098, 0x2122, 0x0459, 0x203A, 0x045A, 0x045C, 0x045B, 0x045F, 0x00A0,
    0x040E, 0x045E, 0x0408, 0x00A4, 0x0490, 0x00A6, 0x00A7, 0x0401, 0x00A9, 0x0404, 0x00AB,
    0x00AC, 0x00AD, 0x00AE, 0x0407, 0x00B0, 0x00B1, 0x0406, 0x0456, 0x0491, 0x00B5, 0x00B6,
    0x00B7, 0x0451, 0x2116, 0x0454, 0x00BB, 0x0458, 0x0405, 0x0455, 0x0457};

unsigned Byte(char c) { return static_cast<unsigned char>(c); }

char32_t FromCp1251(char c) {
  const unsigned byte = Byte(c);
  if (byte < 0x80) return byte;
  return byte < 0xC0 ? UpperHalf[byte - 0x80] : 0x0410 + (byte - 0xC0);
}

std::optional<char> ToCp1251(char32_t character) {
  for (unsigned byte = 0; byte < 0x100; ++byte) {
    if (FromCp1251(static_cast<char>(byte)) == character) return static_cast<char>(byte);
  }
  return std::nullopt;
}

// Takes one UTF-8 character off the front. NoCharacter if none stands there.
char32_t TakeUtf8(std::string_view* text) {
  const unsigned first = Byte(text->front());
  const std::size_t size = first < 0x80   ? 1
                           : first < 0xC2 ? 0  // a later byte, or longer than need be
                           : first < 0xE0 ? 2
                           : first < 0xF0 ? 3
                           : first < 0xF5 ? 4
                                          : 0;
  if (size == 0 || size > text->size()) return NoCharacter;
  char32_t character = size == 1 ? first : first & (0xFFU >> (size + 1));
  for (std::size_t i = 1; i < size; ++i) {
    const unsigned byte = Byte((*text)[i]);
    if ((byte & 0xC0) != 0x80) return NoCharacter;
    character = character << 6 | (byte & 0x3F);
  }
  constexpr std::array<char32_t, 5> Smallest = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = character >= 0xD800 && character < 0xE000;
  if (character < Smallest[size] || character > 0x10FFFF || surrogate) return NoCharacter;
  text->remove_prefix(size);
  return character;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsFirstLetter(char c) {
  const unsigned byte = Byte(c);
  const unsigned upper = byte & ~0x20U;
  return (upper >= 'A' && upper <= 'Z') || c == '_' || byte == 0xA8 || byte == 0xB8 ||
         (byte >= 0xC0 && byte != 0xC9 && byte != 0xE9);
}

bool IsLaterLetter(char c) { return IsFirstLetter(c) || IsDigit(c); }

}  // namespace

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    if (TakeUtf8(&text) == NoCharacter) return false;
  }
  return true;
}

char32_t TakeCharacter(std::string_view* text, bool is_utf8) {
  constexpr char32_t ForStrayByte = 0xFFFD;
  const char first = text->front();
  const char32_t character = is_utf8 ? TakeUtf8(text) : FromCp1251(first);
  if (is_utf8 && character != NoCharacter) return character;
  text->remove_prefix(1);
  return is_utf8 ? ForStrayByte : character;
}

void AppendUtf8(char32_t character, std::string* out) {
  const auto put = [out](char32_t byte) { out->push_back(static_cast<char>(byte)); };
  if (character < 0x80) return put(character);
  if (character < 0x800) {
    put(0xC0 | character >> 6);
  } else if (character < 0x10000) {
    put(0xE0 | character >> 12);
    put(0x80 | (character >> 6 & 0x3F));
  } else {
    put(0xF0 | character >> 18);
    put(0x80 | (character >> 12 & 0x3F));
    put(0x80 | (character >> 6 & 0x3F));
  }
  put(0x80 | (character & 0x3F));
}

bool IsName(std::string_view text) {
  return !text.empty() && IsFirstLetter(text.front()) &&
         std::all_of(text.begin(), text.end(), IsLaterLetter);
}

bool IsPath(std::string_view text) {
  for (;;) {
    const std::size_t dot = text.find('.');
    if (!IsName(text.substr(0, dot))) return false;
    if (dot == std::string_view::npos) return true;
    text.remove_prefix(dot + 1);
  }
}

std::string NumberText(double number) {
  constexpr double PlainFrom = 1e-4;
  constexpr double PlainTo = 1e15;
  const double size = std::fabs(number);
  const bool plain = size == 0 || (size >= PlainFrom && size < PlainTo);
  std::array<char, 32> buffer{};
  const auto result =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                    plain ? std::chars_format::fixed : std::chars_format::scientific);
  return {buffer.data(), result.ptr};
}

std::optional<double> ParseNumber(std::string_view text) {
  constexpr std::string_view Digits = "0123456789";
  std::string plain(text);
  const std::size_t exponent = plain.find_first_of("eEdD");
  std::string_view base = std::string_view(plain).substr(0, exponent);
  if (!base.empty() && (base.front() == '+' || base.front() == '-')) base.remove_prefix(1);
  const std::size_t point = base.find('.');
  const std::size_t digits = base.size() - (point != std::string_view::npos ? 1 : 0);
  if (digits == 0 || base.find_first_not_of(Digits) != point) return std::nullopt;
  if (point != std::string_view::npos &&
      base.find_first_not_of(Digits, point + 1) != std::string_view::npos) {
    return std::nullopt;
  }
  if (exponent != std::string::npos) {
    plain[exponent] = 'e';
    std::string_view power = std::string_view(plain).substr(exponent + 1);
    if (!power.empty() && (power.front() == '+' || power.front() == '-')) power.remove_prefix(1);
    if (power.empty() || power.find_first_not_of(Digits) != std::string_view::npos) {
      return std::nullopt;
    }
  }
  return std::strtod(plain.c_str(), nullptr);  // the tool never leaves the "C" locale
}

std::string NameToUtf8(std::string_view name) {
  std::string utf8;
  for (const char c : name) AppendUtf8(FromCp1251(c), &utf8);
  return utf8;
}

std::string TextToUtf8(std::string_view text) {
  return IsUtf8(text) ? std::string(text) : NameToUtf8(text);
}

std::string PathFromShell(const std::string& argument) {
  std::string path = argument;
  Symbols::clear_blanks(path);
  if (!IsUtf8(path)) return path;
  std::string converted;
  for (std::string_view rest = path; !rest.empty();) {
    const std::optional<char> byte = ToCp1251(TakeUtf8(&rest));
    if (!byte) throw Refusal("'" + argument + "' holds characters that no name can have");
    converted += *byte;
  }
  return converted;
}

}  // namespace confgrove::Tool
