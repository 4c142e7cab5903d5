// Reader: typed values from a section, with all that is wrong gathered.
#ifndef CONFGROVE_VALUES_READER_H
#define CONFGROVE_VALUES_READER_H

#include <confgrove/inspect.h>
#include <confgrove/section.h>
#include <confgrove/values/fault.h>
#include <confgrove/values/kinds.h>
#include <confgrove/values/look_up.h>
#include <confgrove/values/owner.h>
#include <confgrove/values/rules.h>
#include <confgrove/values/unread.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace confgrove {
inline namespace values {

// A path as Section takes it, from a literal or a std::string. Used during the call only.
class PathText {
 public:
  PathText(const char* path) : text_(path) {}                 // NOLINT(google-explicit-constructor)
  PathText(const std::string& path) : text_(path.c_str()) {}  // NOLINT(google-explicit-constructor)
  const char* get() const { return text_; }

 private:
  const char* text_;
};

struct NamedBlock;

// Reads settings below a section. It sends no message and changes nothing.
//
// A block can be spread over a file and its imports: the reader sees all of it, the importing file
// first. A path may lead through blocks, but not through a link to one; `Block`, structs and lists
// of blocks follow such a link.
//
// What is wrong is gathered, and reading goes on: ask for Faults when all is read. Readers of
// blocks share what they gather with the reader that they come from, which outlives them. None may
// be used when the configuration is gone; ask for Faults and Unread before it is changed.
//
// T is bool (0 or 1), an integer, float, double, a std::chrono duration (a number in its unit),
// std::string, std::string_view (good as long as the text in the tree), std::filesystem::path, an
// enumeration with NamesOf, std::vector or std::array of numbers, a struct with Describe,
// std::vector of such structs (the blocks below the path), std::map<std::string, T> (all below the
// path, by name), or std::optional of any of these. Integers beyond 2^53 can't be held by a file
// and are out of range.
class Reader {
 public:
  // Reads below `section`, which its configuration keeps.
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;
  ~Reader() = default;
  Reader(Reader&&) = default;
  Reader& operator=(Reader&&) = default;
  explicit Reader(Section& section)
      : owned_(new detail::ReadState(ConfigOf(&section))),
        state_(owned_.get()),
        path_(PathOf(&section)) {
    if (path_.empty()) {
      layers_.push_back(&section);
    } else {
      detail::AddLayers(state_->top, path_.c_str(), &layers_);
    }
  }

  // The setting at `path`, or `fallback` if there is none. One that is there but isn't a T, or that
  // a rule doesn't accept, is a fault, and `fallback` comes back too. Rules: see rules.h.
  template <typename T, typename... Rules>
  T Get(PathText path, T fallback, Rules... rules) {
    ReadInto(path.get(), &fallback, false, rules...);
    return fallback;
  }

  // The same, and a missing setting is a fault too. T() comes back then.
  template <typename T, typename... Rules>
  T Require(PathText path, Rules... rules) {
    T value{};
    ReadInto(path.get(), &value, true, rules...);
    return value;
  }

  // Fills a described struct from the section itself. Members of settings that are missing or
  // faulty stay as they are.
  template <typename T>
  void Read(T& value);  // in structs.h

  bool Has(PathText path) const { return FindAny(path.get()) != nullptr; }

  // The setting is known, even if nobody reads it now.
  void Expect(PathText path) {
    if (Section* const found = FindAny(path.get())) {
      state_->Ask(found);
    } else {
      state_->Miss(detail::Join(path_, path.get()));
    }
  }

  // The host finds fault with a setting: "must not be above limits.most".
  void Refuse(PathText path, const std::string& reason) {
    Fault* const fault = AddFault(FaultKind::Refused, path.get(), FindAny(path.get()));
    if (fault != nullptr) fault->note = reason;
  }

  // A reader of the block at `path`. Of a missing one it finds nothing.
  Reader Block(PathText path) {
    Reader reader(state_, detail::Join(path_, path.get()));
    reader.layers_ = LayersAt(path.get());
    if (!reader.layers_.empty()) FollowToBlock(&reader.layers_);
    for (Section* const layer : reader.layers_) state_->Ask(layer);
    if (reader.layers_.empty()) state_->Miss(reader.path_);
    return reader;
  }

  // All blocks below the one at `path`, in file order, then what imports add. A value among them is
  // a fault.
  std::vector<NamedBlock> Blocks(PathText path);

  // All that was wrong so far, by file and place. Finding the places takes as long as a load.
  std::vector<Fault> Faults() const { return detail::InOrder(state_->wrong); }

  // The settings below this section that nobody has asked for, one for a whole block, each with the
  // nearest name that somebody did ask for. Warnings, or what `severity` says.
  std::vector<Fault> Unread(Severity severity = Severity::Warning) const {
    detail::UnreadFinder finder(state_);
    finder.LookBelow(IsTop() ? LayersAt("") : layers_, path_);
    for (Fault& fault : finder.found.faults) fault.severity = severity;
    return detail::InOrder(finder.found);
  }

  // --- For the rest of this layer

  // Reads into `*out`, which stays as it is where a value is missing or faulty. True if it was
  // read.
  template <typename T, typename... Rules>
  bool ReadInto(const char* path, T* out, bool required, const Rules&... rules);

  // The names below this section, of all its layers.
  std::vector<std::string> Names() const {
    return detail::NamesBelow(IsTop() ? LayersAt("") : layers_);
  }

 private:
  Reader(detail::ReadState* state, std::string path) : state_(state), path_(std::move(path)) {}

  bool IsTop() const { return path_.empty(); }

  Section* FindAny(const char* path) const {
    for (Section* const layer : layers_) {
      if (Section* const found = FindSection(layer, path)) return found;
    }
    return nullptr;
  }

  // What is at `path` counts as asked for, or the path as missed.
  detail::Found Find(const char* path) {
    detail::Found found;
    for (Section* const layer : layers_) {
      found.section = FindValue(layer, path, &found.value);
      if (found.section == nullptr) continue;
      state_->Ask(found.section);
      found.target = found.section;
      if (found.value.type == SectionType::Link) {
        found.target = nullptr;
        detail::FollowLinks(state_, &found);
      }
      return found;
    }
    state_->Miss(detail::Join(path_, path));
    return found;
  }

  std::vector<Section*> LayersAt(const char* path) const {
    std::vector<Section*> found;
    if (IsTop()) {
      detail::AddLayers(state_->top, path, &found);
    } else {
      for (Section* const layer : layers_) {
        if (Section* const section = FindSection(layer, path)) found.push_back(section);
      }
    }
    return found;
  }

  // A link to a block stands for it.
  void FollowToBlock(std::vector<Section*>* layers) {
    Section* const section = layers->front();
    if (OwnType(section) != SectionType::Link || section->GetSectionCount("") > 0) return;
    layers->clear();
    state_->Ask(section);
    detail::Found found;
    found.section = section;
    FindValue(section, "", &found.value);
    detail::FollowLinks(state_, &found);
    if (found.target == nullptr) return;
    detail::AddLayers(state_->top, PathOf(found.target).c_str(), layers);
  }

  // Whether there is a block to read in `block`, the reader of `path`; else a fault.
  bool CheckBlock(const char* path, const Reader& block) {
    for (Section* const layer : block.layers_) {
      if (OwnType(layer) == SectionType::None || layer->GetSectionCount("") > 0) return true;
    }
    const detail::Found found = Find(path);
    AddWrong(found.target == nullptr ? FaultKind::DeadLink : FaultKind::WrongKind, path, found,
             "a block");
    return false;
  }

  template <typename T, typename... Rules>
  bool ReadValue(const char* path, T* out, bool required, const Rules&... rules);
  template <typename T, typename... Rules>
  bool ReadBlocks(const char* path, T* out, bool required, const Rules&... rules);

  template <typename... Rules>
  const char* CurrentName(const char* path, const Rules&... rules);

  CONFGROVE_COLD void AddWrong(FaultKind kind, const char* path, const detail::Found& found,
                               const std::string& wanted) {
    Fault* const fault = AddFault(kind, path, found.section);
    if (fault == nullptr) return;
    fault->wanted = wanted;
    if (found.section != nullptr) fault->found = detail::FoundText(found);
  }

  // Without a section it is the place of the nearest block that is there.
  CONFGROVE_COLD Fault* AddFault(FaultKind kind, const char* path, Section* section) {
    const std::string whole = detail::Join(path_, path);
    std::string rest = whole;
    while (section == nullptr && !rest.empty()) {
      const std::size_t dot = rest.rfind('.');
      rest.resize(dot == std::string::npos ? 0 : dot);
      if (!rest.empty()) section = FindSection(state_->top, rest.c_str());
    }
    return state_->Add(kind, whole, section);
  }

  void AddOldName(const char* path, const char* old_name) {
    Fault* const fault = AddFault(FaultKind::OldName, old_name, FindAny(old_name));
    if (fault == nullptr) return;
    fault->severity = Severity::Warning;
    fault->note = detail::Glue({"is called ", detail::Join(path_, path), " now"});
  }

  detail::Owner<detail::ReadState> owned_{nullptr};  // by the reader that the others come from
  detail::ReadState* state_;
  std::vector<Section*> layers_{};  // of the configuration's top only itself: it sees its imports
  std::string path_;                // from the top
};

// A block and its name: for (auto& [name, block] : reader.Blocks("upstreams")).
struct NamedBlock {
  std::string name;
  Reader reader;
};

// --- Definitions

inline std::vector<NamedBlock> Reader::Blocks(PathText path) {
  std::vector<NamedBlock> blocks;
  Reader above = Block(path);
  for (std::string& name : above.Names()) {
    Reader below = above.Block(name);
    if (above.CheckBlock(name.c_str(), below))
      blocks.push_back({std::move(name), std::move(below)});
  }
  return blocks;
}

// `path`, or the old name if only that is there.
template <typename... Rules>
const char* Reader::CurrentName(const char* path, const Rules&... rules) {
  if constexpr (detail::WasRenamed<Rules...>) {
    if (FindAny(path) != nullptr) return path;
    const char* name = path;
    const auto consider = [this, path, &name](const char* old_name) {
      if (old_name == nullptr || FindAny(old_name) == nullptr) return;
      AddOldName(path, old_name);
      name = old_name;
    };
    (consider(detail::OldName(rules)), ...);
    return name;
  } else {
    (static_cast<void>(rules), ...);
    return path;
  }
}

template <typename T, typename... Rules>
bool Reader::ReadInto(const char* path, T* out, bool required, const Rules&... rules) {
  path = CurrentName(path, rules...);
  if constexpr (detail::IsOptional<T>) {
    if (!required && FindAny(path) == nullptr) {
      state_->Miss(detail::Join(path_, path));
      return false;
    }
    typename T::value_type value{};
    if (!ReadInto(path, &value, required, rules...)) return false;
    *out = std::move(value);
    return true;
  } else if constexpr (detail::Kind<T>::known) {
    return ReadValue(path, out, required, rules...);
  } else {
    return ReadBlocks(path, out, required, rules...);
  }
}

template <typename T, typename... Rules>
bool Reader::ReadValue(const char* path, T* out, bool required, const Rules&... rules) {
  const detail::Found found = Find(path);
  FaultKind fault = found.section == nullptr ? FaultKind::Missing : FaultKind::DeadLink;
  bool is_type_to_blame = false;
  if (found.target != nullptr) {
    T value{};
    fault = detail::Kind<T>::Take(found.value, &value);
    is_type_to_blame = fault == FaultKind::OutOfRange && (detail::IsNote<Rules> && ...);
    if (fault == FaultKind::None) fault = detail::JudgeAll(value, rules...);
    if (fault == FaultKind::None) {
      *out = std::move(value);
      return true;
    }
  }
  if (found.section == nullptr && !required) return false;
  std::string wanted = detail::Kind<T>::Phrase() + detail::PhraseOf(rules...);
  if (is_type_to_blame) wanted += detail::Kind<T>::Limits();
  AddWrong(fault, path, found, wanted);
  return false;
}

}  // namespace values
}  // namespace confgrove

#endif
