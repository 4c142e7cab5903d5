// The text of new values, and what a file can't hold.
#include "text/value_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdlib>

#include "lexer/char_class.h"

namespace confgrove {
namespace {

constexpr int SmallestPlain = -5;  // decimal exponents that are written out
constexpr int LargestPlain = 20;

bool IsFinite(double number) { return std::isfinite(number); }

}  // namespace

std::string NumberText(double number) {
  constexpr std::size_t Room = 32;
  char buffer[Room];
  const char* const end =
      std::to_chars(buffer, buffer + Room, number, std::chars_format::scientific).ptr;
  const std::string_view scientific(buffer, static_cast<std::size_t>(end - buffer));
  const std::size_t e = scientific.find('e');
  if (e == std::string_view::npos) return std::string(scientific);  // no file can hold it
  const int exponent = std::atoi(std::string(scientific.substr(e + 1)).c_str());
  if (exponent < SmallestPlain || exponent > LargestPlain) return std::string(scientific);

  std::string digits;
  for (const char c : scientific.substr(0, e)) {
    if (IsDigit(c)) digits += c;
  }
  std::string text = std::signbit(number) ? "-" : "";
  if (exponent < 0) {
    text.append("0.").append(static_cast<std::size_t>(-exponent - 1), '0').append(digits);
    return text;
  }
  const auto whole = static_cast<std::size_t>(exponent) + 1;
  if (digits.size() < whole) digits.append(whole - digits.size(), '0');
  text.append(digits, 0, whole);
  if (digits.size() > whole) text.append(".").append(digits.substr(whole));
  return text;
}

std::string ValueText(const RealSection& section, std::string_view comma) {
  switch (section.type) {
    case SectionType::None: return {};
    case SectionType::String: return '"' + section.text().str() + '"';
    case SectionType::Link: return '@' + section.text().str();
    case SectionType::Number: break;
  }
  if (section.numbers().size() == 1) return NumberText(section.numbers().front());
  std::string text = "[";
  for (const double number : section.numbers()) {
    if (text.size() > 1) text.append(comma);
    text.append(NumberText(number));
  }
  return text + ']';
}

const char* FaultOfName(std::string_view name) {
  if (name.empty()) return "an empty name can't be read";
  const bool sound =
      IsFirstLetter(name.front()) && std::all_of(name.begin(), name.end(), IsLaterLetter);
  return sound ? nullptr : "its name is no name that can be read";
}

const char* FaultOfValue(const RealSection& section) {
  switch (section.type) {
    case SectionType::None: break;
    case SectionType::String:
      if (section.text().view().find('"') != std::string_view::npos) {
        return "a text can't hold a double quote";
      }
      if (HasLineEnd(section.text().view())) return "a text can't hold a line end";
      break;
    case SectionType::Link: {
      const std::string_view target = section.text().view();
      const auto fits = [](char c) { return IsLaterLetter(c) || c == '.'; };
      if (target.empty() || !IsFirstLetter(target.front()) ||
          !std::all_of(target.begin(), target.end(), fits)) {
        return "its link is no path that can be read";
      }
      break;
    }
    case SectionType::Number:
      if (!std::all_of(section.numbers().begin(), section.numbers().end(), IsFinite)) {
        return "a file can't hold an infinity, or what is no number";
      }
  }
  return nullptr;
}

const char* FaultOfComments(const RealSection& section) {
  const auto ends_early = [](char c) { return IsLineEnd(c) && c != '\n'; };
  const std::string_view above = section.comment().view();
  if (HasLineEnd(section.inline_comment().view()) ||
      std::any_of(above.begin(), above.end(), ends_early)) {
    return "a comment can't hold such a line end";
  }
  return nullptr;
}

const char* FaultOfImport(std::string_view name) {
  if (name.find('"') != std::string_view::npos || HasLineEnd(name)) {
    return "the name of an imported file can't hold a double quote or a line end";
  }
  return nullptr;
}

}  // namespace confgrove
