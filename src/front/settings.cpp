// Settings: ConfSet and its relatives.
#include "front/settings.h"

#include <confgrove/config.h>

#include <cassert>
#include <utility>

#include "front/trace.h"
#include "platform/platform.h"

namespace confgrove {

std::string& RootDirectory() {
  static std::string directory;
  return directory;
}

std::string& DefaultExtension() {
  static std::string extension = ".cfg";
  return extension;
}

void SetRootDirectory(std::string directory) {
  if (!directory.empty() && !Platform::IsSeparator(directory.back())) {
    directory += Platform::separator;
  }
  RootDirectory() = std::move(directory);
}

void SetDefaultExtension(std::string extension) {
  if (extension.empty() || extension.front() != '.') extension.insert(0, 1, '.');
  DefaultExtension() = std::move(extension);
}

std::string ComposeFileName(const std::string& name) {
  const std::string& extension = DefaultExtension();
  return name.find(extension) != std::string::npos ? name : name + extension;
}

std::string ComposeFullPath(const std::string& file_name) { return RootDirectory() + file_name; }

}  // namespace confgrove

void ConfSet(const char* root, const char* extension, int trace_level, TraceFunction* handler) {
  assert(root != nullptr);
  ConfSetTrace(trace_level, handler);
  // Unlike Symbols::clear_blanks this leaves nothing of a text of blanks alone.
  std::string directory = root;
  directory.erase(directory.find_last_not_of(' ') + 1);
  directory.erase(0, directory.find_first_not_of(' '));
  std::string new_extension = extension != nullptr ? extension : ".cfg";
  confgrove::SetRootDirectory(std::move(directory));
  confgrove::SetDefaultExtension(std::move(new_extension));
}

const char* ConfGetRoot() { return confgrove::RootDirectory().c_str(); }

void ConfSetTrace(int trace_level, TraceFunction* handler) {
  Io::SetTraceHandler(handler);
  confgrove::TraceLevel = trace_level;
}
