// The platform layer for Windows.
#define _CRT_RAND_S  // for rand_s, in front of all headers
#include <direct.h>
#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <ctime>
#include <utility>

#include "platform/platform.h"
#include "platform/windows_api.h"

namespace confgrove::Platform {
namespace {

constexpr std::size_t ReadStep = 64 * 1024;
constexpr std::size_t LargestTransfer = INT_MAX / 2;

// The system counts time in ticks from 1601 on.
constexpr std::int64_t NanosecondsPerTick = 100;
constexpr std::int64_t NanosecondsPerSecond = 1'000'000'000;
constexpr std::int64_t TicksBefore1970 = 116'444'736'000'000'000;

std::uint64_t Join(DWORD high, DWORD low) { return (std::uint64_t{high} << 32) | low; }

// False if it isn't a file.
bool GetStamp(const Handle& file, FileStamp* stamp) {
  BY_HANDLE_FILE_INFORMATION information{};
  if (::GetFileInformationByHandle(file.get(), &information) == 0) return false;
  stamp->exists = true;
  stamp->size = Join(information.nFileSizeHigh, information.nFileSizeLow);
  const FILETIME& modified = information.ftLastWriteTime;
  stamp->modified =
      NanosecondsPerTick *
      (static_cast<std::int64_t>(Join(modified.dwHighDateTime, modified.dwLowDateTime)) -
       TicksBefore1970);
  stamp->device = information.dwVolumeSerialNumber;
  stamp->inode = Join(information.nFileIndexHigh, information.nFileIndexLow);
  return true;
}

// An open file's size, as far as it can be told, and its stamp. Why it can't be read.
std::error_code Inspect(const Handle& file, FileStamp* stamp) {
  if (!file.is_open()) return LastError();
  if (IsDevice(file.get())) return std::make_error_code(std::errc::no_such_device);
  if (!GetStamp(file, stamp)) *stamp = {};  // a pipe
  return {};
}

// Reads until `size` bytes are there, the file ends or the read fails, which `error` tells. Binary,
// since the system's text mode would end at a byte 0x1A.
std::size_t ReadUpTo(HANDLE file, char* buffer, std::size_t size, std::error_code* error) {
  std::size_t done = 0;
  while (done < size) {
    DWORD got = 0;
    const auto wanted = static_cast<DWORD>(std::min(size - done, LargestTransfer));
    if (::ReadFile(file, buffer + done, wanted, &got, nullptr) == 0) {
      if (::GetLastError() != ERROR_BROKEN_PIPE) *error = LastError();
      break;
    }
    if (got == 0) break;
    done += got;
  }
  return done;
}

// The bytes of an open file up to its end or to the `error` that ends it.
std::string ReadAll(const Handle& file, std::uint64_t size_foretold, std::error_code* error) {
  // One byte more than the file should have shows its end at the first attempt.
  std::string bytes(static_cast<std::size_t>(size_foretold) + 1, '\0');
  std::size_t size = 0;
  for (;;) {
    size += ReadUpTo(file.get(), &bytes[size], bytes.size() - size, error);
    if (size < bytes.size()) break;
    bytes.resize(bytes.size() + std::max(bytes.size() / 2, ReadStep));
  }
  bytes.resize(size);
  return bytes;
}

}  // namespace

const char separator = '\\';

const std::string_view line_end = "\r\n";

bool IsSeparator(char c) { return c == '\\'; }

FileStamp GetStamp(const std::string& path) {
  const Handle file(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
  FileStamp stamp;
  return Inspect(file, &stamp) ? FileStamp() : stamp;
}

InputFile::InputFile(const std::string& path) {
  Handle file(path, GENERIC_READ);
  if (!Inspect(file, &stamp_)) handle_ = reinterpret_cast<std::intptr_t>(file.Release());
}

InputFile::~InputFile() {
  if (is_open()) ::CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

bool InputFile::is_open() const { return handle_ != -1; }

std::size_t InputFile::Read(char* to, std::size_t size) {
  std::error_code error;
  return ReadUpTo(reinterpret_cast<HANDLE>(handle_), to, size, &error);
}

bool ReadBytes(const std::string& path, std::string* bytes, FileStamp* stamp,
               std::error_code* error) {
  const Handle file(path, GENERIC_READ);
  FileStamp found;
  std::string all;
  std::error_code failure = Inspect(file, &found);
  if (!failure) all = ReadAll(file, found.size, &failure);
  if (error != nullptr) *error = failure;
  if (failure) return false;
  *bytes = std::move(all);
  if (stamp != nullptr) *stamp = found;
  return true;
}

// Its large pages are for privileged programs alone.
void* TakePages(std::size_t size) {
  return ::VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void GivePagesBack(void* pages, std::size_t /*size*/) { ::VirtualFree(pages, 0, MEM_RELEASE); }

bool DrawNumber(std::uint64_t* number) {
  unsigned int halves[2];
  if (::rand_s(&halves[0]) != 0 || ::rand_s(&halves[1]) != 0) return false;
  *number = std::uint64_t{halves[0]} << 32 | halves[1];
  return true;
}

OutputFile::OutputFile(const std::string& path) : handle_(-1) {
  int fd = -1;
  if (::_wsopen_s(&fd, WideName(path).c_str(),
                  _O_WRONLY | _O_CREAT | _O_TRUNC | _O_TEXT | _O_NOINHERIT, _SH_DENYNO,
                  _S_IREAD | _S_IWRITE) != 0) {
    return;
  }
  if (IsDevice(reinterpret_cast<HANDLE>(::_get_osfhandle(fd)))) {
    ::_close(fd);
  } else {
    handle_ = fd;
  }
}

OutputFile::~OutputFile() {
  if (is_open()) ::_close(static_cast<int>(handle_));
}

bool OutputFile::is_open() const { return handle_ >= 0; }

void OutputFile::Write(std::string_view text) {
  while (!text.empty() && !failed_) {
    const std::size_t wanted = std::min(text.size(), LargestTransfer);
    const int written =
        ::_write(static_cast<int>(handle_), text.data(), static_cast<unsigned>(wanted));
    failed_ = written <= 0;
    if (!failed_) text.remove_prefix(static_cast<std::size_t>(written));
  }
}

bool GetFileTime(const std::string& path, std::string* text) {
  const Handle file(path, GENERIC_READ);
  FileStamp stamp;
  if (Inspect(file, &stamp) || !stamp.exists) return false;
  const __time64_t time = stamp.modified / NanosecondsPerSecond;
  constexpr std::size_t TextSize = 26;  // what _ctime64_s asks for
  char buffer[TextSize];
  if (::_ctime64_s(buffer, TextSize, &time) != 0) return false;
  *text = buffer;
  text->pop_back();
  return true;
}

int MakeDirectory(const std::string& path) {
  return ::_wmkdir(WideName(path).c_str()) == 0 ? 0 : errno;
}

}  // namespace confgrove::Platform
