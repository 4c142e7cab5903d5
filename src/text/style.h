// How a file is laid out, learnt from what stands in it.
#ifndef CONFGROVE_TEXT_STYLE_H
#define CONFGROVE_TEXT_STYLE_H

#include <cstdint>
#include <string>

#include "text/file_text.h"

namespace confgrove {

// What a new section takes from those around it. The start values are the canonical layout.
struct Style {
  std::string before_assign = " ";
  std::string after_assign = " ";
  std::string comma = ",";     // and what stands with it between two numbers of an array
  std::string step = "\t";     // the indentation of a block against the one around it
  bool brace_on_line = false;  // on the line of the name
};

// The style of a whole file.
Style StyleOf(const FileText& file);

// `style`, with what the section `example` shows of its own.
Style StyleLike(const FileText& file, std::int32_t example, Style style);

}  // namespace confgrove

#endif
