// Replacing a file, for POSIX systems.
#include "platform/replace_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>

namespace confgrove::Platform {
namespace {

// 0 or more is success, as the system's calls give it.
std::error_code Checked(int result) {
  return result < 0 ? std::error_code(errno, std::generic_category()) : std::error_code();
}

// The first error stays.
void Join(std::error_code* first, std::error_code next) {
  if (!*first) *first = next;
}

std::error_code WriteAll(int fd, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(fd, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return Checked(-1);
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return {};
}

std::string DirectoryOf(const std::string& path) {
  const std::size_t end = path.rfind('/');
  return end == std::string::npos ? "." : path.substr(0, end + 1);
}

}  // namespace

DirectoryLock::DirectoryLock(const std::string& directory)
    : handle_(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  while (handle_ >= 0 && ::flock(static_cast<int>(handle_), LOCK_EX) != 0 && errno == EINTR) {
  }
}

DirectoryLock::~DirectoryLock() {
  if (handle_ >= 0) ::close(static_cast<int>(handle_));
}

std::error_code CheckWritable(const std::string& path) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
  return fd < 0 ? Checked(fd) : Checked(::close(fd));
}

std::error_code CreateUnique(const std::string& prefix, std::string* path) {
  std::string name = prefix + "XXXXXX";
  const int fd = ::mkstemp(name.data());
  if (fd < 0) return Checked(fd);
  *path = name;
  return Checked(::close(fd));
}

std::error_code WriteFile(const std::string& path, std::string_view text) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
  if (fd < 0) return Checked(fd);
  std::error_code error = WriteAll(fd, text);
  Join(&error, Checked(::close(fd)));
  return error;
}

std::error_code PutInPlace(const std::string& copy, const std::string& target) {
  struct stat old {};
  if (::stat(target.c_str(), &old) != 0) return Checked(-1);
  const int fd = ::open(copy.c_str(), O_WRONLY | O_CLOEXEC);
  if (fd < 0) return Checked(fd);
  // A new owner takes special bits of the mode away, so the owner comes first. Most users can't
  // give files away, and the group may be one that they aren't in.
  if (::fchown(fd, old.st_uid, old.st_gid) != 0 && ::fchown(fd, uid_t(-1), old.st_gid) != 0) {
    old.st_mode &= ~static_cast<mode_t>(S_ISUID | S_ISGID);
  }
  std::error_code error = Checked(::fchmod(fd, old.st_mode & 07777));
  if (!error) error = Checked(::fsync(fd));
  Join(&error, Checked(::close(fd)));
  if (!error) error = Checked(::rename(copy.c_str(), target.c_str()));
  if (error) return error;
  // The file stands; that its new name does too after a power failure is all that can still fail.
  const int directory = ::open(DirectoryOf(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (directory >= 0) {
    ::fsync(directory);
    ::close(directory);
  }
  return {};
}

void LetLargeWritesFail() { std::signal(SIGXFSZ, SIG_IGN); }

bool StandardErrorIsTerminal() { return ::isatty(STDERR_FILENO) == 1; }

}  // namespace confgrove::Platform
