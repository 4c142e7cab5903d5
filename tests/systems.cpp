#include "systems.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <fstream>
#include <utility>

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

// Needs <windows.h> before it.
#include <sddl.h>
#else
#include <fcntl.h>
#include <locale.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#ifdef _WIN32

const System ThisSystem = {"\\",
                           "\r\n",
                           false,
                           false,
                           false,
                           ENOENT,
                           nullptr,
                           nullptr,
                           40'000'000'000,
                           "0,51234567",
                           "German_Germany.1252",
                           2000};

void SetFileTime(const std::string& path, std::int64_t time) {
  constexpr std::int64_t Start = 11'644'473'600;  // 1970, in the seconds of the system
  const auto ticks = static_cast<std::uint64_t>((time + Start) * 10'000'000);
  const FILETIME file_time = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
  const HANDLE file = ::CreateFileA(path.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  EXPECT_TRUE(::SetFileTime(file, nullptr, nullptr, &file_time)) << path;
  ::CloseHandle(file);
}

HostLocale::HostLocale(const char* name) : name_(name) { std::setlocale(LC_ALL, name); }
HostLocale::~HostLocale() { std::setlocale(LC_ALL, "C"); }
bool HostLocale::IsInUse() const { return name_ == std::setlocale(LC_ALL, nullptr); }

std::wstring OfAnyLength(const std::filesystem::path& path) {
  return L"\\\\?\\" + std::filesystem::absolute(path).lexically_normal().make_preferred().native();
}

bool Exists(const std::filesystem::path& path) {
  return ::GetFileAttributesW(OfAnyLength(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

void RemoveAll(const std::filesystem::path& directory) {
  WIN32_FIND_DATAW found{};
  const HANDLE search = ::FindFirstFileW(OfAnyLength(directory / "*").c_str(), &found);
  for (bool more = search != INVALID_HANDLE_VALUE; more; more = ::FindNextFileW(search, &found)) {
    const std::wstring name = found.cFileName;
    if (name == L"." || name == L"..") continue;
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
      RemoveAll(directory / name);
    } else {
      ::SetFileAttributesW(OfAnyLength(directory / name).c_str(), FILE_ATTRIBUTE_NORMAL);
      ::DeleteFileW(OfAnyLength(directory / name).c_str());
    }
  }
  ::FindClose(search);
  EXPECT_TRUE(::RemoveDirectoryW(OfAnyLength(directory).c_str())) << directory;
}

// Sets the access list, in the system's own words for it.
static void SetAccess(const std::filesystem::path& path, const wchar_t* list) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  EXPECT_TRUE(::ConvertStringSecurityDescriptorToSecurityDescriptorW(list, SDDL_REVISION_1,
                                                                     &descriptor, nullptr));
  EXPECT_TRUE(::SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, descriptor)) << path;
  ::LocalFree(descriptor);
}

ClosedDirectory::ClosedDirectory(std::filesystem::path path) : path_(std::move(path)) {
  SetAccess(path_, L"D:P(A;;GRGX;;;WD)");
}
ClosedDirectory::~ClosedDirectory() { SetAccess(path_, L"D:P(A;OICI;GA;;;WD)"); }

#else

const System ThisSystem = {"/",
                           "\n",
                           true,
                           true,
                           true,
                           ENOTDIR,
                           "/dev/full",
                           "/dev/shm",
                           std::int64_t{1} << 60,
                           "0,51.234.567",
                           "de_DE.UTF-8",
                           20000};

void SetFileTime(const std::string& path, std::int64_t time) {
  const timespec times[] = {{time, 0}, {time, 0}};
  EXPECT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0) << path;
}

HostLocale::HostLocale(const char* name)
    : name_(name), thread_(::newlocale(LC_ALL_MASK, name, locale_t{})) {
  if (thread_ == nullptr) return;
  before_ = std::locale::global(std::locale(name));
  thread_before_ = ::uselocale(static_cast<locale_t>(thread_));
}
HostLocale::~HostLocale() {
  if (thread_ == nullptr) return;
  std::locale::global(before_);
  ::uselocale(static_cast<locale_t>(thread_before_));
  ::freelocale(static_cast<locale_t>(thread_));
}
bool HostLocale::IsInUse() const {
  return thread_ != nullptr && std::locale().name() == name_ && ::uselocale(locale_t{}) == thread_;
}

bool Exists(const std::filesystem::path& path) { return std::filesystem::exists(path); }

void RemoveAll(const std::filesystem::path& directory) { std::filesystem::remove_all(directory); }

// Root, whom nothing is forbidden, is somebody else for the time.
ClosedDirectory::ClosedDirectory(std::filesystem::path path) : path_(std::move(path)) {
  EXPECT_EQ(::chmod(path_.c_str(), 0555), 0) << path_;
  EXPECT_TRUE(::geteuid() != 0 || ::seteuid(65534) == 0);
}
ClosedDirectory::~ClosedDirectory() {
  EXPECT_EQ(::seteuid(::getuid()), 0);
  EXPECT_EQ(::chmod(path_.c_str(), 0755), 0) << path_;
}

#endif

bool ClosedDirectory::BindsUs() const {
  const std::filesystem::path probe = path_ / "probe";
  const bool made = std::ofstream(probe).is_open();
  if (made) std::filesystem::remove(probe);
  return !made;
}

std::string ForThisSystem(std::string path) {
  std::string result;
  for (const char letter : path) {
    if (letter == '~' || (letter == '^' && !ThisSystem.slash_is_end)) {
      result += ThisSystem.separator;
    } else if (letter != '^') {
      result += letter;
    }
  }
  return result;
}

std::string WithoutLineEnds(const std::string& bytes) {
  const std::string line_end = ThisSystem.line_end;
  std::string result;
  for (std::size_t at = 0, end = 0; at < bytes.size(); at = end + 1) {
    end = std::min(bytes.find('\n', at), bytes.size());
    const std::size_t begin = end + 1 - std::min(line_end.size(), end + 1);
    const bool sound = end == bytes.size() || bytes.compare(begin, line_end.size(), line_end) == 0;
    if (!sound) ADD_FAILURE() << "a line end that isn't the system's";
    result.append(bytes, at, (sound && end < bytes.size() ? begin : end) - at);
    if (end < bytes.size()) result += '\n';
  }
  return result;
}

std::string WithLineEnds(const std::string& text) {
  std::string bytes;
  for (const char letter : text) {
    if (letter == '\n') {
      bytes += ThisSystem.line_end;
    } else {
      bytes += letter;
    }
  }
  return bytes;
}
