// PoolText: a text in the memory of its tree.
#ifndef CONFGROVE_TREE_POOL_TEXT_H
#define CONFGROVE_TREE_POOL_TEXT_H

#include <cstring>
#include <string>
#include <string_view>

#include "tree/pool.h"

namespace confgrove {

// Bytes with a NUL behind them, owned by the pool that each change is given. An empty text takes
// no memory.
class PoolText {
 public:
  const char* c_str() const { return size_ > 0 ? bytes_ : ""; }
  std::string_view view() const { return {c_str(), size_}; }
  std::string str() const { return std::string(view()); }
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }

  // Makes it a copy of `text`, which may point into it. Unchanged if there is no memory.
  void Assign(std::string_view text, Pool& pool) {
    if (text.empty()) {
      Release(pool);
      return;
    }
    if (Pool::Capacity(text.size() + 1) == Pool::Capacity(size_ + 1) && size_ > 0) {
      std::memmove(bytes_, text.data(), text.size());
    } else {
      char* bytes = pool.AllocateArray<char>(text.size() + 1);
      std::memcpy(bytes, text.data(), text.size());
      Release(pool);
      bytes_ = bytes;
    }
    size_ = text.size();
    bytes_[size_] = '\0';
  }

  void Release(Pool& pool) {
    if (size_ > 0) pool.Free(bytes_, size_ + 1);
    size_ = 0;
  }

 private:
  char* bytes_ = nullptr;  // of size_ + 1; nothing while size_ is 0
  std::size_t size_ = 0;
};

}  // namespace confgrove

#endif
