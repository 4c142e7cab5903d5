// FileName: a path of the shell that the library can open.
#ifndef CONFGROVE_TOOLS_FILE_NAME_H
#define CONFGROVE_TOOLS_FILE_NAME_H

#include <string>

namespace confgrove::Tool {

struct FileName {
  // Refuses a path with which the library would open another file or none.
  explicit FileName(std::string path_of_shell);

  // The file, and any path of the library, as the system knows it.
  std::string Path() const { return ForSystem(path); }
  static std::string ForSystem(std::string path);

  std::string path;
  std::string shown;  // to the user: the path as given
};

// Refuses what isn't a regular file that can be read.
void RequireReadable(const std::string& path, const std::string& shown);

// The bytes of such a file.
std::string ReadBytes(const std::string& path, const std::string& shown);

}  // namespace confgrove::Tool

#endif
