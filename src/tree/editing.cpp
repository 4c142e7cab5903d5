// Changing the shape of a tree, and listing it.
#include <cassert>

#include "base/trace.h"
#include "tree/path.h"
#include "tree/real_section.h"

namespace confgrove {

bool RealSection::RemoveSection(const char* path) {
  assert(path != nullptr);
  if (RefusesChange("section '%s' is 'read-only', cannot remove subsection '%s'", path)) {
    return false;
  }
  std::string_view rest = WithoutBlanks(path);
  if (rest.empty()) return parent != nullptr && parent->RemoveChild(name());
  RealSection* holder = this;
  for (;;) {
    const std::size_t dot = rest.find('.');
    const std::string_view component = rest.substr(0, dot);
    RealSection* found = holder->FindChild(component);
    if (found == nullptr) {
      holder->missed_child = true;
      TraceHandler(LevelFailedLookup, "cannot find sub_section:%s", std::string(component).c_str());
      return false;
    }
    if (dot == std::string_view::npos) break;
    holder = found;
    rest.remove_prefix(dot + 1);
  }
  holder->RemoveChild(rest);
  return true;
}

// Destroys the child of that name, which may be the text of its own `name`.
bool RealSection::RemoveChild(std::string_view child_name) {
  const RealSection* child = FindChild(child_name);
  if (child == nullptr) return false;
  children->Remove(child->index)->Release(TreePool());
  return true;
}

bool RealSection::SetName(const char* new_name, const char* path, std::int32_t child_index) {
  assert(new_name != nullptr && path != nullptr);
  if (RefusesChange("section '%s' is 'read-only'. cannot set name '%s'", new_name)) return false;
  const std::string own_copy(WithoutBlanks(new_name));
  if (own_copy.empty()) return false;
  RealSection* target = FindByIndex(path, child_index);
  return target != nullptr && target->Rename(own_copy);
}

bool RealSection::Rename(std::string_view new_name) {
  if (new_name == name()) return true;
  if (parent->FindChild(new_name) != nullptr) return false;
  parent->children->Rename(index, new_name);
  return true;
}

const char* RealSection::GetName(const char* path, std::int32_t child_index) {
  assert(path != nullptr);
  if (*path == '\0' && child_index >= 0) {  // what a listing takes
    return child_index < child_count() ? children->at(child_index)->name().data() : nullptr;
  }
  const RealSection* found = FindByIndex(path, child_index);
  return found != nullptr ? found->name().data() : nullptr;
}

Section* RealSection::GetSection(const char* path, std::int32_t child_index) {
  return FindByIndex(path, child_index);
}

std::int32_t RealSection::GetSectionCount(const char* path) {
  assert(path != nullptr);
  const RealSection* found = FindSection(path);
  return found != nullptr ? found->child_count() : -1;
}

}  // namespace confgrove
