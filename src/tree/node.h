// From what the host holds to the node behind it.
#ifndef CONFGROVE_TREE_NODE_H
#define CONFGROVE_TREE_NODE_H

#include <confgrove/section.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "tree/root_section.h"

namespace confgrove {

// The whole object is a RealSection, or a RootSection, which begins with one.
inline RealSection* NodeOf(Section* section) {
  return static_cast<RealSection*>(dynamic_cast<void*>(section));
}

// The root of the tree.
inline RootSection* RootOf(RealSection* node) {
  while (node->parent != nullptr) node = node->parent;
  return static_cast<RootSection*>(node);
}

// The names that lead from the root to the node: none for a root.
inline std::vector<std::string_view> NamesOf(const RealSection* node) {
  std::vector<std::string_view> names;
  for (; node->parent != nullptr; node = node->parent) names.push_back(node->name());
  std::reverse(names.begin(), names.end());
  return names;
}

// They joined by dots.
std::string PathOf(const RealSection& section);

}  // namespace confgrove

#endif
