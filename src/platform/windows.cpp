// The platform layer for Windows.
#include <direct.h>
#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <ctime>
#include <utility>

#include "platform/line_ends.h"
#include "platform/platform.h"

namespace confgrove::Platform {
namespace {

constexpr std::size_t ReadStep = 64 * 1024;
constexpr std::size_t LargestTransfer = INT_MAX / 2;

// A descriptor that closes itself. No other process is kept from the file.
class Descriptor {
 public:
  Descriptor(const std::string& path, int flags) {
    if (::_sopen_s(&fd_, path.c_str(), flags, _SH_DENYNO, _S_IREAD | _S_IWRITE) != 0) fd_ = -1;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (fd_ >= 0) ::_close(fd_);
  }
  int get() const { return fd_; }
  int Release() {
    const int fd = fd_;
    fd_ = -1;
    return fd;
  }

 private:
  int fd_ = -1;
};

}  // namespace

const char separator = '\\';

bool IsSeparator(char c) { return c == '\\'; }

// Read as binary, since the system's text mode would end at a byte 0x1A.
bool ReadFile(const std::string& path, std::string* text) {
  const Descriptor file(path, _O_RDONLY | _O_BINARY | _O_NOINHERIT);
  if (file.get() < 0) return false;
  const __int64 length = ::_filelengthi64(file.get());
  std::string bytes(static_cast<std::size_t>(std::max<__int64>(length, 0)) + 1, '\0');
  std::size_t size = 0;
  for (;;) {
    const std::size_t wanted = std::min(bytes.size() - size, LargestTransfer);
    const int got = ::_read(file.get(), &bytes[size], static_cast<unsigned>(wanted));
    if (got <= 0) break;
    size += static_cast<std::size_t>(got);
    if (size == bytes.size()) bytes.resize(size + std::max(size / 2, ReadStep));
  }
  bytes.resize(size);
  JoinLineEnds(&bytes);
  *text = std::move(bytes);
  return true;
}

OutputFile::OutputFile(const std::string& path)
    : handle_(
          Descriptor(path, _O_WRONLY | _O_CREAT | _O_TRUNC | _O_TEXT | _O_NOINHERIT).Release()) {}

OutputFile::~OutputFile() {
  if (is_open()) ::_close(static_cast<int>(handle_));
}

bool OutputFile::is_open() const { return handle_ >= 0; }

void OutputFile::Write(std::string_view text) {
  while (!text.empty()) {
    const std::size_t wanted = std::min(text.size(), LargestTransfer);
    const int written =
        ::_write(static_cast<int>(handle_), text.data(), static_cast<unsigned>(wanted));
    if (written <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

bool GetFileTime(const std::string& path, std::string* text) {
  const Descriptor file(path, _O_RDONLY | _O_NOINHERIT);
  struct _stat64 status {};
  if (file.get() < 0 || ::_fstat64(file.get(), &status) != 0) return false;
  constexpr std::size_t TextSize = 26;  // what _ctime64_s asks for
  char buffer[TextSize];
  if (::_ctime64_s(buffer, TextSize, &status.st_mtime) != 0) return false;
  *text = buffer;
  text->pop_back();
  return true;
}

int MakeDirectory(const std::string& path) { return ::_mkdir(path.c_str()) == 0 ? 0 : errno; }

}  // namespace confgrove::Platform
