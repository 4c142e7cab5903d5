// Value: what a section holds, in the memory of its tree.
#ifndef CONFGROVE_TREE_VALUE_H
#define CONFGROVE_TREE_VALUE_H

#include <confgrove/section.h>

#include <cstddef>
#include <new>
#include <string_view>

#include "tree/number_list.h"
#include "tree/pool_text.h"

namespace confgrove {

// A text or numbers, in the same bytes; at first an empty text. The type of its section tells
// which, and stands beside it, where it takes no room: whoever changes the value says what it was.
class Value {
 public:
  Value() : text_() {}

  const PoolText& text() const { return text_; }          // of any type but Number
  const NumberList& numbers() const { return numbers_; }  // of a Number: at least one

  // Makes it a copy of `text`, which may point into it. Unchanged if there is no memory.
  void AssignText(SectionType was, std::string_view text, Pool& pool) {
    if (was != SectionType::Number) {
      text_.Assign(text, pool);
      return;
    }
    PoolText made;
    made.Assign(text, pool);
    numbers_.Release(pool);
    new (&text_) PoolText(made);
  }

  // Makes it copies of `count` numbers, 1 at least, and hands over the text that it was, if it was
  // one. Unchanged if there is no memory.
  PoolText AssignNumbers(SectionType was, const double* from, std::size_t count, Pool& pool) {
    if (was == SectionType::Number) {
      numbers_.Assign(from, count, pool);
      return {};
    }
    NumberList made;
    made.Assign(from, count, pool);
    const PoolText old = text_;
    new (&numbers_) NumberList(made);
    return old;
  }

  void Release(SectionType was, Pool& pool) {
    if (was == SectionType::Number) {
      numbers_.Release(pool);
    } else {
      text_.Release(pool);
    }
  }

 private:
  union {
    PoolText text_;
    NumberList numbers_;
  };
};

}  // namespace confgrove

#endif
