// Replacing a file as a whole.
#ifndef CONFGROVE_TEXT_REPLACE_FILE_H
#define CONFGROVE_TEXT_REPLACE_FILE_H

#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/platform.h"
#include "platform/replace_file.h"

namespace confgrove {

// A file that is to be replaced. While it lives, others that replace files of the same directory
// wait, in this process too: one at a time in a thread.
class FileReplacement {
 public:
  // `path` is the library's. Symbolic links are followed. Waits for others.
  explicit FileReplacement(const std::string& path);

  // All bytes of the file, as on the disk, and what the system says of it. A missing file has no
  // bytes, and `stamp->exists` is false. "", or in plain words why it can't be read.
  std::string Read(std::string* bytes, Platform::FileStamp* stamp);

  // Makes `bytes` all that the file holds; mode, owner and extended attributes stay. A missing file
  // is made. "", or in plain words why not: the file is then as it was, and it is a reason if it
  // has changed since Read.
  std::string Put(std::string_view bytes);

  // Whether Put has found the file changed.
  bool has_changed() const { return has_changed_; }

 private:
  std::string Check(bool* exists) const;
  std::string Target() const { return directory_ + name_; }
  std::string PrefixOfCopy() const;

  // The file behind all symbolic links, or why they can't be followed.
  std::string directory_;
  std::string name_;
  std::error_code links_;

  Platform::DirectoryLock lock_;             // of the directory
  std::optional<Platform::FileStamp> read_;  // what was read, if anything was
  bool has_changed_ = false;
};

}  // namespace confgrove

#endif
