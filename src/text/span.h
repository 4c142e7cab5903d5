// Span: some bytes of a text.
#ifndef CONFGROVE_TEXT_SPAN_H
#define CONFGROVE_TEXT_SPAN_H

#include <cstddef>
#include <string_view>

namespace confgrove {

// Bytes of a file as it is read, each CR LF as one LF: from `begin` up to `end`.
struct Span {
  std::size_t begin = 0;
  std::size_t end = 0;

  bool empty() const { return begin == end; }
  std::string_view In(std::string_view text) const { return text.substr(begin, end - begin); }
};

}  // namespace confgrove

#endif
