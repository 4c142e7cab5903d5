// Comparing spellings.
#include "nearest.h"

#include <algorithm>
#include <sstream>
#include <string_view>
#include <vector>

namespace confgrove::Tool {
namespace {

// How many letters have to be put in, taken out, replaced, or exchanged with the next one to come
// from one name to the other.
std::size_t Distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before_last;
  std::vector<std::size_t> last(b.size() + 1);
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      row[j] =
          std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
      const bool exchanged = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (exchanged) row[j] = std::min(row[j], before_last[j - 2] + 1);
    }
    before_last = last;
    last = row;
  }
  return last[b.size()];
}

// The child whose name is like `name`; "" if there is none, or several are equally like.
std::string SimilarChild(Section* section, const std::string& name) {
  std::size_t nearest = name.size() / 3 + 1;  // one more than is much alike
  std::string found;
  for (std::int32_t i = 0; i < section->GetSectionCount(""); ++i) {
    const std::string_view other = section->GetName("", i);
    const std::size_t longer = std::max(other.size(), name.size());
    if (longer - std::min(other.size(), name.size()) > nearest) continue;
    const std::size_t distance = Distance(name, other);
    if (distance > nearest) continue;
    found = distance < nearest ? std::string(other) : "";
    nearest = distance;
  }
  return found;
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
