// The reading half of text mode, the same on every system.
#ifndef CONFGROVE_PLATFORM_LINE_ENDS_H
#define CONFGROVE_PLATFORM_LINE_ENDS_H

#include <cstddef>
#include <string>

namespace confgrove::Platform {

// Each CR LF becomes one LF, in place; a CR alone stays.
inline void JoinLineEnds(std::string* text) {
  std::size_t pair = text->find("\r\n");
  if (pair == std::string::npos) return;
  std::size_t end = pair;  // of what is done
  while (pair != std::string::npos) {
    const std::size_t next = text->find("\r\n", pair + 1);
    const std::size_t stop = next != std::string::npos ? next : text->size();
    std::char_traits<char>::move(&(*text)[end], &(*text)[pair + 1], stop - pair - 1);
    end += stop - pair - 1;
    pair = next;
  }
  text->resize(end);
}

}  // namespace confgrove::Platform

#endif
