// LinkTrail: the links followed since a read last reached a section that is no link.
#ifndef CONFGROVE_TREE_LINK_TRAIL_H
#define CONFGROVE_TREE_LINK_TRAIL_H

#include <cstdint>

namespace confgrove {

// The list as a whole is a number, and a section stands on it if it bears that number: so it takes
// no memory, asks no section twice, and is emptied in one step.
class LinkTrail {
 public:
  // The place of one section. A new section stands on no list.
  using Mark = std::uint64_t;

  static bool Contains(Mark mark) { return mark == current_; }
  static void Append(Mark* mark) {
    *mark = current_;
    empty_ = false;
  }
  static void Clear() {
    if (!empty_) ++current_;
    empty_ = true;
  }

 private:
  static inline std::uint64_t current_ = 1;
  static inline bool empty_ = true;
};

}  // namespace confgrove

#endif
