// RealSection: its life, and the way along a path.
#include "tree/real_section.h"

#include <cassert>
#include <cstring>
#include <new>
#include <string>

#include "base/letters.h"
#include "base/name_end.h"
#include "base/trace.h"
#include "tree/path.h"
#include "tree/root_section.h"

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
  Miss miss;
  RealSection* found = Follow(path, &miss);
  if (found == nullptr) ReportMiss(path, miss);
  return found;
}

RealSection* RealSection::Seek(std::string_view path) {
  Miss miss;
  return Follow(path, &miss);
}

void RealSection::ReportMiss(std::string_view path, const Miss& miss) {
  if (!CheckPath(WithoutBlanks(path)))
    return;  // a fault anywhere in the path comes before the miss
  miss.section->missed_child = true;
  TraceHandler(LevelFailedLookup, "section '%s': cannot find subsection: %s", name().data(),
               std::string(miss.rest.substr(0, miss.rest.find('.'))).c_str());
}

// A path that leads to a section is sound in all its bytes.
RealSection* RealSection::Follow(std::string_view path, Miss* miss) {
  RealSection* current = this;
  path = WithoutBlanks(path);
  if (path.empty()) return current;
  if (!CanBeginPath(path.front())) {  // as names behind a dot may
    *miss = {current, path};
    return nullptr;
  }
  const char* at = path.data();
  const char* const end = at + path.size();
  assert(!IsPathLetter(*end));
  for (;;) {
    const char* const begin = at;
    at = BehindName(path, at);
    const std::string_view component(begin, static_cast<std::size_t>(at - begin));
    RealSection* child = current->FindChild(component);
    if (child != nullptr && at == end) return child;
    if (child == nullptr || *at != '.') {
      *miss = {current, {begin, static_cast<std::size_t>(end - begin)}};
      return nullptr;
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
  const bool apart = child_name.size() > LongestOwnName;
  void* const piece = pool.Allocate(SizeWithName(apart ? 0 : child_name.size()));
  auto* child = new (piece) RealSection(child_read_only);
  if (apart) {
    child->SetNameApart(child_name, pool);
  } else {
    child->SetOwnName(child_name);
  }
  child->parent = this;
  if (Children::Append(&children, pool, child, child_name)) return child;
  child->Release(pool);
  return nullptr;
}

void RealSection::SetOwnName(std::string_view new_name) {
  name_size_ = static_cast<std::uint16_t>(new_name.size());
  std::memmove(OwnName(), new_name.data(), new_name.size());
  OwnName()[new_name.size()] = '\0';
}

void RealSection::SetNameApart(std::string_view new_name, Pool& pool) {
  MakeExtras(pool).name.Assign(new_name, pool);
  is_name_apart_ = true;
}

void RealSection::GiveName(std::string_view new_name, Pool& pool) {
  const bool fits =
      new_name.size() <= LongestOwnName &&
      Pool::Capacity(SizeWithName(new_name.size())) == Pool::Capacity(SizeWithName(name_size_));
  if (fits && !is_name_apart_) {
    SetOwnName(new_name);
  } else {
    SetNameApart(new_name, pool);
  }
}

bool RealSection::RefusesChange(const char* format, const char* what) const {
  if (!read_only) return false;
  if (TraceLevel > 0) TraceHandler(LevelError, format, name().data(), what);
  return true;
}

void RealSection::SetComment(std::string_view new_comment, bool is_inline) {
  if (extras_ == nullptr && new_comment.empty()) return;
  Pool& pool = TreePool();
  Extras& made = MakeExtras(pool);
  (is_inline ? made.inline_comment : made.comment).Assign(new_comment, pool);
}

RealSection::Extras& RealSection::MakeExtras(Pool& pool) {
  if (extras_ == nullptr) extras_ = new (pool.Allocate(sizeof(Extras))) Extras();
  return *extras_;
}

void RealSection::AssignText(SectionType text_type, std::string_view new_text) {
  Pool& pool = TreePool();
  if (text_type == SectionType::Link) MakeExtras(pool);
  value_.AssignText(Held(), new_text, pool);
  type = text_type;
  if (extras_ != nullptr) extras_->former_text.Release(pool);
}

void RealSection::AssignNumbers(const double* values, std::size_t count) {
  if (Held() == Holding::Number && count == 1) {  // as a rule
    value_.ReplaceNumber(*values);
    return;
  }
  Pool& pool = TreePool();
  if (type == SectionType::Number || text().empty()) {
    value_.AssignNumbers(Held(), values, count, pool);
  } else {  // a text that was handed out is good until another takes its place
    PoolText& former_text = MakeExtras(pool).former_text;
    former_text = value_.AssignNumbers(Held(), values, count, pool);
  }
  type = SectionType::Number;
  is_array_ = count > 1;
}

// Gives the memory of this section and all below it back. No use of it may follow.
void RealSection::Release(Pool& pool) {
  value_.Release(Held(), pool);
  if (extras_ != nullptr) {
    extras_->name.Release(pool);
    extras_->comment.Release(pool);
    extras_->inline_comment.Release(pool);
    extras_->former_text.Release(pool);
    pool.Free(extras_, sizeof *extras_);
  }
  if (children != nullptr) {
    for (RealSection* child : *children) child->Release(pool);
    children->Release();
  }
  pool.Free(this, SizeWithName(name_size_));
}

}  // namespace confgrove
