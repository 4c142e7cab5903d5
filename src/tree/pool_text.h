// PoolText: a text in the memory of its tree.
#ifndef CONFGROVE_TREE_POOL_TEXT_H
#define CONFGROVE_TREE_POOL_TEXT_H

#include <cstring>
#include <new>
#include <string>
#include <string_view>

#include "tree/pool.h"

namespace confgrove {

// Bytes with a NUL behind them and their number in front, owned by the pool that each change is
// given. It is one pointer; an empty text takes no memory beside it.
class PoolText {
 public:
  const char* c_str() const { return head_ != nullptr ? bytes() : ""; }
  std::string_view view() const { return {c_str(), size()}; }
  std::string str() const { return std::string(view()); }
  std::size_t size() const { return head_ != nullptr ? head_->size : 0; }
  bool empty() const { return head_ == nullptr; }

  // Makes it a copy of `text`, which may point into it. Unchanged if there is no memory.
  void Assign(std::string_view text, Pool& pool) {
    if (text.empty()) {
      Release(pool);
      return;
    }
    const std::size_t needed = SizeWith(text.size());
    if (head_ != nullptr && Pool::Capacity(needed) == Pool::Capacity(SizeWith(head_->size))) {
      std::memmove(bytes(), text.data(), text.size());
      head_->size = text.size();
    } else {
      Head* const head = new (pool.Allocate(needed)) Head{text.size()};
      std::memcpy(head + 1, text.data(), text.size());
      Release(pool);
      head_ = head;
    }
    bytes()[text.size()] = '\0';
  }

  void Release(Pool& pool) {
    if (head_ != nullptr) pool.Free(head_, SizeWith(head_->size));
    head_ = nullptr;
  }

 private:
  struct Head {
    std::size_t size;
  };

  static std::size_t SizeWith(std::size_t size) { return sizeof(Head) + size + 1; }
  char* bytes() const { return reinterpret_cast<char*>(head_ + 1); }

  Head* head_ = nullptr;  // null: empty
};

}  // namespace confgrove

#endif
