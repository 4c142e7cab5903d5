// What a reading keeps: who was asked for, what was missed, what was wrong.
#ifndef CONFGROVE_VALUES_LOOK_UP_H
#define CONFGROVE_VALUES_LOOK_UP_H

#include <confgrove/inspect.h>
#include <confgrove/section.h>
#include <confgrove/values/fault.h>
#include <confgrove/values/kinds.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace confgrove::detail {

// A hash set of numbers other than 0.
class NumberSet {
 public:
  // Whether it is new.
  bool Insert(std::uintptr_t number) {
    std::size_t at = SlotOf(number);
    while (slots_[at] != number) {
      if (slots_[at] == 0) {
        Add(number, at);
        return true;
      }
      at = (at + 1) & (slots_.size() - 1);
    }
    return false;
  }

  bool Contains(std::uintptr_t number) const {
    std::size_t at = SlotOf(number);
    while (slots_[at] != 0 && slots_[at] != number) at = (at + 1) & (slots_.size() - 1);
    return slots_[at] != 0;
  }

 private:
  std::size_t SlotOf(std::uintptr_t number) const {
    return ((number >> 4) ^ (number >> 11)) & (slots_.size() - 1);
  }

  void Add(std::uintptr_t number, std::size_t at) {
    slots_[at] = number;
    if (++size_ * 2 < slots_.size()) return;
    std::vector<std::uintptr_t> old(slots_.size() * 2);
    old.swap(slots_);
    size_ = 0;
    for (const std::uintptr_t kept : old) {
      if (kept != 0) Insert(kept);
    }
  }

  std::vector<std::uintptr_t> slots_ = std::vector<std::uintptr_t>(64);  // a power of two
  std::size_t size_ = 0;
};

// Faults, and the section of each, whose place it has.
struct Findings {
  CONFGROVE_COLD Fault* Add(FaultKind kind, const std::string& path, Section* section) {
    sections.push_back(section);
    Fault& added = faults.emplace_back();
    added.kind = kind;
    added.path = path;
    return &added;
  }

  std::vector<Fault> faults{};
  std::vector<Section*> sections{};
};

// What the readers of one configuration share.
class ReadState {
 public:
  explicit ReadState(Config* config) : top(config) {}
  ReadState(const ReadState&) = delete;
  ReadState& operator=(const ReadState&) = delete;

  void Ask(Section* section) { asked_.Insert(reinterpret_cast<std::uintptr_t>(section)); }
  bool WasAsked(Section* section) const {
    return asked_.Contains(reinterpret_cast<std::uintptr_t>(section));
  }

  // Each path counts once. Two of the same hash count as one, which costs a suggestion at worst.
  void Miss(const std::string& path) {
    std::uintptr_t hash = 5381;
    for (const char c : path) hash = hash * 33 + static_cast<unsigned char>(c);
    if (missed_hashes_.Insert(hash | 1)) missed.push_back(path);
  }

  // A new fault to fill in, or null: the same one of the same setting counts once. Without a
  // section it has the place of the configuration's file.
  CONFGROVE_COLD Fault* Add(FaultKind kind, const std::string& path, Section* section) {
    for (const Fault& known : wrong.faults) {
      if (known.kind == kind && known.path == path) return nullptr;
    }
    return wrong.Add(kind, path, section != nullptr ? section : top);
  }

  Config* top;
  std::vector<std::string> missed{};  // paths from the top that were asked for in vain
  Findings wrong{};

 private:
  NumberSet asked_{};  // sections, which may be gone
  NumberSet missed_hashes_{};
};

// What a path leads to.
struct Found {
  Section* section = nullptr;  // perhaps a link; null: nothing is there
  Section* target = nullptr;   // where its links end; null: nowhere, or in a circle
  ValueView value{};           // of the target
};

// Goes from a link at `found->section`, whose value is there, to where its links end.
inline void FollowLinks(ReadState* state, Found* found) {
  Section* at = found->section;
  Section* checkpoint = at;
  std::size_t steps = 0;
  std::size_t next_checkpoint = 1;
  while (found->value.type == SectionType::Link) {
    at = FindValue(state->top, found->value.text, &found->value);
    if (at == nullptr || at == checkpoint) return;
    state->Ask(at);
    if (++steps < next_checkpoint) continue;
    next_checkpoint *= 2;
    checkpoint = at;
  }
  found->target = at;
}

// What is there, as a file would say it.
CONFGROVE_COLD inline std::string FoundText(const Found& found) {
  const char* const link = LinkTarget(found.section);
  if (found.target == nullptr) return Glue({"a link to ", link, ", which leads nowhere"});
  const std::int32_t count = found.value.count;
  std::string text;
  if (found.value.text != nullptr) {
    text = Quoted(found.value.text);
  } else if (count > 0) {
    constexpr std::int32_t most = 8;
    if (count > 1) text += '[';
    for (std::int32_t i = 0; i < count && i < most; ++i) {
      if (i > 0) text += ", ";
      text += NumberText(found.value.numbers[i]);
    }
    if (count > 1) text += count > most ? ", ...]" : "]";
  } else {
    text = found.target->GetSectionCount("") > 0 ? "a block" : "no value";
  }
  if (link != nullptr) text.append(", by a link to ").append(link);
  return text;
}

// All sections at `path` below the configuration's file and its imports, in the order in which
// look-ups ask them.
CONFGROVE_COLD inline void AddLayers(Config* config, const char* path,
                                     std::vector<Section*>* layers) {
  Section* const found = FindSection(config, path);
  if (found != nullptr && ConfigOf(found) == config) layers->push_back(found);
  for (Config* const import : Imports(config)) AddLayers(import, path, layers);
}

// Its child of that name, in the same file.
inline Section* ChildOf(Section* layer, const char* name) {
  Section* const found = FindSection(layer, name);
  return found != nullptr && ConfigOf(found) == ConfigOf(layer) ? found : nullptr;
}

// The names below some layers of one block: those of the first, then what others add.
inline std::vector<std::string> NamesBelow(const std::vector<Section*>& layers) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < layers.size(); ++i) {
    const std::int32_t count = layers[i]->GetSectionCount("");
    for (std::int32_t child = 0; child < count; ++child) {
      const char* const name = layers[i]->GetName("", child);
      bool is_new = true;
      for (std::size_t j = 0; j < i; ++j) is_new = is_new && ChildOf(layers[j], name) == nullptr;
      if (is_new) names.emplace_back(name);
    }
  }
  return names;
}

// The faults with their places, in the order of files and places.
CONFGROVE_COLD inline std::vector<Fault> InOrder(const Findings& found) {
  const std::vector<Place> places = Where(found.sections);
  struct Item {
    const Fault* fault;
    const Place* place;
  };
  std::vector<Item> items(places.size());
  for (std::size_t i = 0; i < items.size(); ++i) items[i] = {&found.faults[i], &places[i]};
  const auto compare = [](const void* left, const void* right) {
    const Item& a = *static_cast<const Item*>(left);
    const Item& b = *static_cast<const Item*>(right);
    const int files = a.place->file.compare(b.place->file);
    if (files != 0) return files;
    if (a.place->offset != b.place->offset) return a.place->offset < b.place->offset ? -1 : 1;
    return a.fault < b.fault ? -1 : 1;
  };
  if (!items.empty()) std::qsort(items.data(), items.size(), sizeof(Item), compare);
  std::vector<Fault> faults(items.size());
  for (std::size_t i = 0; i < items.size(); ++i) {
    faults[i] = *items[i].fault;
    faults[i].place = *items[i].place;
  }
  return faults;
}

inline std::string Join(const std::string& path, std::string_view name) {
  return Glue({path, path.empty() || name.empty() ? "" : ".", name});
}

}  // namespace confgrove::detail

#endif
