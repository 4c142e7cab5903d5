// What goes wrong around a change though nothing there has changed: names that need braces, and
// empty comments that would come to be another section's.
#include <algorithm>
#include <cstddef>
#include <vector>

#include "lexer/char_class.h"
#include "text/editing.h"

namespace confgrove {
namespace {

// Whether one of the spans, which are in order and apart, touches `span`.
bool IsTouched(const std::vector<Span>& spans, Span span) {
  const auto first =
      std::lower_bound(spans.begin(), spans.end(), span.begin,
                       [](const Span& one, std::size_t begin) { return one.end < begin; });
  return first != spans.end() && first->begin <= span.end;
}

// What stands between a name and the next token that isn't a comment.
Span BehindName(const FileText& file, const SectionText& here) {
  std::size_t next = here.name_piece + 1;
  for (; next < file.record.pieces.size(); ++next) {
    const PieceKind kind = file.record.pieces[next].kind;
    if (kind == PieceKind::Name || kind == PieceKind::CloseBody || kind == PieceKind::Import) break;
  }
  const bool is_last = next == file.record.pieces.size();
  return {here.name.end, is_last ? file.text.size() : file.record.pieces[next].begin};
}

// From the beginning of its line to the end of an inline comment.
Span LineOf(const FileText& file, Span comment) {
  std::size_t begin = comment.begin;
  while (begin > 0 && !IsLineEnd(file.text[begin - 1])) --begin;
  return {begin, comment.end};
}

void RemoveInlineComments(std::int32_t number, Editing* editing) {
  const FileText& file = editing->file;
  const SectionText here = file.At(number);
  for (std::size_t i = here.name_piece; file.record.pieces[i].begin < here.LineEnd(); ++i) {
    const Piece& piece = file.record.pieces[i];
    if (piece.kind != PieceKind::InlineComment || piece.section != number) continue;
    editing->splices.Remove({file.EndBefore(i), piece.end});
    if (i + 1 == file.record.pieces.size()) break;
  }
}

}  // namespace

void RemedyAroundChanges(const std::vector<Pair>& kept, Editing* editing) {
  const FileText& file = editing->file;
  const std::vector<Span> changed = editing->splices.Spans();
  for (const Pair& pair : kept) {
    const SectionText here = file.At(pair.number);
    const bool is_bare = here.value.empty() && here.open.empty() &&
                         pair.section->type == SectionType::None &&
                         pair.section->child_count() == 0;
    if (is_bare && IsTouched(changed, BehindName(file, here))) {
      editing->splices.Put({here.name.end, here.name.end}, " {}", Rank::Braces);
    }
    const Span comment = here.inline_comment;
    const bool is_empty = comment.end == comment.begin + 1 && comment.begin > here.open.begin &&
                          !here.open.empty() && pair.section->inline_comment().empty();
    if (is_empty && IsTouched(changed, LineOf(file, comment))) {
      RemoveInlineComments(pair.number, editing);
    }
  }
}

}  // namespace confgrove
