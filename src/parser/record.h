// What the parser notes, when it is asked to, about where each piece of a file stands.
#ifndef CONFGROVE_PARSER_RECORD_H
#define CONFGROVE_PARSER_RECORD_H

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
  PieceKind kind;
  std::int32_t section;  // counted from 1 in the order of the names in the file; 0 is the root
  std::int32_t line;     // in which it begins, as messages count lines
  std::size_t begin, end;
};

// Whether it is a comment above something, or one that stands alone: no inline comment.
inline bool IsComment(const Piece& piece) {
  return piece.kind == PieceKind::CommentAbove || piece.kind == PieceKind::LooseComment;
}

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
  std::vector<Piece> pieces;  // by their beginnings
  std::vector<Fault> faults;  // as they were found
  std::int32_t section_count = 0;
  std::size_t read_end = std::string::npos;  // where reading ends for good, if it does
};

}  // namespace confgrove

#endif
