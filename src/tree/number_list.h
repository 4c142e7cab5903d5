// NumberList: the numbers of a section, in the memory of its tree.
#ifndef CONFGROVE_TREE_NUMBER_LIST_H
#define CONFGROVE_TREE_NUMBER_LIST_H

#include <algorithm>
#include <cstddef>

#include "tree/pool.h"

namespace confgrove {

// An array of numbers, owned by the pool that each change is given. A single number, which is what
// most sections have, stands in the object itself.
class NumberList {
 public:
  NumberList() : one_(0) {}

  std::size_t size() const { return size_; }
  const double* begin() const { return size_ > 1 ? many_ : &one_; }
  const double* end() const { return begin() + size_; }
  double front() const { return *begin(); }

  // Replaces what there was by copies of `count` numbers, 1 at least. Unchanged if there is no
  // memory.
  void Assign(const double* numbers, std::size_t count, Pool& pool) {
    if (count == 1) {
      Release(pool);
      one_ = *numbers;
    } else {
      auto* many = pool.AllocateArray<double>(count);
      std::copy_n(numbers, count, many);
      Release(pool);
      many_ = many;
    }
    size_ = count;
  }

  void Release(Pool& pool) {
    if (size_ > 1) pool.Free(many_, size_ * sizeof(double));
    size_ = 0;
  }

 private:
  std::size_t size_ = 0;
  union {
    double one_;    // while size_ is below 2
    double* many_;  // otherwise
  };
};

}  // namespace confgrove

#endif
