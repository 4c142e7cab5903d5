// The lines of files, as a person sees them.
#ifndef CONFGROVE_TOOLS_SOURCE_LINE_H
#define CONFGROVE_TOOLS_SOURCE_LINE_H

#include <confgrove/problem.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace confgrove::Tool {

// UTF-8 in which nothing can act on a terminal: control bytes and marks of direction are signs.
// `text` is UTF-8, or CP1251 if it isn't.
std::string Visible(std::string_view text);

// A line, or the stretch of a long one around a place in it.
struct SourceLine {
  std::string text;       // in UTF-8, tabs as blanks
  std::size_t mark = 0;   // the columns in front of the place, on a screen
  std::size_t width = 1;  // of the place, at least 1
};

// A file whose lines are shown.
class SourceFile {
 public:
  explicit SourceFile(std::string bytes);

  // The line of a place in this file.
  SourceLine LineOf(const Place& place) const;

  // Its column in UTF-16 units, from 1. Places in the order of their offsets are cheapest.
  std::size_t Utf16Column(const Place& place);

 private:
  std::size_t Back(std::size_t offset, std::size_t characters) const;
  std::size_t BeginOfCharacter(std::size_t offset) const;

  std::string bytes_;
  bool is_utf8_;

  // The place whose column was asked for last: long lines can have many.
  std::int32_t last_line_ = 0;
  std::size_t last_offset_ = 0;
  std::size_t last_column_ = 1;
};

// Files by their paths, each read once. One that is gone is empty.
class SourceFiles {
 public:
  SourceFile& Get(const std::string& path);

 private:
  std::map<std::string, SourceFile> files_;
};

}  // namespace confgrove::Tool

#endif
