// RootSection: its life, and what being a root changes in the operations of a section.
#include "tree/root_section.h"

#include <cassert>
#include <utility>

#include "tree/path.h"

namespace confgrove {

RootSection::RootSection(const std::string& file_name, bool is_read_only)
    : RealSection(is_read_only), origin(file_name), files{file_name} {
  SetNameApart(file_name, pool);
}

RootSection::~RootSection() {
  RootWatch::Report(this);
  for (auto& entry : imports) delete entry.second;  // each sets its own entry to null
  if (parent_config != nullptr) parent_config->imports.find(name())->second = nullptr;
}

RealSection* RootSection::FindSection(std::string_view path) {
  if (imports.empty()) return RealSection::FindSection(path);
  Miss miss;
  if (RealSection* own = Follow(path, &miss)) return own;
  // The handler that gets the message may change the tree, and with it the text that `path` is.
  const std::string own_path(path);
  const RootWatch watch(this);
  ReportMiss(path, miss);
  return watch.gone() ? nullptr : FindInImports(own_path, watch);
}

// The handler may also change `imports`, so that the way through them goes by the names alone.
RealSection* RootSection::FindInImports(const std::string& path, const RootWatch& watch) {
  std::string name_done;
  for (auto entry = imports.begin(); entry != imports.end();
       entry = imports.upper_bound(name_done)) {
    name_done = entry->first;
    if (entry->second == nullptr) continue;
    RealSection* found = entry->second->FindSection(path);
    if (found != nullptr || watch.gone()) return found;
  }
  return nullptr;
}

bool RootSection::RemoveSection(const char* path) {
  assert(path != nullptr);
  if (!WithoutBlanks(path).empty()) return RealSection::RemoveSection(path);
  delete this;
  return true;
}

bool RootSection::Rename(std::string_view new_name) {
  if (parent_config != nullptr && new_name != name()) {
    std::string key(new_name);
    auto& siblings = parent_config->imports;
    const auto taken = siblings.find(key);
    if (taken != siblings.end() && taken->second != nullptr) return false;
    const auto old_entry = siblings.find(name());
    SetNameApart(new_name, pool);
    if (taken != siblings.end()) siblings.erase(taken);
    auto entry = siblings.extract(old_entry);
    entry.key() = std::move(key);
    siblings.insert(std::move(entry));
    return true;
  }
  SetNameApart(new_name, pool);
  return true;
}

FileOrigin RootSection::File() const {
  return name() == origin.name ? origin : FileOrigin(std::string(name()));
}

void RootSection::Attach(RootSection* imported) {
  imports[std::string(imported->name())] = imported;
  imported->parent_config = this;
}

}  // namespace confgrove
