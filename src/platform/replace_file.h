// Replacing a file so that it is the old one or the new one at every moment: the steps, each a call
// of the system with its care. replace_file_posix.cpp and replace_file_windows.cpp each answer all
// of it.
#ifndef CONFGROVE_PLATFORM_REPLACE_FILE_H
#define CONFGROVE_PLATFORM_REPLACE_FILE_H

#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

namespace confgrove::Platform {

// The file behind all symbolic links, in the system's form: its directory, ready for a name to be
// put behind it, and its name. Neither need exist.
std::error_code FollowLinks(const std::string& path, std::string* directory, std::string* name);

// Holds off others that lock the same directory; the system releases it if the process dies. Where
// the file system knows no locks, it holds off nobody.
class DirectoryLock {
 public:
  explicit DirectoryLock(const std::string& directory);  // waits
  DirectoryLock(const DirectoryLock&) = delete;
  DirectoryLock& operator=(const DirectoryLock&) = delete;
  ~DirectoryLock();

 private:
  std::intptr_t handle_;  // the system's
};

// Whether a regular file is there: no_such_file_or_directory if nothing is, invalid_argument if
// something else is. Symbolic links are followed.
std::error_code CheckRegular(const std::string& path);

// Whether the file may be written to.
std::error_code CheckWritable(const std::string& path);

// Makes a new empty file, which its owner alone can read unless it is `for_all`. Its path, `prefix`
// and some letters that make it unlike any other, goes into `*path`.
std::error_code CreateUnique(const std::string& prefix, std::string* path, bool for_all = false);

// Makes `bytes` all that the file holds. Every write and the close are checked.
std::error_code WriteFile(const std::string& path, std::string_view bytes);

// Gives `copy` the mode and the extended attributes of `target`, if that exists, and its owner if
// we may; brings it to the disk and puts it in the place of `target`. On an error before that,
// `target` is untouched and `copy` still there.
std::error_code PutInPlace(const std::string& copy, const std::string& target);

// Removes a file that nobody misses.
void RemoveFile(const std::string& path);

}  // namespace confgrove::Platform

#endif
