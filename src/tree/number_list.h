// NumberList: the numbers of a section, to be read.
#ifndef CONFGROVE_TREE_NUMBER_LIST_H
#define CONFGROVE_TREE_NUMBER_LIST_H

#include <cstddef>

namespace confgrove {

// Points into the section, which must not change while it is used.
class NumberList {
 public:
  NumberList(const double* first, std::size_t size) : first_(first), size_(size) {}

  std::size_t size() const { return size_; }
  const double* begin() const { return first_; }
  const double* end() const { return first_ + size_; }
  double front() const { return *first_; }

 private:
  const double* first_;
  std::size_t size_;
};

}  // namespace confgrove

#endif
