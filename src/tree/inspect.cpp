// What can be asked of a section without a message or a mark.
#include <confgrove/inspect.h>

#include "tree/node.h"

namespace confgrove {
namespace {

RealSection* Find(RealSection* from, std::string_view path) {
  if (RealSection* own = from->Seek(path)) return own;
  if (from->parent != nullptr) return nullptr;
  for (const auto& entry : static_cast<RootSection*>(from)->imports) {
    if (entry.second == nullptr) continue;
    if (RealSection* imported = Find(entry.second, path)) return imported;
  }
  return nullptr;
}

}  // namespace

Section* FindSection(Section* from, const char* path) { return Find(NodeOf(from), path); }

Section* FindValue(Section* from, const char* path, ValueView* value) {
  RealSection* const found = Find(NodeOf(from), path);
  if (found == nullptr) return nullptr;
  *value = ValueView();
  value->type = found->type;
  if (found->type == SectionType::Number) {
    value->count = static_cast<std::int32_t>(found->numbers().size());
    value->numbers = found->numbers().begin();
  } else if (found->type != SectionType::None) {
    value->text = found->text().c_str();
  }
  return found;
}

SectionType OwnType(Section* section) { return NodeOf(section)->type; }

const char* LinkTarget(Section* section) {
  const RealSection* node = NodeOf(section);
  return node->type == SectionType::Link ? node->text().c_str() : nullptr;
}

std::string PathOf(Section* section) { return PathOf(*NodeOf(section)); }

std::string PathOf(const RealSection& section) {
  std::string path;
  for (const std::string_view name : NamesOf(&section)) {
    if (!path.empty()) path += '.';
    path += name;
  }
  return path;
}

Config* ConfigOf(Section* section) { return RootOf(NodeOf(section)); }

std::vector<Config*> Imports(Config* config) {
  std::vector<Config*> living;
  for (const auto& entry : static_cast<RootSection*>(config)->imports) {
    if (entry.second != nullptr) living.push_back(entry.second);
  }
  return living;
}

std::string OwnFile(Config* config) { return static_cast<RootSection*>(config)->File().path; }

}  // namespace confgrove
