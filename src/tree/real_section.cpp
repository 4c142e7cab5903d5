// RealSection: its life, and the way along a path.
#include "tree/real_section.h"

#include <cassert>
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
  if (!CheckPathBegin(path.front())) return nullptr;
  std::string_view missing;
  RealSection* reached = Follow(path, &missing);
  if (missing.data() == nullptr) return reached;
  if (!CheckPath(path)) return nullptr;  // a fault anywhere in the path comes before the miss
  reached->entry_left = true;
  TraceHandler(LevelFailedLookup, "section '%s': cannot find subsection: %s", name.c_str(),
               std::string(missing.substr(0, missing.find('.'))).c_str());
  return nullptr;
}

// Goes along `path` as far as there are sections, and gives the last one. `missing`, empty so far,
// is set to what is left of the path, from the name that is not found on; a path that leads to its
// end is sound in all its bytes. Behind a path stands a byte that no name can hold.
RealSection* RealSection::Follow(std::string_view path, std::string_view* missing) {
  RealSection* current = this;
  const char* at = path.data();
  const char* const end = at + path.size();
  for (;;) {
    const char* const begin = at;
    while (IsPathLetter(*at)) ++at;
    const std::string_view component(begin, static_cast<std::size_t>(at - begin));
    RealSection* child = current->FindChild(component);
    if (child != nullptr && at == end) return child;
    if (child == nullptr || *at != '.') {
      *missing = {begin, static_cast<std::size_t>(end - begin)};
      return current;
    }
    current = child;
    ++at;
  }
}

// The section at `path`, or its child with that index if it isn't negative; null if there is none.
RealSection* RealSection::FindByIndex(const char* path, std::int32_t child_index) {
  assert(path != nullptr);
  RealSection* found = *path == '\0' ? this : FindSection(path);
  if (found == nullptr || child_index < 0) return found;
  return child_index < found->child_count() ? found->children->at(child_index) : nullptr;
}

RealSection* RealSection::AddChild(std::string_view child_name, bool child_read_only) {
  Pool& pool = TreePool();
  PoolText text;  // right in front of the node, where a look-up reads both
  text.Assign(child_name, pool);
  auto* child = new (pool.Allocate(sizeof(RealSection))) RealSection(child_read_only);
  child->name = text;
  child->parent = this;
  Children::Append(&children, pool, child, child_name);
  return child;
}

void RealSection::SetComment(std::string_view text, bool is_inline) {
  if (extras == nullptr && text.empty()) return;
  Pool& pool = TreePool();
  Extras& made = MakeExtras(pool);
  (is_inline ? made.inline_comment : made.comment).Assign(text, pool);
}

RealSection::Extras& RealSection::MakeExtras(Pool& pool) {
  if (extras == nullptr) extras = new (pool.Allocate(sizeof(Extras))) Extras();
  return *extras;
}

void RealSection::AssignText(SectionType text_type, std::string_view text) {
  Pool& pool = TreePool();
  if (text_type == SectionType::Link) MakeExtras(pool);
  if (type == SectionType::Number) {
    PoolText made;
    made.Assign(text, pool);
    numbers.Release(pool);
    new (&value) PoolText(made);
  } else {
    value.Assign(text, pool);
  }
  type = text_type;
}

void RealSection::AssignNumbers(const double* values, std::size_t count) {
  Pool& pool = TreePool();
  if (type != SectionType::Number) {
    NumberList made;
    made.Assign(values, count, pool);
    value.Release(pool);
    new (&numbers) NumberList(made);
  } else {
    numbers.Assign(values, count, pool);
  }
  type = SectionType::Number;
}

// Gives the memory of this section and all below it back. No use of it may follow.
void RealSection::Release(Pool& pool) {
  name.Release(pool);
  if (type == SectionType::Number) {
    numbers.Release(pool);
  } else {
    value.Release(pool);
  }
  if (extras != nullptr) {
    extras->comment.Release(pool);
    extras->inline_comment.Release(pool);
    pool.Free(extras, sizeof *extras);
  }
  if (children != nullptr) {
    for (std::int32_t i = 0; i < children->size(); ++i) children->at(i)->Release(pool);
    children->Release();
  }
  pool.Free(this, sizeof *this);
}

}  // namespace confgrove
