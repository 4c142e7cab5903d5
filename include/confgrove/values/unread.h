// Settings that nobody has asked for, and what may have been meant.
#ifndef CONFGROVE_VALUES_UNREAD_H
#define CONFGROVE_VALUES_UNREAD_H

#include <confgrove/values/look_up.h>
#include <confgrove/values/nearest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace confgrove::detail {

class UnreadFinder {
 public:
  explicit UnreadFinder(ReadState* state) : state_(*state) {}

  // Finds what is unread below the layers of the block at `path`, one for a whole block.
  void LookBelow(const std::vector<Section*>& layers, const std::string& path) {
    for (const std::string& name : NamesBelow(layers)) LookAt(layers, path, name);
  }

  Findings found{};

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
    const std::size_t found_before = found.faults.size();
    const std::string child_path = Join(path, name);
    for (const std::string& below : NamesBelow(children)) {
      asked = LookAt(children, child_path, below) || asked;
    }
    if (asked || children.empty()) return true;
    found.faults.resize(found_before);
    found.sections.resize(found_before);
    Fault* const fault = found.Add(FaultKind::Unread, child_path, children.front());
    fault->severity = Severity::Warning;
    fault->note = "unknown setting" + Suggestion(layers, path, name);
    return false;
  }

  // "; did you mean port?" for the one name nearest to `name` that was asked for in vain in the
  // block, or for the one block where just that name was.
  std::string Suggestion(const std::vector<Section*>& layers, const std::string& path,
                         const std::string& name) const {
    std::string elsewhere;
    Nearest nearest(name);
    const std::string block = path.empty() ? "" : path + '.';
    for (const std::string& missed : state_.missed) {
      if (elsewhere.empty() && missed.substr(missed.rfind('.') + 1) == name) elsewhere = missed;
      if (missed.compare(0, block.size(), block) != 0) continue;
      const std::size_t end = missed.find('.', block.size());
      const std::string candidate = missed.substr(block.size(), end - block.size());
      if (!Exists(layers, candidate)) nearest.Take(candidate);
    }
    const std::string_view meant = nearest.Found().empty() ? elsewhere : nearest.Found();
    return meant.empty() ? "" : Glue({"; did you mean ", meant, "?"});
  }

  static bool Exists(const std::vector<Section*>& layers, const std::string& name) {
    return std::any_of(layers.begin(), layers.end(),
                       [&name](Section* layer) { return ChildOf(layer, name.c_str()) != nullptr; });
  }

  ReadState& state_;
};

}  // namespace confgrove::detail

#endif
