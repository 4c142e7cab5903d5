// Comparing spellings.
#include "nearest.h"

#include <confgrove/values/nearest.h>

#include <sstream>

namespace confgrove::Tool {
namespace {

// The child whose name is like `name`; "" if there is none, or several are equally like.
std::string SimilarChild(Section* section, const std::string& name) {
  detail::Nearest nearest(name);
  for (std::int32_t i = 0; i < section->GetSectionCount(""); ++i) {
    nearest.Take(section->GetName("", i));
  }
  return std::string(nearest.Found());
}

}  // namespace

std::string NearestPath(Config* config, const std::string& path) {
  std::istringstream names(path);
  std::string nearest;
  for (std::string name; std::getline(names, name, '.');) {
    Section* const block = FindSection(config, nearest.c_str());
    const std::string before = nearest.empty() ? "" : nearest + '.';
    if (FindSection(config, (before + name).c_str()) == nullptr) {
      name = SimilarChild(block, name);
      if (name.empty()) break;
    }
    nearest = before + name;
  }
  return nearest;
}

}  // namespace confgrove::Tool
