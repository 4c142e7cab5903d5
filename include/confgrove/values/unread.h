// Settings that nobody has asked for, and what may have been meant.
#ifndef CONFGROVE_VALUES_UNREAD_H
#define CONFGROVE_VALUES_UNREAD_H

#include <confgrove/values/look_up.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace confgrove::detail {

// How many letters must be changed, put in, taken out or swapped with the next.
inline std::size_t Distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before;
  std::vector<std::size_t> last(b.size() + 1);
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    before = std::exchange(last, std::move(row));
    row.assign(b.size() + 1, i);
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t change = a[i - 1] == b[j - 1] ? 0 : 1;
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + change});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
    }
  }
  return row[b.size()];
}

class UnreadFinder {
 public:
  explicit UnreadFinder(ReadState* state) : state_(*state) {}

  // Finds what is unread below the layers of the block at `path`, one for a whole block.
  void LookBelow(const std::vector<Section*>& layers, const std::string& path) {
    for (const std::string& name : NamesBelow(layers)) LookAt(layers, path, name);
  }

  std::vector<ReadState::Entry> found{};

 private:
  // Whether the section of that name or anything below it was asked for.
  bool LookAt(const std::vector<Section*>& layers, const std::string& path,
              const std::string& name) {
    std::vector<Section*> children;
    bool asked = false;
    for (Section* const layer : layers) {
      Section* const child = ChildOf(layer, name.c_str());
      if (child == nullptr) continue;
      children.push_back(child);
      asked = asked || state_.WasAsked(child);
    }
    const std::size_t found_before = found.size();
    const std::string child_path = Join(path, name);
    for (const std::string& below : NamesBelow(children)) {
      asked = LookAt(children, child_path, below) || asked;
    }
    if (asked || children.empty()) return true;
    found.resize(found_before);
    Fault fault;
    fault.severity = Severity::Warning;
    fault.kind = FaultKind::Unread;
    fault.path = child_path;
    fault.note = "unknown setting" + Suggestion(layers, path, name);
    found.push_back({std::move(fault), children.front()});
    return false;
  }

  // "; did you mean port?" for the one name nearest to `name` that was asked for in vain in the
  // block, or for the one block where just that name was.
  std::string Suggestion(const std::vector<Section*>& layers, const std::string& path,
                         const std::string& name) const {
    std::string nearest;
    std::string elsewhere;
    std::size_t least = name.size();
    bool two = false;
    const std::string block = path.empty() ? "" : path + '.';
    for (const std::string& missed : state_.missed) {
      if (elsewhere.empty() && missed.substr(missed.rfind('.') + 1) == name) elsewhere = missed;
      if (missed.compare(0, block.size(), block) != 0) continue;
      const std::size_t end = missed.find('.', block.size());
      const std::string candidate = missed.substr(block.size(), end - block.size());
      if (candidate == nearest || Exists(layers, candidate)) continue;
      const std::size_t distance = Distance(name, candidate);
      // More would be guessing, and so would be one of two.
      if (distance * 3 > std::max(name.size(), candidate.size()) || distance > least) continue;
      two = distance == least && !nearest.empty();
      if (!two) nearest = candidate;
      least = distance;
    }
    if (two || (nearest.empty() && elsewhere.empty())) return "";
    return "; did you mean " + (nearest.empty() ? elsewhere : nearest) + '?';
  }

  static bool Exists(const std::vector<Section*>& layers, const std::string& name) {
    return std::any_of(layers.begin(), layers.end(),
                       [&name](Section* layer) { return ChildOf(layer, name.c_str()) != nullptr; });
  }

  ReadState& state_;
};

}  // namespace confgrove::detail

#endif
