// What is asked of the system, and what becomes of answers that no healthy one gives.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <vector>

#include "support.h"

namespace {

// Never destroyed: others call what stands below to the very end of the process.
auto& WriteErrors = *new std::vector<int>;  // of the next writes; 0 lets one through
auto& OpenFlags = *new std::vector<int>;
int MakeErrors = 0;  // so many directories can't be made

int TakeWriteError() {
  if (WriteErrors.empty()) return 0;
  const int error = WriteErrors.front();
  WriteErrors.erase(WriteErrors.begin());
  return error;
}

int Open(const char* path, int flags, va_list arguments) {
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
  OpenFlags.push_back(flags);
  return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

}  // namespace

// In the place of the C library's.
extern "C" {
ssize_t write(int fd, const void* bytes, size_t size) {
  const int error = TakeWriteError();
  if (error == 0) return syscall(SYS_write, fd, bytes, size);
  errno = error;
  return -1;
}
int open(const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const int fd = Open(path, flags, arguments);
  va_end(arguments);
  return fd;
}
int open64(const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const int fd = Open(path, flags, arguments);
  va_end(arguments);
  return fd;
}
int mkdir(const char* path, mode_t mode) noexcept {
  if (MakeErrors > 0) {
    --MakeErrors;
    errno = EACCES;
    return -1;
  }
  return static_cast<int>(syscall(SYS_mkdirat, AT_FDCWD, path, mode));
}
}

// A file that is written in pieces of 64 KiB at most holds the whole text or its beginning.
TEST(SystemCalls, WritesThatFail) {
  const struct {
    std::vector<int> errors;
    std::size_t pieces;  // written before one fails
  } cases[] = {
      {{}, 0},
      {{EINTR, 0, EINTR, EINTR}, 0},
      {{ENOSPC}, 0},
      {{0, 0, ENOSPC}, 2},
      {{0, EINTR, EIO}, 1},
  };
  const TempDir dir;
  const ConfigPtr config = Open("t", ConfCreateNew);
  for (int i = 0; i < 50000; i++) {
    EXPECT_TRUE(config->SetInt(i, ("n" + std::to_string(i)).c_str()));
  }
  const std::string whole = Saved(config.get());
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.errors));
    WriteErrors = c.errors;
    EXPECT_TRUE(config->Save());
    const std::string written = dir.ReadFile("t.cfg");
    const bool fails = !c.errors.empty() && c.errors.back() != EINTR;
    EXPECT_TRUE(written == whole.substr(0, written.size()));
    EXPECT_EQ(fails, written.size() < whole.size());
    EXPECT_TRUE(!fails || (written.size() + 1000) >> 16 == c.pieces) << written.size();
  }
  WriteErrors.clear();
}

// No file stays open in a process that the host starts, and none is waited for.
TEST(SystemCalls, FlagsOfOpen) {
  const TempDir dir;
  const ConfigPtr config = ParseText("t", "a = 1\n");
  ASSERT_EQ(mkfifo(dir.Path("pipe.cfg").c_str(), 0600), 0);
  OpenFlags.clear();
  EXPECT_TRUE(Open("t") != nullptr && config->Save() && config->SetName("pipe", ""));
  EXPECT_NE(config->GetFileTime(), nullptr);  // nobody writes to the pipe
  ASSERT_EQ(OpenFlags.size(), 3U);
  for (const int flags : OpenFlags) EXPECT_NE(flags & O_CLOEXEC, 0) << flags;
}

// What is above may exist and be closed to us, which the system tells before it tells that it is
// there.
TEST(SystemCalls, DirectoriesThatCannotBeMade) {
  const TempDir dir;
  const std::string path = dir.Path("n\\m");
  std::filesystem::create_directory(dir.Path("n"));
  MakeErrors = 1;
  EXPECT_TRUE(Io::CreateDirectoryRecursive(path.c_str()));
  EXPECT_TRUE(std::filesystem::is_directory(dir.Path("n/m")));
  TraceLog log;
  MakeErrors = 2;
  EXPECT_FALSE(Io::CreateDirectoryRecursive(path.c_str()));
  EXPECT_EQ(log.Text(), "1 error during creating directory, errno: 13\n\n");
  MakeErrors = 0;
}
