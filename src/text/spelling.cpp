// How a value is spelled in the canonical layout.
#include "text/spelling.h"

#include <charconv>
#include <cstddef>
#include <string_view>
#include <utility>

#include "lexer/char_class.h"
#include "save/number_text.h"
#include "text/value_text.h"

namespace confgrove {
namespace {

std::string SavedNumber(double number) {
  char buffer[NumberRoom];
  return {buffer, WriteNumber(number, buffer)};
}

// As a save writes it, unless that loses digits.
std::string ExactNumber(double number) {
  std::string saved = SavedNumber(number);
  double back = 0;
  std::from_chars(saved.data(), saved.data() + saved.size(), back);
  return back == number ? saved : NumberText(number);
}

// A save measures what it doesn't write: the two differ in numbers of many digits. Where it would
// write another text, the length of the text is what counts.
std::int32_t WidthOf(double number, std::string_view text) {
  return text == SavedNumber(number) ? TrimmedLength(number)
                                     : static_cast<std::int32_t>(text.size());
}

Spelling Spell(const RealSection& section, const std::vector<std::string>& numbers) {
  const auto length = [](std::string_view text) { return static_cast<std::int32_t>(text.size()); };
  const std::int32_t name = length(section.name());
  if (section.type == SectionType::None) return {"", name};
  if (section.type != SectionType::Number) {
    std::string text = " = " + ValueText(section, "");
    return {text, name + length(text)};
  }
  std::string text = numbers.size() > 1 ? " = [" : " = ";
  std::int32_t width = name + (numbers.size() > 1 ? 4 : 2);
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (i > 0) text += ',';
    text += numbers[i];
    width += WidthOf(section.numbers().begin()[i], numbers[i]) + 1;
  }
  if (numbers.size() > 1) text += ']';
  return {std::move(text), width};
}

}  // namespace

Spelling SpellingOf(const RealSection& section) {
  std::vector<std::string> numbers;
  if (section.type == SectionType::Number) {
    for (const double number : section.numbers()) numbers.push_back(ExactNumber(number));
  }
  return Spell(section, numbers);
}

Spelling SpellingIn(const FileText& file, std::int32_t number) {
  const SectionText here = file.At(number);
  const RealSection& section = *here.section;
  if (section.type != SectionType::Number) return Spell(section, {});
  const std::vector<Span> places = NumbersIn(file, here.value);
  if (places.size() != section.numbers().size()) return SpellingOf(section);
  std::vector<std::string> numbers;
  numbers.reserve(places.size());
  for (const Span& place : places) numbers.emplace_back(file.Bytes(place));
  return Spell(section, numbers);
}

std::vector<Span> NumbersIn(const FileText& file, Span value) {
  std::vector<Span> numbers;
  std::size_t at = value.begin;
  for (std::size_t piece = file.PieceFrom(value.begin + 1);; ++piece) {
    const bool inside =
        piece < file.record.pieces.size() && file.record.pieces[piece].begin < value.end;
    const std::size_t stop = inside ? file.record.pieces[piece].begin : value.end;
    while (at < stop) {
      if (!Look(Classes.number_byte, file.text[at])) {
        ++at;
        continue;
      }
      const std::size_t begin = at;
      while (at < stop && Look(Classes.number_byte, file.text[at])) ++at;
      numbers.push_back({begin, at});
    }
    if (!inside) return numbers;
    at = file.record.pieces[piece].end;
  }
}

}  // namespace confgrove
