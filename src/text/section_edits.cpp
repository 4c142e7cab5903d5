// The edits of one section: its name, its value, its comments.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "lexer/char_class.h"
#include "text/editing.h"
#include "text/match.h"
#include "text/section_text.h"
#include "text/spelling.h"
#include "text/value_text.h"

namespace confgrove {
namespace {

// Changes the numbers of an array one by one, so that its layout stays. False if that can't be
// done.
bool EditArray(Span array, const NumberList& in_file, const NumberList& wanted, Editing* editing) {
  const FileText& file = editing->file;
  const std::vector<Span> places = NumbersIn(file, array);
  const std::size_t common = std::min(in_file.size(), wanted.size());
  if (file.text[array.begin] != '[' || places.size() != in_file.size() || common < 2) return false;
  const Span between{places[places.size() - 2].end, places.back().begin};
  const auto separates = [](char c) { return c == ',' || c == ' ' || c == '\t' || IsLineEnd(c); };
  const std::string_view last_comma = file.Bytes(between);
  for (std::size_t i = 0; i < common; ++i) {
    const double before = in_file.begin()[i];
    const double after = wanted.begin()[i];
    if (before == after && std::signbit(before) == std::signbit(after)) continue;
    editing->splices.Put(places[i], NumberText(after));
  }
  if (wanted.size() < in_file.size()) {
    editing->splices.Remove({places[common - 1].end, places.back().end});
  }
  if (wanted.size() <= in_file.size()) return true;
  const bool is_plain = std::all_of(last_comma.begin(), last_comma.end(), separates);
  const std::string comma = is_plain ? std::string(last_comma) : editing->style().comma;
  std::string more;
  for (std::size_t i = common; i < wanted.size(); ++i) {
    more.append(comma).append(NumberText(wanted.begin()[i]));
  }
  editing->splices.Put({places.back().end, places.back().end}, std::move(more));
  return true;
}

}  // namespace

std::string IndentOf(const FileText& file, std::int32_t number) {
  if (number == 0) return {};
  const std::size_t name = file.At(number).name_piece;
  if (file.BeginsLine(name)) return std::string(file.Indent(name));
  return IndentOf(file, file.At(number).parent);
}

std::string InnerIndent(const FileText& file, std::int32_t number, const Style& style) {
  for (std::int32_t child = file.FirstChild(number), tried = 0; child != 0 && tried < 8; ++tried) {
    if (file.BeginsLine(file.At(child).name_piece)) return IndentOf(file, child);
    child = file.NextSibling(child);
  }
  return number == 0 ? std::string() : IndentOf(file, number) + style.step;
}

void EditName(std::int32_t number, const RealSection& section, Editing* editing) {
  const SectionText here = editing->file.At(number);
  if (here.section->name() == section.name()) return;
  editing->Refuse(section, FaultOfName(section.name()));
  editing->splices.Put(here.name, std::string(section.name()), Rank::Name);
}

void EditValue(std::int32_t number, const RealSection& section, Editing* editing) {
  const FileText& file = editing->file;
  const SectionText here = file.At(number);
  if (SameValue(*here.section, section)) return;
  editing->Refuse(section, FaultOfValue(section));
  if (RewritesValue(number, section, *editing)) return;  // EditTail does
  // Behind an array of several lines a comment is the next section's. It must not come to stand on
  // the line of the name.
  const bool begins_line = HasLineEnd(file.Bytes(here.value)) && !file.EndsLine(here.value.end) &&
                           file.PieceFrom(here.value.end) < file.record.pieces.size();
  const std::string line = begins_line ? '\n' + IndentOf(file, number) : "";
  if (section.type == SectionType::None) {
    const bool needs_braces = here.open.empty() && section.child_count() == 0;
    editing->splices.Put({here.name.end, here.value.end}, (needs_braces ? " {}" : "") + line);
    return;
  }
  if (here.value.empty()) {
    const std::int32_t example = number > 1 ? number - 1 : number;
    const Style style = StyleLike(file, example, editing->style());
    editing->splices.Put({here.name.end, here.name.end}, Assignment(section, style));
    return;
  }
  if (section.type == SectionType::Number && here.section->type == SectionType::Number &&
      EditArray(here.value, here.section->numbers(), section.numbers(), editing)) {
    return;
  }
  const bool is_array = section.type == SectionType::Number && section.numbers().size() > 1;
  const std::string text = ValueText(section, is_array ? editing->style().comma : "");
  editing->splices.Put(here.value, text + line);
}

void EditCommentAbove(std::int32_t number, const RealSection& section, Editing* editing) {
  const FileText& file = editing->file;
  const SectionText here = file.At(number);
  const std::string_view wanted = section.comment().view();
  if (SameComment(file, number, wanted)) return;
  editing->Refuse(section, FaultOfComments(section));
  const std::size_t first = file.FirstDirectComment(here.name_piece);
  const std::string_view whole = here.section->comment().view();
  const std::string direct = file.CommentText(first, here.name_piece);
  const std::string_view apart = whole.substr(0, whole.size() - direct.size());
  std::string_view lines = wanted;
  if (lines.substr(0, apart.size()) == apart) lines.remove_prefix(apart.size());

  const std::string indent = IndentOf(file, number);
  std::string text = CommentLines(lines, indent);
  if (first < here.name_piece) {
    const bool own_line = file.BeginsLine(first);
    const std::size_t begin = own_line ? file.LineBegin(first) : file.EndBefore(first);
    const std::size_t end = file.LineBegin(here.name_piece);
    if (!own_line) text.insert(0, 1, '\n');
    editing->splices.Put({begin, end}, std::move(text), Rank::CommentAbove);
  } else if (file.BeginsLine(here.name_piece)) {
    const std::size_t begin = file.LineBegin(here.name_piece);
    editing->splices.Put({begin, begin}, std::move(text), Rank::CommentAbove);
  } else {
    editing->splices.Put({file.EndBefore(here.name_piece), here.name.begin}, '\n' + text + indent,
                         Rank::CommentAbove);
  }
}

}  // namespace confgrove
