// What the library asks of the system. posix.cpp and windows.cpp each answer all of it.
//
// Paths come as the library writes them, with any mix of separators, and are turned for the system
// in here and nowhere else.
#ifndef CONFGROVE_PLATFORM_PLATFORM_H
#define CONFGROVE_PLATFORM_PLATFORM_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

namespace confgrove::Platform {

// What divides directories, and whether a byte at the end of a directory is taken for it.
extern const char separator;
bool IsSeparator(char c);

// The line end of the system's text files.
extern const std::string_view line_end;

// What the system says of a file. Two that are equal tell of the same file, unchanged.
struct FileStamp {
  bool exists = false;
  std::uint64_t size = 0;     // in bytes
  std::int64_t modified = 0;  // in nanoseconds, from a start that is the system's own
  std::uint64_t device = 0;
  std::uint64_t inode = 0;

  friend bool operator==(const FileStamp& a, const FileStamp& b) {
    return a.exists == b.exists && a.size == b.size && a.modified == b.modified &&
           a.device == b.device && a.inode == b.inode;
  }
  friend bool operator!=(const FileStamp& a, const FileStamp& b) { return !(a == b); }
};

// Of what stands at `path`, symbolic links followed. What can't be reached doesn't exist.
FileStamp GetStamp(const std::string& path);

// A file that is being read, its bytes as they stand on the disk.
class InputFile {
 public:
  explicit InputFile(const std::string& path);
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  ~InputFile();  // closes it

  // False if it can't be opened or is a directory.
  bool is_open() const;

  // Before the first byte was read.
  const FileStamp& stamp() const { return stamp_; }

  // Reads the next `size` bytes, or fewer if the file ends there or a read fails. Gives how many.
  std::size_t Read(char* to, std::size_t size);

 private:
  std::intptr_t handle_ = -1;  // the system's
  FileStamp stamp_;
};

// The whole file, its bytes as they stand on the disk. `stamp`, if there is one, is the file's
// before the first byte was read. False, all else untouched, if it can't be opened, is a directory
// or a read fails; `error`, if there is one, tells why.
bool ReadBytes(const std::string& path, std::string* bytes, FileStamp* stamp = nullptr,
               std::error_code* error = nullptr);

// `size` bytes of memory from the system itself, a multiple of LargePage, in pages of that size if
// it has any to give: each is paid for once, by its first byte. Null if there is no memory.
constexpr std::size_t LargePage = 2 * 1024 * 1024;
void* TakePages(std::size_t size);

// Gives back what TakePages gave for the same size.
void GivePagesBack(void* pages, std::size_t size);

// A number that nobody outside this process can foresee. False, with nothing in `*number`, if the
// system has none.
bool DrawNumber(std::uint64_t* number);

// A file that is being written, in text mode: LF goes out as the system's line end.
class OutputFile {
 public:
  // Makes the file, or empties the one that is there.
  explicit OutputFile(const std::string& path);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();  // closes it

  bool is_open() const;

  // Writes all of `text`, or what the system takes of it. If that isn't all, nothing more is
  // written: what the file then holds has no gap.
  void Write(std::string_view text);

 private:
  std::intptr_t handle_;  // the system's
  bool failed_ = false;
};

// When the file was last changed, in local time, as ctime gives it but without the line end. False,
// `text` untouched, if it can't be opened or told.
bool GetFileTime(const std::string& path, std::string* text);

// Makes one directory. Returns 0, or the system's errno (EEXIST if something is there already).
int MakeDirectory(const std::string& path);

}  // namespace confgrove::Platform

#endif
