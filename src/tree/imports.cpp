// Configurations that stand on others, and a root's file.
#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/limits.h"
#include "base/settings.h"
#include "base/trace.h"
#include "platform/platform.h"
#include "tree/root_section.h"

namespace confgrove {
namespace {

// Files in the longest chain from this root on to those that it imports.
std::int32_t ImportHeight(const RootSection& root) {
  std::int32_t highest = 0;
  for (const auto& entry : root.imports) {
    if (entry.second != nullptr) highest = std::max(highest, ImportHeight(*entry.second));
  }
  return highest + 1;
}

bool ShareAName(std::vector<std::string_view> some, const std::vector<std::string>& others) {
  std::sort(some.begin(), some.end());
  return std::any_of(others.begin(), others.end(), [&some](const std::string& name) {
    return std::binary_search(some.begin(), some.end(), std::string_view(name));
  });
}

std::string ComposePath(const RootSection& root) {
  return ComposeFullPath(ComposeFileName(std::string(root.name())));
}

}  // namespace

bool RootSection::Import(Config* config) {
  if (config == nullptr) return false;
  auto* imported = static_cast<RootSection*>(config);
  if (RefusesChange("config '%s' is 'read-only'. cannot import file '%s'",
                    imported->name().data())) {
    return false;
  }
  const auto refuse = [](const char* format, std::string_view first, std::string_view second) {
    if (TraceLevel > 0) TraceHandler(LevelError, format, first.data(), second.data());
    return false;
  };
  const char* const declared = "section '%s' has been already declared in file: '%s', skipped";
  const char* const recursive = "[%s] import: recursive import, skipped";

  const RootSection* top = this;
  std::int32_t depth = 1;
  for (; top->parent_config != nullptr; top = top->parent_config) ++depth;
  if (ShareAName({imported->name()}, top->files)) return refuse(declared, name(), imported->name());
  if (ShareAName({imported->files.begin(), imported->files.end()}, top->files) ||
      imported->parent_config != nullptr) {
    return refuse(recursive, name(), name());
  }
  const auto namesake = imports.find(imported->name());
  if (namesake != imports.end() && namesake->second != nullptr) {
    return refuse(declared, name(), imported->name());
  }
  if (depth + ImportHeight(*imported) > MaxImportDepth) {
    TraceHandler(LevelError, "imports nested too deep");
    return false;
  }

  std::vector<std::string> all_files = imported->files;
  all_files.insert(all_files.end(), top->files.begin(), top->files.end());
  Attach(imported);
  imported->files = std::move(all_files);
  return true;
}

// Both texts outlive the static objects of the host.

const char* RootSection::GetFileName() {
  static auto& path = *new std::string;
  path = ComposePath(*this);
  return path.c_str();
}

const char* RootSection::GetFileTime() {
  static auto& time = *new std::string;
  return Platform::GetFileTime(ComposePath(*this), &time) ? time.c_str() : nullptr;
}

}  // namespace confgrove
