// LineMap: from the offsets of a text whose line ends were joined to those on the disk.
#ifndef CONFGROVE_TEXT_LINE_MAP_H
#define CONFGROVE_TEXT_LINE_MAP_H

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/line_ends.h"

namespace confgrove {

// A file is read with each CR LF as one LF. On the disk, what stands behind the n-th of these LFs
// stands n bytes further on.
class LineMap {
 public:
  LineMap() = default;

  // `bytes` as they are on the disk.
  explicit LineMap(std::string_view bytes) {
    for (std::size_t pair = bytes.find("\r\n"); pair != std::string_view::npos;
         pair = bytes.find("\r\n", pair + 2)) {
      joined_.push_back(pair - joined_.size());
    }
  }

  // The place on the disk of an offset in the joined text; of a joined LF, that of its CR.
  std::size_t ToDisk(std::size_t offset) const {
    const auto before = std::lower_bound(joined_.begin(), joined_.end(), offset);
    return offset + static_cast<std::size_t>(before - joined_.begin());
  }

 private:
  std::vector<std::size_t> joined_;  // the joined LFs, as offsets in the joined text
};

// `bytes` with each CR LF as one LF.
inline std::string JoinedLines(std::string bytes) {
  Platform::JoinLineEnds(&bytes);
  return bytes;
}

}  // namespace confgrove

#endif
