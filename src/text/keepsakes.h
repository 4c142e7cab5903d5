// Keepsakes: what a file holds beside its tree.
#ifndef CONFGROVE_TEXT_KEEPSAKES_H
#define CONFGROVE_TEXT_KEEPSAKES_H

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "text/file_text.h"

namespace confgrove {

// Each is the bytes that it takes on lines of its own, in file order.
struct Keepsakes {
  using Texts = std::vector<std::string>;

  std::vector<std::string> head;                      // in front of the imports
  std::unordered_map<std::int32_t, Texts> above;      // a section, by its number
  std::unordered_map<std::int32_t, Texts> at_end_of;  // a body; 0 is the file
  std::string cut_off;                                // the last bytes of the file
};

Keepsakes FindKeepsakes(const FileText& file);

}  // namespace confgrove

#endif
