// The load under way, and LoadFile.
#include "front/load.h"

#include "front/settings.h"
#include "front/trace.h"
#include "parser/conf_parser.h"
#include "platform/platform.h"
#include "tree/root_section.h"

namespace confgrove {

std::int32_t ErrorCount = 0;
std::int32_t WarningCount = 0;

void FileNames::Append(const std::string& name) {
  names_.push_back(name);
  known_.insert(names_.back());
}

void FileNames::Clear() {
  known_.clear();
  names_.clear();
}

FileNames& ImportStack() {
  static FileNames names;
  return names;
}

void ResetLoadState() {
  ImportStack().Clear();
  ErrorCount = 0;
  WarningCount = 0;
}

std::int32_t ReportCounts() {
  if (TraceLevel > 0 || ErrorCount > 0) {
    TraceHandler(LevelSummary, "%d error(s), %d warning(s)", ErrorCount, WarningCount);
  }
  return ErrorCount;
}

std::unique_ptr<RootSection> LoadFile(const std::string& name, bool read_only, std::int32_t depth) {
  const std::string file_name = ComposeFileName(name);
  ImportStack().Append(name);
  std::string text;
  if (!Platform::ReadFile(ComposeFullPath(file_name), &text)) {
    if (TraceLevel > 1) {
      TraceHandler(LevelError, "cannot open import file:%s", file_name.c_str());
    }
    return nullptr;
  }
  auto root = std::make_unique<RootSection>(name, read_only);
  ConfParser parser(text, root.get(), depth);
  if (parser.ParseBody(nullptr) != 0) return nullptr;
  return root;
}

}  // namespace confgrove
