// How a file is laid out.
#include "text/style.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "lexer/char_class.h"

namespace confgrove {
namespace {

// One blank or none: columns of '=' that were drawn up by hand can't be carried on.
std::string Gap(const FileText& file, std::size_t begin, std::size_t end) {
  return begin == end || HasLineEnd(file.Bytes({begin, end})) ? "" : " ";
}

// What stands between the first two numbers of an array; empty if it is no good example.
std::string CommaOf(std::string_view array) {
  if (array.empty() || array.front() != '[') return {};
  std::size_t begin = 0;
  while (begin < array.size() && !Look(Classes.number_byte, array[begin])) ++begin;
  while (begin < array.size() && Look(Classes.number_byte, array[begin])) ++begin;
  std::size_t end = begin;
  while (end < array.size() && !Look(Classes.number_byte, array[end])) ++end;
  if (end == array.size()) return {};
  const std::string between(array.substr(begin, end - begin));
  const bool usual = between == "," || between == ", " || between == " " || between == " , ";
  return usual ? between : std::string();
}

// The indentation of a nested section against its parent; empty if it shows none.
std::string StepOf(const FileText& file, std::int32_t number) {
  const SectionText here = file.At(number);
  if (here.parent == 0) return {};
  const SectionText parent = file.At(here.parent);
  if (!file.BeginsLine(here.name_piece) || !file.BeginsLine(parent.name_piece)) return {};
  const std::string_view inner = file.Indent(here.name_piece);
  const std::string_view outer = file.Indent(parent.name_piece);
  if (inner.size() <= outer.size() || inner.substr(0, outer.size()) != outer) return {};
  return std::string(inner.substr(outer.size()));
}

}  // namespace

Style StyleLike(const FileText& file, std::int32_t example, Style style) {
  const SectionText here = file.At(example);
  if (!here.assign.empty()) {
    style.before_assign = Gap(file, here.name.end, here.assign.begin);
    style.after_assign = Gap(file, here.assign.end, here.value.begin);
  }
  if (!here.open.empty()) {
    const std::size_t brace = file.PieceFrom(here.first_open.begin);
    style.brace_on_line = !file.BeginsLine(brace);
  }
  std::string comma = CommaOf(file.Bytes(here.value));
  if (!comma.empty()) style.comma = std::move(comma);
  return style;
}

Style StyleOf(const FileText& file) {
  Style style;
  bool assign = false;
  bool body = false;
  bool array = false;
  bool step = false;
  for (std::int32_t i = 1; i <= file.record.section_count(); ++i) {
    if (assign && body && array && step) break;
    const Style like = StyleLike(file, i, style);
    const SectionText here = file.At(i);
    if (!assign && !here.assign.empty()) {
      style.before_assign = like.before_assign;
      style.after_assign = like.after_assign;
      assign = true;
    }
    const bool several_lines =
        !here.open.empty() && HasLineEnd(file.Bytes({here.first_open.begin, here.close.end}));
    if (!body && several_lines) {
      style.brace_on_line = like.brace_on_line;
      body = true;
    }
    if (!array && !CommaOf(file.Bytes(here.value)).empty()) {
      style.comma = like.comma;
      array = true;
    }
    std::string step_here = step ? std::string() : StepOf(file, i);
    if (!step_here.empty()) {
      style.step = std::move(step_here);
      step = true;
    }
  }
  return style;
}

}  // namespace confgrove
