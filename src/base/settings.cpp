// Settings: ConfSet and its relatives.
#include "base/settings.h"

#include <confgrove/config.h>

#include <cassert>
#include <utility>

#include "base/letters.h"
#include "base/trace.h"
#include "platform/platform.h"

namespace confgrove {

std::string& RootDirectory() {
  static auto& directory = *new std::string;
  return directory;
}

std::string& DefaultExtension() {
  static auto& extension = *new std::string(".cfg");
  return extension;
}

void SetRootDirectory(std::string directory) {
  if (!directory.empty() && !Platform::IsSeparator(directory.back())) {
    directory += Platform::separator;
  }
  if (directory == RootDirectory()) return;  // who holds its text may go on doing so
  RootDirectory() = std::move(directory);
}

void SetDefaultExtension(std::string extension) {
  if (extension.empty() || extension.front() != '.') extension.insert(0, 1, '.');
  DefaultExtension() = std::move(extension);
}

std::string ComposeFileName(const std::string& name) {
  const std::string& extension = DefaultExtension();
  const bool has_extension = std::string_view(name).find(extension) != std::string_view::npos;
  return has_extension ? name : name + extension;
}

std::string ComposeFullPath(const std::string& file_name) { return RootDirectory() + file_name; }

std::string FileLabel(const std::string& name) {
  return RootDirectory() + name + DefaultExtension();
}

// Both slashes divide, on every system; a letter and ':' at the start are a drive.
PathPieces SplitPath(std::string_view path) {
  std::size_t file_begin = path.find_last_of("/\\");
  if (file_begin != std::string_view::npos) {
    ++file_begin;
  } else {
    file_begin = path.size() > 1 && IsAsciiLetter(path[0]) && path[1] == ':' ? 2 : 0;
  }
  std::size_t extension_begin = path.rfind('.');
  if (extension_begin == std::string_view::npos || extension_begin < file_begin) {
    extension_begin = path.size();
  }
  return {std::string(path.substr(0, file_begin)),
          std::string(path.substr(file_begin, extension_begin - file_begin)),
          std::string(path.substr(extension_begin))};
}

FileOrigin FileOrigin::OfPath(const std::string& file_path) {
  const PathPieces pieces = SplitPath(file_path);
  FileOrigin origin;
  origin.root_directory = pieces.directory;
  origin.extension = pieces.extension.empty() ? "." : pieces.extension;
  origin.path = file_path;
  // The plain name first, since imports are compared with it. "./" carries the point that keeps an
  // extension away, and blanks in front; without its extension a name carries blanks at the end.
  const SettingsOf settings(origin);
  const std::string file = pieces.file_name + pieces.extension;
  for (const std::string& name : {pieces.file_name, "./" + file, "./" + pieces.file_name}) {
    const bool is_cut = name.empty() || name.front() == ' ' || name.back() == ' ';
    const std::string composed = ComposeFileName(name);
    if (file.empty() || is_cut || (composed != file && composed != "./" + file)) continue;
    origin.name = name;
    break;
  }
  return origin;
}

FileOrigin::FileOrigin(const std::string& config_name)
    : name(config_name),
      root_directory(RootDirectory()),
      extension(DefaultExtension()),
      path(ComposeFullPath(ComposeFileName(config_name))) {}

SettingsOf::SettingsOf(const FileOrigin& origin)
    : root_directory_(origin.root_directory), extension_(origin.extension) {
  root_directory_.swap(RootDirectory());
  extension_.swap(DefaultExtension());
}

SettingsOf::~SettingsOf() {
  root_directory_.swap(RootDirectory());
  extension_.swap(DefaultExtension());
}

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
