// The sections of a file as they were meant, whatever the reader made of them.
#ifndef CONFGROVE_TEXT_SECTION_MAP_H
#define CONFGROVE_TEXT_SECTION_MAP_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "text/findings.h"

namespace confgrove {

constexpr std::int32_t NoSection = -1;

struct MeantSection {
  std::string_view name;
  std::int32_t parent = NoSection;  // by index; the root has none
  Span span;                        // of the name
  std::size_t end = 0;              // behind all of it
  std::int32_t cause = NoCause;     // why the reader has it elsewhere or not at all
};

// Section 0 is the root.
class SectionMap {
 public:
  SectionMap() : sections_(1) {}

  // The first one of that name stays the one that is found.
  std::int32_t Add(std::int32_t parent, std::string_view name, Span span, std::int32_t cause);

  std::int32_t FindChild(std::int32_t parent, std::string_view name) const;

  // Names joined by dots.
  std::int32_t Find(std::string_view path) const;
  std::string PathOf(std::int32_t section) const;

  MeantSection& operator[](std::int32_t section) {
    return sections_[static_cast<std::size_t>(section)];
  }
  const MeantSection& operator[](std::int32_t section) const {
    return sections_[static_cast<std::size_t>(section)];
  }
  std::int32_t size() const { return static_cast<std::int32_t>(sections_.size()); }

 private:
  struct Key {
    std::int32_t parent;
    std::string_view name;
    bool operator==(const Key& other) const { return parent == other.parent && name == other.name; }
  };
  struct Hash {
    std::size_t operator()(const Key& key) const {
      constexpr std::size_t Spread = 0x9E3779B9;
      return std::hash<std::string_view>()(key.name) ^
             (static_cast<std::size_t>(key.parent) * Spread);
    }
  };

  std::vector<MeantSection> sections_;
  std::unordered_map<Key, std::int32_t, Hash> children_;
};

}  // namespace confgrove

#endif
