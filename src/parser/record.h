// What the parser notes, when it is asked to, about where each piece of a file stands.
#ifndef CONFGROVE_PARSER_RECORD_H
#define CONFGROVE_PARSER_RECORD_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace confgrove {

enum class PieceKind : std::uint8_t {
  Name,
  Assign,    // the '='
  Value,     // the whole of it: an array with its brackets
  OpenBody,  // a section can be entered more than once
  CloseBody,
  CommentAbove,   // '#' to the line end; of section 0 the head comment
  InlineComment,  // of several on one section the last one counts
  LooseComment,   // that no section keeps
  BlockComment,
  OpenBlockComment,  // without an end
  Import,            // '$' to the end of the file name
  Slash,             // with the byte that it takes along
  CutOff,            // what the end of the file takes
  PassedOver         // any other token that means nothing where it stands
};

// One piece of a file. Between two of them there are only blanks and line ends, but a value and an
// import can have block comments within them.
struct Piece {
  std::size_t begin, end;
  std::int32_t section;  // counted from 1 in the order of the names in the file; 0 is the root
  PieceKind kind;
};

// Whether it is a comment above something, or one that stands alone: no inline comment.
inline bool IsComment(const Piece& piece) {
  return piece.kind == PieceKind::CommentAbove || piece.kind == PieceKind::LooseComment;
}

// Where a section stands: its places among the pieces, 0 for what it doesn't have.
struct SectionPieces {
  std::int32_t parent = 0;
  std::int32_t subtree_end = 0;  // the first number behind those of the sections below it
  std::uint32_t name = 0;
  std::uint32_t inline_comment = 0;
  std::uint32_t open_body = 0;  // of the last body
  std::uint32_t close_body = 0;
};

// An error or a warning of the reader, while the piece that comes next or the last one was read.
struct Fault {
  bool is_error;
  bool is_read;            // stands in front of the place where reading ends for good
  const char* message;     // its text never goes
  std::int32_t line;       // as the message says it
  std::size_t begin, end;  // of the token at hand
  std::size_t pieces;      // so many were noted before
};

// All that was noted of one file. Offsets are in its text with each CR LF as one LF.
struct Record {
  std::vector<Piece> pieces;                                            // by their beginnings
  std::vector<SectionPieces> sections = std::vector<SectionPieces>(1);  // by number
  std::vector<Fault> faults;                                            // as they were found
  bool nests = false;                        // a piece stands within another one
  std::size_t read_end = std::string::npos;  // where reading ends for good, if it does

  // For a text of so many bytes: for a dense one if it is small, and for a usual one otherwise.
  // Room that isn't used has no pages. And what is given back in one large piece lets glibc keep
  // the pages of the pieces around it, for the next record to take.
  void ReserveFor(std::size_t size) {
    constexpr std::size_t DenseSize = 2;  // of a piece, with the blanks around it
    constexpr std::size_t UsualSize = 10;
    constexpr std::size_t SectionSize = 30;
    constexpr std::size_t Small = 1 << 19;  // in pieces
    pieces.reserve(std::min(size / DenseSize, std::max(size / UsualSize, Small)));
    sections.reserve(size / SectionSize + 1);
  }

  // The root doesn't count.
  std::int32_t section_count() const { return static_cast<std::int32_t>(sections.size()) - 1; }
};

}  // namespace confgrove

#endif
