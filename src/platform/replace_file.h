// What the command-line tool asks of the system beyond the standard library: above all, replacing a
// file so that it is the old one or the new one at every moment. The library doesn't use it.
// replace_file_posix.cpp and replace_file_windows.cpp each answer all of it.
#ifndef CONFGROVE_PLATFORM_REPLACE_FILE_H
#define CONFGROVE_PLATFORM_REPLACE_FILE_H

#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

namespace confgrove::Platform {

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

// Whether the file may be written to.
std::error_code CheckWritable(const std::string& path);

// Makes a new empty file that its owner alone can read. Its path, `prefix` and some letters that
// make it unlike any other, goes into `*path`.
std::error_code CreateUnique(const std::string& prefix, std::string* path);

// Makes `text` all that the file holds, in text mode. Every write and the close are checked.
std::error_code WriteFile(const std::string& path, std::string_view text);

// Gives `copy` the mode of `target`, and its owner if we may, brings it to the disk and puts it in
// the place of `target`. On an error before that, `target` is untouched and `copy` still there.
std::error_code PutInPlace(const std::string& copy, const std::string& target);

// From now on a write beyond the file size limit fails, as a write should, and doesn't end the
// process.
void LetLargeWritesFail();

// Whether what goes to standard error is read by a person.
bool StandardErrorIsTerminal();

}  // namespace confgrove::Platform

#endif
