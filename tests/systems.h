// What differs between the systems, as the tests see it: one table, and the few calls that each
// system has in its own way.
#ifndef CONFGROVE_TESTS_SYSTEMS_H
#define CONFGROVE_TESTS_SYSTEMS_H

#include <cstdint>
#include <filesystem>
#include <locale>
#include <string>

struct System {
  const char* separator;       // what a root directory gets at its end
  const char* line_end;        // of a file that Save has written
  bool slash_is_end;           // a root directory that ends in '/' doesn't get a separator
  bool case_counts;            // in names of files
  bool has_links;              // symbolic ones, for everybody
  int errno_below_a_file;      // of a directory that is to be made there
  const char* full_device;     // takes no byte; null if there is none
  const char* any_time;        // a directory whose files keep any time; null if all do
  std::int64_t untold_time;    // one that no text can be given for, in seconds since 1970
  const char* german_numbers;  // 0.5 and 1234567 as such a host prints them in C and in C++
  const char* german;          // a locale with a decimal comma
  unsigned many_files;         // that can be opened within seconds, which takes long under Wine
};
extern const System ThisSystem;

// `path` with ThisSystem.separator for each '~', and for each '^' if '/' is no end.
std::string ForThisSystem(std::string path);

// `bytes` of a file that Save has written, with '\n' as line end. Every line end must be the
// system's, which is checked.
std::string WithoutLineEnds(const std::string& bytes);

// The locale of the process, of the thread and of C++ while it lives, as far as the system has
// these apart. Nothing happens if it is missing.
class HostLocale {
 public:
  explicit HostLocale(const char* name);
  HostLocale(const HostLocale&) = delete;
  HostLocale& operator=(const HostLocale&) = delete;
  ~HostLocale();
  bool IsInUse() const;

 private:
  std::string name_;
  std::locale before_;
  void* thread_ = nullptr;  // the thread's, and the one before it
  void* thread_before_ = nullptr;
};

// These work on paths of any length, which the standard library doesn't on every system.
bool Exists(const std::filesystem::path& path);
void RemoveAll(const std::filesystem::path& directory);

// The other way round.
std::string WithLineEnds(const std::string& text);

// While it lives, we may make no file in a directory, as far as anything is forbidden to us.
class ClosedDirectory {
 public:
  explicit ClosedDirectory(std::filesystem::path path);
  ClosedDirectory(const ClosedDirectory&) = delete;
  ClosedDirectory& operator=(const ClosedDirectory&) = delete;
  ~ClosedDirectory();
  bool BindsUs() const;

 private:
  std::filesystem::path path_;
};

// Sets when the file was last changed, in seconds since 1970.
void SetFileTime(const std::string& path, std::int64_t time);

#endif
