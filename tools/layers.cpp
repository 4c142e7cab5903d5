// Laying trees over each other.
#include "layers.h"

#include <algorithm>

#include "refusal.h"
#include "shown_section.h"
#include "source_line.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

LayeredSection* Add(const std::string& name, Section* section, LayeredSection* parent) {
  parent->children.push_back(std::make_unique<LayeredSection>());
  LayeredSection* const added = parent->children.back().get();
  added->section = section;
  added->parent = parent;
  added->depth = parent->depth + 1;
  parent->by_name.emplace(name, added);
  return added;
}

// Adds what is below `section`, where nothing of the same path is there yet.
void AddBelow(Section* section, LayeredSection* into, const std::string& shown) {
  const std::int32_t count = section->GetSectionCount("");
  for (std::int32_t i = 0; i < count; ++i) {
    Section* const child = section->GetSection("", i);
    const std::string name = child->GetName("");
    if (FindSection(section, name.c_str()) != child) {
      throw Refusal(shown + ": no path leads to '" + Visible(NameToUtf8(PathOf(child))) +
                    "', in whose name there is a NUL");
    }
    const auto known = into->by_name.find(name);
    AddBelow(child, known != into->by_name.end() ? known->second : Add(name, child, into), shown);
  }
}

void AddTrees(Config* config, LayeredSection* top, const std::string& shown) {
  AddBelow(config, top, shown);
  for (Config* const import : Imports(config)) AddTrees(import, top, shown);
}

}  // namespace

const LayeredSection* LayeredSection::Find(const std::string& path) const {
  const LayeredSection* found = this;
  for (std::size_t at = 0; at <= path.size();) {
    const std::size_t end = std::min(path.find('.', at), path.size());
    const auto child = found->by_name.find(path.substr(at, end - at));
    if (child == found->by_name.end()) return nullptr;
    found = child->second;
    at = end + 1;
  }
  return found;
}

std::unique_ptr<LayeredSection> Layered(Config* config, const std::string& shown) {
  auto top = std::make_unique<LayeredSection>();
  top->section = config;
  AddTrees(config, top.get(), shown);
  return top;
}

const char* KindOf(const LayeredSection& setting) {
  const bool bare = OwnType(setting.section) == SectionType::None;
  return bare && !setting.children.empty() ? "block" : KindOf(setting.section);
}

}  // namespace confgrove::Tool
