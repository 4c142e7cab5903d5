// Paths as text.
#ifndef CONFGROVE_TREE_PATH_H
#define CONFGROVE_TREE_PATH_H

#include <string_view>

#include "base/letters.h"

namespace confgrove {

// `text` without the blanks at its ends. A text of blanks alone comes back whole.
inline std::string_view WithoutBlanks(std::string_view text) {
  if (text.empty() || (text.front() != ' ' && text.back() != ' ')) return text;  // as a rule
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return text;
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// Symbols::check_path without the need for a string.
bool CheckPath(std::string_view path);

// The one rule of CheckPath that looks at the first byte. Reports a fault.
bool CheckPathBegin(char first);

// The same, without a message.
constexpr bool CanBeginPath(char first) { return !IsDigit(first) && first != '.'; }

}  // namespace confgrove

#endif
