// Replacing a file, for POSIX systems.
#include "platform/replace_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <ctime>
#include <vector>

#ifdef __linux__
#include <sys/xattr.h>
#endif

#include "platform/posix_path.h"
#include "platform/unique_name.h"
#include "platform/write_signals.h"

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

std::error_code WriteAll(int fd, std::string_view bytes) {
  constexpr std::size_t LargestWrite = 1 << 30;  // some systems refuse more at once
  const WriteSignalsBlocked blocked;
  while (!bytes.empty()) {
    const ssize_t written = ::write(fd, bytes.data(), std::min(bytes.size(), LargestWrite));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return Checked(-1);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return {};
}

// With the separator; "" for a name alone.
std::string DirectoryOf(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

#ifdef __linux__

// Of an open file; none where the file system has none.
std::vector<std::string> AttributeNames(int fd) {
  std::string all(XATTR_LIST_MAX, '\0');
  const ssize_t size = ::flistxattr(fd, all.data(), all.size());
  std::vector<std::string> names;
  for (std::size_t at = 0; size > 0 && at < static_cast<std::size_t>(size);) {
    names.emplace_back(&all[at]);
    at += names.back().size() + 1;
  }
  return names;
}

// Gives the open file `to` the extended attributes of `from`, access lists included, and no others.
// Those that the system keeps for itself are given as far as it allows.
std::error_code KeepAttributes(int from, int to) {
  const auto checked = [](const std::string& name, int result) {
    return name.rfind("security.", 0) == 0 ? std::error_code() : Checked(result);
  };
  const std::vector<std::string> names = AttributeNames(from);
  std::error_code error;
  for (const std::string& name : AttributeNames(to)) {
    if (std::find(names.begin(), names.end(), name) != names.end()) continue;
    Join(&error, checked(name, ::fremovexattr(to, name.c_str())));
  }
  std::string value(names.empty() ? 0 : XATTR_SIZE_MAX, '\0');
  for (const std::string& name : names) {
    const ssize_t size = ::fgetxattr(from, name.c_str(), value.data(), value.size());
    const int result =
        size < 0 ? -1
                 : ::fsetxattr(to, name.c_str(), value.data(), static_cast<std::size_t>(size), 0);
    Join(&error, checked(name, result));
  }
  return error;
}

#else

std::error_code KeepAttributes(int, int) { return {}; }

#endif

// Gives the open file `copy` what `target` has besides its bytes.
std::error_code KeepMode(const std::string& target, int copy) {
  const int fd = ::open(target.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) return errno == ENOENT ? std::error_code() : Checked(fd);
  struct stat old {};
  std::error_code error = Checked(::fstat(fd, &old));
  // A new owner takes special bits of the mode away, so the owner comes first. Most users can't
  // give files away, and the group may be one that they aren't in: another group gets no more than
  // everybody.
  if (!error && ::fchown(copy, old.st_uid, old.st_gid) != 0) {
    old.st_mode &= ~static_cast<mode_t>(S_ISUID | S_ISGID);
    if (::fchown(copy, uid_t(-1), old.st_gid) != 0) {
      old.st_mode &= ~static_cast<mode_t>(S_IRWXG) | ((old.st_mode & S_IRWXO) << 3);
    }
  }
  if (!error) error = KeepAttributes(fd, copy);
  if (!error) error = Checked(::fchmod(copy, old.st_mode & 07777));
  ::close(fd);
  return error;
}

}  // namespace

std::error_code FollowLinks(const std::string& path, std::string* directory, std::string* name) {
  constexpr int MostLinks = 40;  // the usual limit of systems
  std::string file = ForSystem(path);
  std::string target(PATH_MAX, '\0');
  for (int links = 0; links < MostLinks; links++) {
    *directory = DirectoryOf(file);
    *name = file.substr(directory->size());
    if (directory->empty()) *directory = "./";
    const ssize_t size = ::readlink(file.c_str(), target.data(), target.size());
    if (size < 0) return {};  // no link
    const std::string next = target.substr(0, static_cast<std::size_t>(size));
    file = next.rfind('/', 0) == 0 ? next : *directory + next;
  }
  return std::make_error_code(std::errc::too_many_symbolic_link_levels);
}

DirectoryLock::DirectoryLock(const std::string& directory)
    : handle_(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  while (handle_ >= 0 && ::flock(static_cast<int>(handle_), LOCK_EX) != 0 && errno == EINTR) {
  }
}

DirectoryLock::~DirectoryLock() {
  if (handle_ >= 0) ::close(static_cast<int>(handle_));
}

std::error_code CheckRegular(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return Checked(-1);
  if (S_ISREG(status.st_mode)) return {};
  return std::make_error_code(std::errc::invalid_argument);
}

std::error_code CheckWritable(const std::string& path) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
  return fd < 0 ? Checked(fd) : Checked(::close(fd));
}

std::error_code CreateUnique(const std::string& prefix, std::string* path, bool for_all) {
  for (;;) {
    struct timespec now {};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    const std::string name = prefix + UniqueLetters(static_cast<std::uint64_t>(::getpid()),
                                                    static_cast<std::uint64_t>(now.tv_nsec));
    const int fd = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                          for_all ? 0666 : S_IRUSR | S_IWUSR);
    if (fd < 0 && (errno == EEXIST || errno == EINTR)) continue;
    if (fd < 0) return Checked(fd);
    *path = name;
    return Checked(::close(fd));
  }
}

std::error_code WriteFile(const std::string& path, std::string_view bytes) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
  if (fd < 0) return Checked(fd);
  std::error_code error = WriteAll(fd, bytes);
  Join(&error, Checked(::close(fd)));
  return error;
}

std::error_code PutInPlace(const std::string& copy, const std::string& target) {
  const int fd = ::open(copy.c_str(), O_WRONLY | O_CLOEXEC);
  if (fd < 0) return Checked(fd);
  std::error_code error = KeepMode(target, fd);
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

void RemoveFile(const std::string& path) { ::unlink(path.c_str()); }

}  // namespace confgrove::Platform
