// The reading half of text mode, the same on every system.
#ifndef CONFGROVE_PLATFORM_LINE_ENDS_H
#define CONFGROVE_PLATFORM_LINE_ENDS_H

#include <cstddef>
#include <string>
#include <string_view>

namespace confgrove::Platform {

// Each CR LF becomes one LF, in place; a CR alone stays. Gives the size that remains.
inline std::size_t JoinLineEnds(char* text, std::size_t size) {
  const std::string_view all(text, size);
  std::size_t pair = all.find("\r\n");
  if (pair == std::string_view::npos) return size;
  std::size_t end = pair;  // of what is done
  while (pair != std::string_view::npos) {
    const std::size_t next = all.find("\r\n", pair + 1);
    const std::size_t stop = next != std::string_view::npos ? next : size;
    std::char_traits<char>::move(text + end, text + pair + 1, stop - pair - 1);
    end += stop - pair - 1;
    pair = next;
  }
  return end;
}

inline void JoinLineEnds(std::string* text) {
  text->resize(JoinLineEnds(text->data(), text->size()));
}

}  // namespace confgrove::Platform

#endif
