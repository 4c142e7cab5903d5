// LinkTrail: how a read notices that links run in a circle.
#ifndef CONFGROVE_TREE_LINK_TRAIL_H
#define CONFGROVE_TREE_LINK_TRAIL_H

#include <cstdint>

namespace confgrove {

// The links that reads have followed and that no successful read has cleared yet. The whole trail
// is a number, and a link is on it if it bears that number: so it takes no memory, a test is one
// comparison, and clearing is one step.
class LinkTrail {
 public:
  // The number of a trail. A new section bears 0, which no trail has.
  using Mark = std::uint64_t;

  static Mark Current() { return current_; }
  static void Append(Mark* mark, Mark trail) {
    *mark = trail;
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
