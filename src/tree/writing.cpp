// Changing values, and making sections along a path.
#include <algorithm>
#include <cassert>
#include <memory>
#include <new>
#include <string>

#include "base/limits.h"
#include "base/trace.h"
#include "tree/path.h"
#include "tree/real_section.h"

namespace confgrove {
namespace {

std::int32_t DepthOf(const RealSection* section) {
  std::int32_t depth = 0;
  for (; section->parent != nullptr; section = section->parent) ++depth;
  return depth;
}

bool RefuseNumbers() {
  TraceHandler(LevelError, "bad data during setting array of doubles");
  return false;
}

}  // namespace

// Finds the section at `path` in this tree, or makes it with all that is missing on the way. Null,
// with a message, if the path is refused; what was made by then stays.
RealSection* RealSection::MakeSection(std::string_view path) {
  Miss miss;
  if (RealSection* found = Follow(path, &miss)) return found;
  if (!CheckPath(WithoutBlanks(path))) return nullptr;
  RealSection* current = miss.section;
  std::string_view missing = miss.rest;
  for (std::int32_t depth = DepthOf(current) + 1;; ++depth) {
    if (depth > MaxDepth) {
      TraceHandler(LevelError, "nesting too deep");
      return nullptr;
    }
    const std::size_t dot = missing.find('.');
    current = current->AddChild(missing.substr(0, dot), read_only);
    if (dot == std::string_view::npos) return current;
    missing.remove_prefix(dot + 1);
    // Behind a section just made, the rest is a path in its own right: its bytes are known to be
    // sound, its beginning isn't, and with nothing left that section is the target.
    if (missing.empty()) return current;
    if (!CheckPathBegin(missing.front())) return nullptr;
  }
}

// What the setters of values begin with: the section to change, or null if there is a refusal.
RealSection* RealSection::BeginSet(const char* path) {
  assert(path != nullptr);
  if (RefusesChange("section '%s' is 'read-only', cannot set parameter: %s", path)) return nullptr;
  return MakeSection(path);
}

bool RealSection::SetString(const char* new_text, const char* path) {
  assert(new_text != nullptr);
  RealSection* target = BeginSet(path);
  if (target == nullptr) return false;
  target->AssignText(SectionType::String, new_text);
  return true;
}

bool RealSection::SetLink(const char* target_path, const char* path) {
  assert(target_path != nullptr);
  RealSection* target = BeginSet(path);
  if (target == nullptr) return false;
  target->AssignText(SectionType::Link, target_path);
  return true;
}

bool RealSection::SetDouble(double number, const char* path) {
  RealSection* target = BeginSet(path);
  if (target == nullptr) return false;
  target->AssignNumbers(&number, 1);
  return true;
}

bool RealSection::SetDoubles(const double* values, std::int32_t count, const char* path) {
  // A read-only section says so whatever the data is.
  if (!read_only && (values == nullptr || count < 1)) return RefuseNumbers();
  RealSection* target = BeginSet(path);
  if (target == nullptr) return false;
  target->AssignNumbers(values, static_cast<std::size_t>(count));
  return true;
}

bool RealSection::SetInt(std::int32_t number, const char* path) { return SetDouble(number, path); }

bool RealSection::SetBool(bool truth, const char* path) { return SetInt(truth ? 1 : 0, path); }

bool RealSection::SetInts(const std::int32_t* values, std::int32_t count, const char* path) {
  if (values == nullptr || count < 1) return RefuseNumbers();
  const auto size = static_cast<std::size_t>(count);
  const std::unique_ptr<double[]> converted(new (std::nothrow) double[size]);
  if (converted == nullptr) return false;
  std::copy_n(values, size, converted.get());
  return SetDoubles(converted.get(), count, path);
}

bool RealSection::SetComment(const char* new_comment, const char* path, bool is_inline) {
  assert(new_comment != nullptr && path != nullptr);
  if (RefusesChange("section '%s' is 'read-only', cannot set comment '%s'", new_comment)) {
    return false;
  }
  RealSection* target = MakeSection(path);
  if (target == nullptr) return false;
  const std::string_view given = new_comment;
  if (is_inline) {
    target->SetComment(given.substr(0, given.find('\n')), true);
  } else {
    target->SetComment(std::string(given) + '\n', false);
  }
  return true;
}

}  // namespace confgrove
