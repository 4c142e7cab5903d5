// RootSection: its life, and what being a root changes in the operations of a section.
#include "tree/root_section.h"

#include <cassert>
#include <utility>

#include "tree/text.h"

namespace confgrove {

RootSection::RootSection(const std::string& file_name, bool is_read_only)
    : RealSection(is_read_only), files{file_name} {
  name.Assign(file_name, pool);
}

RootSection::~RootSection() {
  for (auto& entry : imports) delete entry.second;  // each sets its own entry to null
  if (parent_config != nullptr) parent_config->imports.find(name.view())->second = nullptr;
}

RealSection* RootSection::FindSection(std::string_view path) {
  if (RealSection* own = RealSection::FindSection(path)) return own;
  for (const auto& entry : imports) {
    if (entry.second == nullptr) continue;
    if (RealSection* imported = entry.second->FindSection(path)) return imported;
  }
  return nullptr;
}

bool RootSection::RemoveSection(const char* path) {
  assert(path != nullptr);
  const bool whole = WithoutBlanks(path).empty();
  if (whole) read_only = false;
  if (RealSection::RemoveSection(path)) return true;
  if (whole) delete this;
  return whole;
}

bool RootSection::Rename(std::string_view new_name) {
  if (parent_config != nullptr && new_name != name.view()) {
    std::string key(new_name);
    auto& siblings = parent_config->imports;
    const auto taken = siblings.find(key);
    if (taken != siblings.end() && taken->second != nullptr) return false;
    const auto old_entry = siblings.find(name.view());
    name.Assign(new_name, pool);
    if (taken != siblings.end()) siblings.erase(taken);
    auto entry = siblings.extract(old_entry);
    entry.key() = std::move(key);
    siblings.insert(std::move(entry));
    return true;
  }
  name.Assign(new_name, pool);
  return true;
}

void RootSection::Attach(RootSection* imported) {
  imports[imported->name.str()] = imported;
  imported->parent_config = this;
}

}  // namespace confgrove
