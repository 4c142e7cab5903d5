// The platform layer for POSIX systems.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <utility>

#include "platform/platform.h"
#include "platform/posix_path.h"
#include "platform/write_signals.h"

namespace confgrove::Platform {
namespace {

constexpr std::size_t ReadStep = 64 * 1024;
constexpr std::size_t LargestTransfer = 1 << 30;  // some systems refuse more at once

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
  int Release() { return std::exchange(fd_, -1); }

 private:
  int fd_;
};

// Reads until `size` bytes are there, the file ends or the read fails, which `error` tells.
std::size_t ReadUpTo(int fd, char* buffer, std::size_t size, int* error) {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t got = ::read(fd, buffer + done, std::min(size - done, LargestTransfer));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) *error = errno;
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

// The bytes of an open file up to its end or to the `error` that ends it.
std::string ReadAll(int fd, off_t size_foretold, int* error) {
  // One byte more than the file should have shows its end at the first attempt.
  std::string bytes(static_cast<std::size_t>(std::max<off_t>(size_foretold, 0)) + 1, '\0');
  std::size_t size = 0;
  for (;;) {
    size += ReadUpTo(fd, &bytes[size], bytes.size() - size, error);
    if (size < bytes.size()) break;
    bytes.resize(bytes.size() + std::max(bytes.size() / 2, ReadStep));
  }
  bytes.resize(size);
  return bytes;
}

// 0, or why a file can't be read. An open file gives `*status`.
int CheckReadable(const Descriptor& file, struct stat* status) {
  if (file.get() < 0 || ::fstat(file.get(), status) != 0) return errno;
  return S_ISDIR(status->st_mode) ? EISDIR : 0;
}

FileStamp StampOf(const struct stat& status) {
  constexpr std::int64_t NanosecondsPerSecond = 1'000'000'000;
#ifdef __APPLE__
  const timespec& modified = status.st_mtimespec;
#else
  const timespec& modified = status.st_mtim;
#endif
  FileStamp stamp;
  stamp.exists = true;
  stamp.size = static_cast<std::uint64_t>(status.st_size);
  stamp.modified = std::int64_t{modified.tv_sec} * NanosecondsPerSecond + modified.tv_nsec;
  stamp.device = static_cast<std::uint64_t>(status.st_dev);
  stamp.inode = static_cast<std::uint64_t>(status.st_ino);
  return stamp;
}

}  // namespace

const char separator = '/';

const std::string_view line_end = "\n";

bool IsSeparator(char c) { return c == '/' || c == '\\'; }

FileStamp GetStamp(const std::string& path) {
  struct stat status {};
  return ::stat(ForSystem(path).c_str(), &status) == 0 ? StampOf(status) : FileStamp();
}

InputFile::InputFile(const std::string& path) {
  Descriptor file(path, O_RDONLY | O_CLOEXEC);
  struct stat status {};
  if (CheckReadable(file, &status) != 0) return;
  stamp_ = StampOf(status);
  handle_ = file.Release();
}

InputFile::~InputFile() {
  if (is_open()) ::close(static_cast<int>(handle_));
}

bool InputFile::is_open() const { return handle_ >= 0; }

std::size_t InputFile::Read(char* to, std::size_t size) {
  int error = 0;
  return ReadUpTo(static_cast<int>(handle_), to, size, &error);
}

bool ReadBytes(const std::string& path, std::string* bytes, FileStamp* stamp,
               std::error_code* error) {
  const Descriptor file(path, O_RDONLY | O_CLOEXEC);
  struct stat status {};
  std::string all;
  int code = CheckReadable(file, &status);
  if (code == 0) all = ReadAll(file.get(), status.st_size, &code);
  if (error != nullptr) error->assign(code, std::generic_category());
  if (code != 0) return false;
  *bytes = std::move(all);
  if (stamp != nullptr) *stamp = StampOf(status);
  return true;
}

// A large page stands at a multiple of its size, so what is asked for is one larger, and what is in
// front of that place and behind the end goes back.
void* TakePages(std::size_t size) {
  void* const mapped =
      ::mmap(nullptr, size + LargePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapped == MAP_FAILED) return nullptr;
  char* const begin = static_cast<char*>(mapped);
  const std::size_t surplus = reinterpret_cast<std::uintptr_t>(begin) % LargePage;
  char* const pages = surplus > 0 ? begin + (LargePage - surplus) : begin;
  if (surplus > 0) ::munmap(begin, LargePage - surplus);
  ::munmap(pages + size, surplus > 0 ? surplus : LargePage);
#ifdef MADV_HUGEPAGE
  ::madvise(pages, size, MADV_HUGEPAGE);  // a system without them gives small ones
#endif
  return pages;
}

void GivePagesBack(void* pages, std::size_t size) { ::munmap(pages, size); }

// In place of std::random_device, which asks the processor what it is: on a virtual machine that
// takes longer than reading a small file.
bool DrawNumber(std::uint64_t* number) { return ::getentropy(number, sizeof *number) == 0; }

OutputFile::OutputFile(const std::string& path)
    : handle_(::open(ForSystem(path).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666)) {}

OutputFile::~OutputFile() {
  if (is_open()) ::close(static_cast<int>(handle_));
}

bool OutputFile::is_open() const { return handle_ >= 0; }

void OutputFile::Write(std::string_view text) {
  const WriteSignalsBlocked blocked;
  while (!text.empty() && !failed_) {
    const ssize_t written =
        ::write(static_cast<int>(handle_), text.data(), std::min(text.size(), LargestTransfer));
    if (written < 0 && errno == EINTR) continue;
    failed_ = written <= 0;
    if (!failed_) text.remove_prefix(static_cast<std::size_t>(written));
  }
}

bool GetFileTime(const std::string& path, std::string* text) {
  const Descriptor file(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);  // no waiting at a pipe
  struct stat status {};
  if (CheckReadable(file, &status) != 0) return false;
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
