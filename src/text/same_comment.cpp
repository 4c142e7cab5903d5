// When a comment of a file is the one of a tree.
#include <string>
#include <string_view>

#include "text/tree_edits.h"

namespace confgrove {
namespace {

// The head comment of a file without imports is what stands above its first section and is set
// apart from it, or what no section keeps.
bool StandsAtHead(const FileText& file, std::string_view comment) {
  const std::int32_t first = file.FirstChild(0);
  std::string above;
  if (first != 0) {
    const std::size_t direct = file.FirstDirectComment(file.At(first).name_piece);
    above = file.CommentText(0, direct);
  } else {
    above = file.CommentText(0, file.record.pieces.size());
  }
  return above.substr(0, comment.size()) == comment;
}

// Whether `comment` is what stands above a piece from some gap on: a blank line, or something else
// that isn't a comment, sets apart what stands before it.
bool IsBehindGap(const FileText& file, std::size_t piece, std::int32_t number,
                 std::string_view comment) {
  std::size_t first = file.FirstDirectComment(piece);
  while (file.CommentText(first, piece) != comment) {
    std::size_t before = first;
    while (before > 0 && file.record.pieces[before - 1].kind != PieceKind::CommentAbove) --before;
    if (before == 0 || file.record.pieces[before - 1].section != number) return false;
    first = file.FirstDirectComment(before - 1);
  }
  return true;
}

}  // namespace

bool SameComment(const FileText& file, std::int32_t number, std::string_view comment) {
  const SectionText here = file.At(number);
  const std::string_view whole = here.section->comment().view();
  if (comment == whole) return true;
  if (number == 0 && file.import_count == 0) return comment.empty() || StandsAtHead(file, comment);
  if (comment.size() > whole.size() || whole.substr(whole.size() - comment.size()) != comment) {
    return false;
  }
  return IsBehindGap(file, number != 0 ? here.name_piece : file.last_import, number, comment);
}

}  // namespace confgrove
