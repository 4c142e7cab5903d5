// Outline: what the text of a file says beyond what the library tells a host.
//
// That is which sections are links and to where, what is imported, and everything that the reader
// passes over and a save would therefore lose. It holds for a file that the library has read
// without errors; of another one the line starts alone are good.
#ifndef CONFGROVE_TOOLS_OUTLINE_H
#define CONFGROVE_TOOLS_OUTLINE_H

#include <cstdint>
#include <string>
#include <vector>

#include "tree.h"

namespace confgrove::Tool {

// A piece of the text and its line, counted from 1.
struct Piece {
  std::string text;
  std::int32_t line = 0;
};

struct Outline {
  Node top;                           // names and links; the rest is left to the library
  std::vector<std::string> imports;   // names as written, in their order
  std::vector<Piece> comments;        // each '#' comment, without '#'
  std::vector<Piece> block_comments;  // each with its marks
  std::vector<Piece> passed_over;     // no comment, and yet not read

  std::string text;                      // each CR LF one LF
  std::vector<std::size_t> line_starts;  // where each line begins in `text`, as the reader counts

  // One line, without its end; "" if there is no such line.
  std::string Line(std::int32_t line) const;
};

Outline ReadOutline(const std::string& file_text);

}  // namespace confgrove::Tool

#endif
