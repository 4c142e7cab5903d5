// Which sections of a file are which of a tree.
#ifndef CONFGROVE_TEXT_MATCH_H
#define CONFGROVE_TEXT_MATCH_H

#include <cstdint>
#include <vector>

#include "text/file_text.h"
#include "tree/real_section.h"

namespace confgrove {

// The children of one block of a file against those of a section in memory.
struct Match {
  std::vector<std::int32_t> removed;  // numbers of the file, in its order
  struct Child {
    const RealSection* section;  // in memory, in its order
    std::int32_t number;         // its number in the file; 0: a new one
  };
  std::vector<Child> children;
};

// A section whose place among its siblings has changed was removed and made anew: that is how a
// tree comes to it. One that stands under another name where one is missing was renamed.
Match MatchChildren(const FileText& file, std::int32_t block, const RealSection& in_memory);

// Whether both have the same value; numbers bit by bit.
bool SameValue(const RealSection& a, const RealSection& b);

}  // namespace confgrove

#endif
