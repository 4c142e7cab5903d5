// Finding sections by name and path.
#include "text/section_map.h"

#include <algorithm>

namespace confgrove {

std::int32_t SectionMap::Add(std::int32_t parent, std::string_view name, Span span,
                             std::int32_t cause) {
  const std::int32_t section = size();
  sections_.push_back({name, parent, span, span.end, cause});
  children_.emplace(Key{parent, name}, section);
  return section;
}

std::int32_t SectionMap::FindChild(std::int32_t parent, std::string_view name) const {
  const auto found = children_.find({parent, name});
  return found != children_.end() ? found->second : NoSection;
}

std::int32_t SectionMap::Find(std::string_view path) const {
  std::int32_t section = 0;
  while (section != NoSection) {
    const std::size_t dot = path.find('.');
    section = FindChild(section, path.substr(0, dot));
    if (dot == std::string_view::npos) break;
    path.remove_prefix(dot + 1);
  }
  return section;
}

std::string SectionMap::PathOf(std::int32_t section) const {
  std::vector<std::string_view> names;
  for (; section > 0; section = (*this)[section].parent) names.push_back((*this)[section].name);
  std::string path;
  for (auto name = names.rbegin(); name != names.rend(); ++name) {
    if (!path.empty()) path += '.';
    path += *name;
  }
  return path;
}

}  // namespace confgrove
