// FileText: a file as text and as a tree, with the place of each section.
#ifndef CONFGROVE_TEXT_FILE_TEXT_H
#define CONFGROVE_TEXT_FILE_TEXT_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "parser/record.h"
#include "text/line_map.h"
#include "text/span.h"
#include "tree/root_section.h"

namespace confgrove {

// Where a section stands. A span that is empty isn't there.
struct SectionText {
  const RealSection* section = nullptr;  // in the tree of the file
  std::int32_t parent = 0;
  std::size_t name_piece = 0;
  Span name, assign, value, inline_comment;
  Span first_open, open, close;  // braces: the first body's, then the last one's

  // Behind all of it but an inline comment.
  std::size_t End() const {
    return !close.empty() ? close.end : !value.empty() ? value.end : name.end;
  }
  // Behind an inline comment too.
  std::size_t LineEnd() const { return std::max(End(), inline_comment.end); }
};

// The tree of a file that holds `bytes`, with what it imports; null if it is faulty. No message is
// sent.
std::unique_ptr<RootSection> TreeOf(const std::string& bytes, const FileOrigin& origin);

// Sections are numbered from 1 in the order of their names, 0 is the root. Offsets and spans are
// those of `text`.
class FileText {
 public:
  // Reads `bytes` as the file of `origin`, with what it imports. No message is sent. The bytes
  // outlive it.
  FileText(const std::string& bytes, const FileOrigin& origin);

  // The tree of the file; null if it is faulty.
  RootSection* root() const { return root_.get(); }

  // The first error of a faulty file, or null if it stands in a file that is imported.
  const Fault* FirstError() const;

  std::string_view Bytes(Span span) const {
    return std::string_view(text).substr(span.begin, span.end - span.begin);
  }

  // The first child of a section, and the sibling behind one; 0 if there is none.
  std::int32_t FirstChild(std::int32_t number) const {
    return number + 1 < NextNumber(number) ? number + 1 : 0;
  }
  std::int32_t NextSibling(std::int32_t number) const {
    const SectionPieces& here = record.sections[Index(number)];
    return here.subtree_end < NextNumber(here.parent) ? here.subtree_end : 0;
  }

  // The first number behind a section and all below it.
  std::int32_t NextNumber(std::int32_t number) const {
    return record.sections[Index(number)].subtree_end;
  }

  // The section in the tree of the file.
  const RealSection& Node(std::int32_t number) const;

  SectionText At(std::int32_t number) const;

  // The name of a section, of a faulty file too.
  std::string NameOf(std::int32_t number) const;

  // The comments right above the piece, with no blank line and nothing else between: the first of
  // them, or the piece itself if there are none.
  std::size_t FirstDirectComment(std::size_t piece) const;

  // The text of the comments from one piece up to another, as a tree holds it.
  std::string CommentText(std::size_t first, std::size_t end) const;

  // The first piece that begins at `offset` or behind it; pieces.size() if none does.
  std::size_t PieceFrom(std::size_t offset) const;

  // Where all that stands in front of a piece ends: between there and the piece are blanks alone.
  std::size_t EndBefore(std::size_t piece) const {
    if (piece == 0) return 0;
    return ends_.empty() ? record.pieces[piece - 1].end : ends_[piece - 1];
  }

  // Whether only blanks stand between the piece and the beginning of its line.
  bool BeginsLine(std::size_t piece) const;

  // Whether only blanks stand between the place, which is the end of a piece, and the line end.
  bool EndsLine(std::size_t end) const;

  // Whether a comment that is no inline comment stands on the line behind the end of a piece.
  bool CommentFollows(std::size_t end) const;

  // The beginning of the line of a piece that begins it, and of the line behind a place that ends
  // one; the end of the text if that is the last one.
  std::size_t LineBegin(std::size_t piece) const;
  std::size_t NextLine(std::size_t end) const;

  // The line end behind a place that ends a line.
  std::size_t LineStop(std::size_t end) const;

  std::string_view Indent(std::size_t piece) const {
    const std::size_t begin = LineBegin(piece);
    return Bytes({begin, record.pieces[piece].begin});
  }

  const std::string& bytes;  // as on the disk

  std::string_view text;  // each CR LF as one LF
  LineMap lines;
  Record record;
  std::size_t last_import = 0;  // its place among the pieces, if there are imports
  std::size_t import_count = 0;

 private:
  static std::size_t Index(std::int32_t number) { return static_cast<std::size_t>(number); }

  void FindEnds();
  void FindImports();

  std::string joined_;  // the text, if some lines end in CR LF
  std::unique_ptr<RootSection> root_;

  // By number; those of a block are found when one of them is asked for.
  mutable std::vector<const RealSection*> nodes_;
  std::vector<std::size_t>
      ends_;  // the furthest end of the pieces up to each; none if it's its own
};

}  // namespace confgrove

#endif
