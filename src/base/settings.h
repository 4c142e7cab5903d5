// The process-wide settings, and how a configuration's name becomes a path.
#ifndef CONFGROVE_BASE_SETTINGS_H
#define CONFGROVE_BASE_SETTINGS_H

#include <string>
#include <string_view>

namespace confgrove {

// Both live in functions and never go, so that a host's static objects can use the library before
// main and after it.

// Stands in front of every file name. Empty, or ends in a separator. Written by SetRootDirectory,
// and by SettingsOf for a while.
std::string& RootDirectory();

// Begins with a point. Written by SetDefaultExtension, and by SettingsOf for a while.
std::string& DefaultExtension();

void SetRootDirectory(std::string directory);
void SetDefaultExtension(std::string extension);

// `name`, with the default extension behind it unless that occurs anywhere in it.
std::string ComposeFileName(const std::string& name);

// The root directory and `file_name`.
std::string ComposeFullPath(const std::string& file_name);

// The file of the configuration `name` as messages name it; the extension is always appended.
std::string FileLabel(const std::string& name);

struct PathPieces {
  std::string directory;  // with the drive, up to and including the last separator
  std::string file_name;  // without the extension
  std::string extension;  // with its point; empty if there is none
};
PathPieces SplitPath(std::string_view path);

// Where a configuration's file was when it was opened.
struct FileOrigin {
  FileOrigin() = default;
  explicit FileOrigin(const std::string& config_name);  // by the settings of this moment

  // Of a path, whatever the settings are. The name is one by which the library opens that file; ""
  // if there is none.
  static FileOrigin OfPath(const std::string& file_path);

  std::string name;  // of the configuration
  std::string root_directory;
  std::string extension;
  std::string path;
};

// While it lives the settings are those under which that file was opened.
class SettingsOf {
 public:
  explicit SettingsOf(const FileOrigin& origin);
  SettingsOf(const SettingsOf&) = delete;
  SettingsOf& operator=(const SettingsOf&) = delete;
  ~SettingsOf();

 private:
  std::string root_directory_;  // as they were
  std::string extension_;
};

}  // namespace confgrove

#endif
