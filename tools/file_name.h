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

  // The file that the library opens for `any_name`: the name in `directory`, and its path as the
  // system knows it.
  std::string Compose(const std::string& any_name) const;
  std::string PathOf(const std::string& any_name) const;

  // A path of the library as the system knows it.
  static std::string ForSystem(std::string path);

  // The file that a message with `label` is about, as the user knows it, and its path.
  std::string ShownByLabel(const std::string& label) const;
  std::string PathByLabel(const std::string& label) const;

  std::string shown;      // to the user: at first the path as given
  std::string directory;  // the root directory: "", or ends in a separator
  std::string extension;  // the default extension, for imports too
  std::string name;       // relative to `directory`
  std::string base;       // the last part of the path

 private:
  std::string NameByLabel(const std::string& label) const;
};

// Refuses what isn't a regular file that can be read.
void RequireReadable(const std::string& path, const std::string& shown);

// The text of such a file, CR LF and all.
std::string ReadText(const std::string& path, const std::string& shown);

}  // namespace confgrove::Tool

#endif
