// The platform layer for POSIX systems.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <utility>

#include "platform/line_ends.h"
#include "platform/platform.h"

namespace confgrove::Platform {
namespace {

constexpr std::size_t ReadStep = 64 * 1024;
constexpr std::size_t LargestTransfer = 1 << 30;  // some systems refuse more at once

// Files written on Windows name others with backslashes.
std::string ForSystem(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

// A descriptor that closes itself.
class Descriptor {
 public:
  Descriptor(const std::string& path, int flags) : fd_(::open(ForSystem(path).c_str(), flags)) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  int get() const { return fd_; }

 private:
  int fd_;
};

// Reads until `size` bytes are there, the file ends or the read fails.
std::size_t ReadUpTo(int fd, char* buffer, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t got = ::read(fd, buffer + done, std::min(size - done, LargestTransfer));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

// While it lives, a write beyond the file size limit or to a closed pipe fails, as a write should,
// and doesn't end the process.
class WriteSignalsBlocked {
 public:
  WriteSignalsBlocked() {
    sigemptyset(&signals_);
    sigaddset(&signals_, SIGXFSZ);
    sigaddset(&signals_, SIGPIPE);
    sigpending(&pending_before_);
    pthread_sigmask(SIG_BLOCK, &signals_, &mask_before_);
  }
  WriteSignalsBlocked(const WriteSignalsBlocked&) = delete;
  WriteSignalsBlocked& operator=(const WriteSignalsBlocked&) = delete;
  ~WriteSignalsBlocked() {
    sigset_t pending;
    sigpending(&pending);
    for (const int signal : {SIGXFSZ, SIGPIPE}) {  // take back what the writes have raised
      if (sigismember(&pending, signal) == 0 || sigismember(&pending_before_, signal) != 0)
        continue;
      sigset_t one;
      sigemptyset(&one);
      sigaddset(&one, signal);
      int taken = 0;
      sigwait(&one, &taken);
    }
    pthread_sigmask(SIG_SETMASK, &mask_before_, nullptr);
  }

 private:
  sigset_t signals_{};
  sigset_t pending_before_{};
  sigset_t mask_before_{};
};

}  // namespace

const char separator = '/';

bool IsSeparator(char c) { return c == '/' || c == '\\'; }

bool ReadFile(const std::string& path, std::string* text) {
  const Descriptor file(path, O_RDONLY | O_CLOEXEC);
  struct stat status {};
  if (file.get() < 0 || ::fstat(file.get(), &status) != 0 || S_ISDIR(status.st_mode)) return false;
  // One byte more than the file should have shows its end at the first attempt.
  std::string bytes(static_cast<std::size_t>(std::max<off_t>(status.st_size, 0)) + 1, '\0');
  std::size_t size = 0;
  for (;;) {
    size += ReadUpTo(file.get(), &bytes[size], bytes.size() - size);
    if (size < bytes.size()) break;
    bytes.resize(bytes.size() + std::max(bytes.size() / 2, ReadStep));
  }
  bytes.resize(size);
  JoinLineEnds(&bytes);
  *text = std::move(bytes);
  return true;
}

OutputFile::OutputFile(const std::string& path)
    : handle_(::open(ForSystem(path).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666)) {}

OutputFile::~OutputFile() {
  if (is_open()) ::close(static_cast<int>(handle_));
}

bool OutputFile::is_open() const { return handle_ >= 0; }

void OutputFile::Write(std::string_view text) {
  const WriteSignalsBlocked blocked;
  while (!text.empty()) {
    const ssize_t written =
        ::write(static_cast<int>(handle_), text.data(), std::min(text.size(), LargestTransfer));
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

bool GetFileTime(const std::string& path, std::string* text) {
  const Descriptor file(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);  // no waiting at a pipe
  struct stat status {};
  if (file.get() < 0 || ::fstat(file.get(), &status) != 0 || S_ISDIR(status.st_mode)) return false;
  constexpr std::size_t TextSize = 26;  // what ctime_r asks for
  char buffer[TextSize];
  ::tzset();  // which ctime_r may leave out
  if (::ctime_r(&status.st_mtime, buffer) == nullptr) return false;
  *text = buffer;
  text->pop_back();
  return true;
}

int MakeDirectory(const std::string& path) {
  return ::mkdir(ForSystem(path).c_str(), 0777) == 0 ? 0 : errno;
}

}  // namespace confgrove::Platform
