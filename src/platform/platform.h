// What the library asks of the system. posix.cpp and windows.cpp each answer all of it.
//
// Paths come as the library writes them, with any mix of separators, and are turned for the system
// in here and nowhere else.
#ifndef CONFGROVE_PLATFORM_PLATFORM_H
#define CONFGROVE_PLATFORM_PLATFORM_H

#include <cstdint>
#include <string>
#include <string_view>

namespace confgrove::Platform {

// What divides directories, and whether a byte at the end of a directory is taken for it.
extern const char separator;
bool IsSeparator(char c);

// The whole file, each CR LF as one LF. A read that fails ends it. False, `text` untouched, if it
// can't be opened or is a directory.
bool ReadFile(const std::string& path, std::string* text);

// A file that is being written, in text mode: LF goes out as the system's line end.
class OutputFile {
 public:
  // Makes the file, or empties the one that is there.
  explicit OutputFile(const std::string& path);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();  // closes it

  bool is_open() const;

  // Writes all of `text`, or what the system takes of it.
  void Write(std::string_view text);

 private:
  std::intptr_t handle_;  // the system's
};

// When the file was last changed, in local time, as ctime gives it but without the line end. False,
// `text` untouched, if it can't be opened or told.
bool GetFileTime(const std::string& path, std::string* text);

// Makes one directory. Returns 0, or the system's errno (EEXIST if something is there already).
int MakeDirectory(const std::string& path);

}  // namespace confgrove::Platform

#endif
