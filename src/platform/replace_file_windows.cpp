// Replacing a file, for Windows.
#define NOMINMAX

#include "platform/replace_file.h"

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <random>

namespace confgrove::Platform {
namespace {

std::error_code LastErrno() { return {errno, std::generic_category()}; }

// A descriptor, or the error.
std::error_code Open(const std::string& path, int flags, int* fd) {
  const int error =
      ::_sopen_s(fd, path.c_str(), flags | _O_NOINHERIT, _SH_DENYNO, _S_IREAD | _S_IWRITE);
  return {error, std::generic_category()};
}

}  // namespace

// One lock for all directories: simple, and no command takes long.
DirectoryLock::DirectoryLock(const std::string&)
    : handle_(reinterpret_cast<std::intptr_t>(::CreateMutexA(nullptr, FALSE, "Local\\confgrove"))) {
  if (handle_ != 0) ::WaitForSingleObject(reinterpret_cast<HANDLE>(handle_), INFINITE);
}

DirectoryLock::~DirectoryLock() {
  if (handle_ == 0) return;
  ::ReleaseMutex(reinterpret_cast<HANDLE>(handle_));
  ::CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

std::error_code CheckWritable(const std::string& path) {
  int fd = -1;
  const std::error_code error = Open(path, _O_WRONLY | _O_BINARY, &fd);
  if (!error) ::_close(fd);
  return error;
}

std::error_code CreateUnique(const std::string& prefix, std::string* path) {
  std::random_device random;
  for (;;) {
    const std::string name = prefix + std::to_string(random());
    int fd = -1;
    const std::error_code error = Open(name, _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY, &fd);
    if (error == std::errc::file_exists) continue;
    if (error) return error;
    *path = name;
    return ::_close(fd) == 0 ? std::error_code() : LastErrno();
  }
}

std::error_code WriteFile(const std::string& path, std::string_view text) {
  constexpr std::size_t LargestWrite = INT_MAX / 2;
  int fd = -1;
  std::error_code error = Open(path, _O_WRONLY | _O_TRUNC | _O_TEXT, &fd);
  if (error) return error;
  while (!text.empty() && !error) {
    const std::size_t wanted = std::min(text.size(), LargestWrite);
    const int written = ::_write(fd, text.data(), static_cast<unsigned>(wanted));
    if (written <= 0) {
      error = LastErrno();
    } else {
      text.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  if (::_close(fd) != 0 && !error) error = LastErrno();
  return error;
}

std::error_code PutInPlace(const std::string& copy, const std::string& target) {
  int fd = -1;
  std::error_code error = Open(copy, _O_WRONLY | _O_BINARY, &fd);
  if (error) return error;
  if (::_commit(fd) != 0) error = LastErrno();
  if (::_close(fd) != 0 && !error) error = LastErrno();
  if (error) return error;
  // Takes over the attributes and the access rights of the target.
  if (::ReplaceFileA(target.c_str(), copy.c_str(), nullptr, REPLACEFILE_WRITE_THROUGH, nullptr,
                     nullptr) != 0) {
    return {};
  }
  return {static_cast<int>(::GetLastError()), std::system_category()};
}

void LetLargeWritesFail() {}  // the system knows no such limit

bool StandardErrorIsTerminal() { return ::_isatty(::_fileno(stderr)) != 0; }

}  // namespace confgrove::Platform
