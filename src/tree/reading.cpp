// Reading values, through links.
#include <algorithm>
#include <cassert>
#include <limits>

#include "tree/real_section.h"

namespace confgrove {
namespace {

std::int32_t ToInt(double number) {
  using Int = std::numeric_limits<std::int32_t>;
  // Both bounds have a double of their own, and NaN fails both tests.
  const bool fits = number > Int::min() - 1.0 && number < Int::max() + 1.0;
  return fits ? static_cast<std::int32_t>(number) : Int::min();
}

}  // namespace

// The section at `path`, or the one at the end of its links. Null if there is none, or if a link
// comes up that is on LinkTrail; the trail then stays as it is, for the reads that follow.
RealSection* RealSection::FindTarget(const char* path) {
  assert(path != nullptr);
  RealSection* const found = FindSection(path);
  if (found == nullptr) return nullptr;
  if (found->type == SectionType::Link) return FollowLinks(found);
  LinkTrail::Clear();
  return found;
}

RealSection* RealSection::FollowLinks(RealSection* found) {
  RealSection* const top = Top();
  const LinkTrail::Mark trail = LinkTrail::Current();  // a handler that reads may end it
  while (found != nullptr && found->type == SectionType::Link) {
    if (*found->link_trail_mark() == trail) return nullptr;
    LinkTrail::Append(found->link_trail_mark(), trail);
    try {
      found = top->FindSection(found->text().view());
    } catch (...) {  // no memory for a message: the next read begins anew
      LinkTrail::Clear();
      throw;
    }
  }
  if (found != nullptr) LinkTrail::Clear();
  return found;
}

const char* RealSection::GetString(const char* path) {
  const RealSection* target = FindTarget(path);
  if (target == nullptr || target->type != SectionType::String) return nullptr;
  return target->text().c_str();
}

bool RealSection::GetDouble(double* out, const char* path) {
  const RealSection* target = FindTarget(path);
  if (target == nullptr || target->type != SectionType::Number) return false;
  *out = target->numbers().front();
  return true;
}

bool RealSection::GetInt(std::int32_t* out, const char* path) {
  double number = 0;
  if (!GetDouble(&number, path)) return false;
  *out = ToInt(number);
  return true;
}

bool RealSection::GetBool(bool* out, const char* path) {
  double number = 0;
  if (!GetDouble(&number, path)) return false;
  *out = number != 0;
  return true;
}

std::int32_t RealSection::GetDoubles(double* buffer, std::int32_t size, const char* path) {
  const RealSection* target = FindTarget(path);
  if (target == nullptr || target->type != SectionType::Number) return 0;
  const auto count = static_cast<std::int32_t>(target->numbers().size());
  if (buffer == nullptr || size == 0) return count;
  const std::int32_t copied = std::max(std::min(count, size), 0);
  std::copy_n(target->numbers().begin(), copied, buffer);
  return copied;
}

std::int32_t RealSection::GetInts(std::int32_t* buffer, std::int32_t size, const char* path) {
  if (size < 1) return 0;
  const RealSection* target = FindTarget(path);
  if (target == nullptr || target->type != SectionType::Number) return 0;
  const std::int32_t copied = std::min(static_cast<std::int32_t>(target->numbers().size()), size);
  std::transform(target->numbers().begin(), target->numbers().begin() + copied, buffer, ToInt);
  return copied;
}

SectionType RealSection::GetType(const char* path) {
  const RealSection* target = FindTarget(path);
  return target != nullptr ? target->type : SectionType::None;
}

const char* RealSection::GetComment(const char* path, bool is_inline) {
  assert(path != nullptr);
  const RealSection* found = FindSection(path);
  if (found == nullptr) return nullptr;
  return (is_inline ? found->inline_comment() : found->comment()).c_str();
}

}  // namespace confgrove
