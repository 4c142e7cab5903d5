// FileName: a path of the shell in the terms of the library, which trims names and adds extensions.
#ifndef CONFGROVE_TOOLS_FILE_NAME_H
#define CONFGROVE_TOOLS_FILE_NAME_H

#include <string>

namespace confgrove::Tool {

struct FileName {
  // Finds settings and a name with which the library opens the file `path_of_shell` and no other.
  // Refuses a path for which there are none.
  explicit FileName(std::string path_of_shell);

  // Makes them the settings of the process.
  void Use() const;

  // The file, and any path of the library, as the system knows it.
  std::string Path() const;
  static std::string ForSystem(std::string path);

  std::string shown;      // to the user: the path as given
  std::string directory;  // the root directory: "", or ends in a separator
  std::string extension;  // the default extension, for imports too
  std::string name;       // relative to `directory`

 private:
  // What the library makes of a name.
  std::string Compose(const std::string& any_name) const;
};

// Refuses what isn't a regular file that can be read.
void RequireReadable(const std::string& path, const std::string& shown);

// The bytes of such a file.
std::string ReadBytes(const std::string& path, const std::string& shown);

}  // namespace confgrove::Tool

#endif
