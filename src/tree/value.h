// Value: what a section holds, in the memory of its tree.
#ifndef CONFGROVE_TREE_VALUE_H
#define CONFGROVE_TREE_VALUE_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>

#include "tree/number_list.h"
#include "tree/pool_text.h"

namespace confgrove {

// Which of them a value is.
enum class Holding : std::uint8_t { Text, Number, Array };

// A text, a number or an array of numbers, in the same bytes; at first an empty text. Which it is
// stands beside it in its section, where it takes no room: whoever uses the value says what it is.
class Value {
 public:
  Value() : text_() {}

  const PoolText& text() const { return text_; }
  NumberList number() const { return {&number_, 1}; }
  NumberList array() const { return {array_->first(), array_->size}; }

  // Makes it a copy of `text`, which may point into it. Unchanged if there is no memory.
  void AssignText(Holding was, std::string_view text, Pool& pool) {
    if (was == Holding::Text) {
      text_.Assign(text, pool);
      return;
    }
    PoolText made;
    made.Assign(text, pool);
    ReleaseNumbers(was, pool);
    new (&text_) PoolText(made);
  }

  // Of a number.
  void ReplaceNumber(double number) { number_ = number; }

  // Makes it copies of `count` numbers, an array if there is more than one. Hands over the text
  // that it was, if it was one. Unchanged if there is no memory.
  PoolText AssignNumbers(Holding was, const double* from, std::size_t count, Pool& pool) {
    const double first = *from;
    Array* const array = count > 1 ? MakeArray(from, count, pool) : nullptr;
    const PoolText old = was == Holding::Text ? text_ : PoolText();
    ReleaseNumbers(was, pool);
    if (array != nullptr) {
      array_ = array;
    } else {
      number_ = first;
    }
    return old;
  }

  void Release(Holding was, Pool& pool) {
    if (was == Holding::Text) text_.Release(pool);
    ReleaseNumbers(was, pool);
  }

 private:
  struct Array {  // the numbers stand behind it
    alignas(double) std::size_t size;
    double* first() { return reinterpret_cast<double*>(this + 1); }
  };

  static std::size_t SizeWith(std::size_t count) { return sizeof(Array) + count * sizeof(double); }

  static Array* MakeArray(const double* from, std::size_t count, Pool& pool) {
    auto* const array = new (pool.Allocate(SizeWith(count))) Array{count};
    std::copy_n(from, count, array->first());
    return array;
  }

  void ReleaseNumbers(Holding was, Pool& pool) {
    if (was == Holding::Array) pool.Free(array_, SizeWith(array_->size));
  }

  union {
    PoolText text_;
    double number_;
    Array* array_;
  };
};

}  // namespace confgrove

#endif
