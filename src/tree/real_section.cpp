// RealSection: its life, and the way along a path.
#include "tree/real_section.h"

#include <new>
#include <string>

#include "front/trace.h"
#include "tree/root_section.h"
#include "tree/text.h"

namespace confgrove {

const PoolText RealSection::NoComment;

RealSection* RealSection::Top() {
  RealSection* top = this;
  while (top->parent != nullptr) top = top->parent;
  return top;
}

Section* RealSection::GetTop() { return Top(); }

Pool& RealSection::TreePool() {
  if (parent != nullptr) return parent->children->pool();
  return static_cast<RootSection*>(this)->pool;  // a section without a parent is always a root
}

RealSection* RealSection::FindSection(std::string_view path) {
  path = WithoutBlanks(path);
  if (path.empty()) return this;
  if (!CheckPath(path)) return nullptr;
  RealSection* current = this;
  for (;;) {
    const std::size_t dot = path.find('.');
    const std::string_view component = path.substr(0, dot);
    RealSection* child = current->FindChild(HashedName(component));
    if (child == nullptr) {
      current->entry_left = true;
      TraceHandler(LevelFailedLookup, "section '%s': cannot find subsection: %s", name.c_str(),
                   std::string(component).c_str());
      return nullptr;
    }
    if (dot == std::string_view::npos) return child;
    current = child;
    path.remove_prefix(dot + 1);
  }
}

RealSection* RealSection::AddChild(const HashedName& child_name, bool child_read_only) {
  Pool& pool = TreePool();
  PoolText text;  // right in front of the node, where a look-up reads both
  text.Assign(child_name.text, pool);
  auto* child = new (pool.Allocate(sizeof(RealSection))) RealSection(child_read_only);
  child->name = text;
  child->parent = this;
  if (children != nullptr) {
    children->Append(child, child_name);
  } else {
    auto* first = new (pool.Allocate(sizeof(Children))) Children(&pool);
    first->Append(child, child_name);
    children = first;
  }
  return child;
}

void RealSection::SetComment(std::string_view text, bool is_inline) {
  Pool& pool = TreePool();
  if (comments == nullptr) {
    if (text.empty()) return;
    comments = new (pool.Allocate(sizeof(Comments))) Comments();
  }
  (is_inline ? comments->behind : comments->above).Assign(text, pool);
}

// Gives the memory of this section and all below it back. No use of it may follow.
void RealSection::Release(Pool& pool) {
  name.Release(pool);
  value.Release(pool);
  numbers.Release(pool);
  if (comments != nullptr) {
    comments->above.Release(pool);
    comments->behind.Release(pool);
    pool.Free(comments, sizeof *comments);
  }
  if (children != nullptr) {
    for (std::int32_t i = 0; i < children->size(); ++i) children->at(i)->Release(pool);
    children->Release();
    pool.Free(children, sizeof *children);
  }
  pool.Free(this, sizeof *this);
}

}  // namespace confgrove
