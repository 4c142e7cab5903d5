// Replacing a file: what stays, what is asked of the system, and what a refusal of it leaves.
#include "text/replace_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <string>
#include <thread>

#include "support.h"

namespace {

using confgrove::FileReplacement;
using confgrove::Platform::FileStamp;

// What the system was asked for while Watched is true, in order; the call of that name fails.
bool Watched = false;
std::string Calls;
std::string Failing;
int FailingWith = 0;

// Notes a call; true if it is to fail.
bool Note(const std::string& name, const std::string& what = "") {
  if (!Watched) return false;
  Calls += name + what + "\n";
  if (name != Failing) return false;
  errno = FailingWith;
  return true;
}

bool IsDirectory(int fd) {
  struct stat status {};
  return fstat(fd, &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

// In the place of the C library's.
extern "C" {
int fsync(int fd) {
  const bool fails = Note(IsDirectory(fd) ? "flush directory" : "flush file");
  return fails ? -1 : static_cast<int>(syscall(SYS_fsync, fd));
}
int fchown(int fd, uid_t user, gid_t group) noexcept {
  const std::string user_text = user == uid_t(-1) ? "-" : std::to_string(user);
  const bool fails = Note("owner ", user_text + " " + std::to_string(group));
  return fails ? -1 : static_cast<int>(syscall(SYS_fchown, fd, user, group));
}
int fsetxattr(int fd, const char* name, const void* value, size_t size, int flags) noexcept {
  const bool fails = Note("attribute");
  return fails ? -1 : static_cast<int>(syscall(SYS_fsetxattr, fd, name, value, size, flags));
}
ssize_t write(int fd, const void* bytes, size_t size) {
  return Note("write") ? -1 : syscall(SYS_write, fd, bytes, size);
}
int rename(const char* from, const char* to) noexcept {
  const bool fails = Note("rename");
  return fails ? -1 : static_cast<int>(syscall(SYS_renameat, -100, from, -100, to));
}
}

namespace {

std::string Replace(const std::string& path, const std::string& bytes) {
  FileReplacement file(path);
  std::string before;
  FileStamp stamp;
  const std::string problem = file.Read(&before, &stamp);
  if (!problem.empty()) return problem;
  Calls.clear();
  Watched = true;
  const std::string result = file.Put(bytes);
  Watched = false;
  return result;
}

std::string Owner() { return std::to_string(geteuid()) + " " + std::to_string(getegid()); }

mode_t ModeOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
  return status.st_mode & 07777;
}

std::string FilesIn(const TempDir& dir) {
  std::string names;
  for (const auto& entry : std::filesystem::directory_iterator(dir.Path())) {
    names += (names.empty() ? "" : " ") + entry.path().filename().string();
  }
  return names;
}

// What the system refuses, and what comes of it.
const struct {
  const char* call;
  int error;
  const char* problem;
} Refusals[] = {
    {"attribute", ENOSPC, "can't be replaced: No space left on device"},
    {"flush file", EIO, "can't be replaced: Input/output error"},
    {"write", ENOSPC, "a copy beside it can't be written: No space left on device"},
    {"rename", EPERM, "can't be replaced: Operation not permitted"},
    // Not a reason to give up.
    {"owner ", EPERM, ""},
    {"flush directory", EIO, ""},
};

}  // namespace

TEST(ReplaceFile, AsksTheSystemInThisOrder) {
  const TempDir dir;
  dir.WriteFile("f", "old");
  ASSERT_EQ(Replace(dir.Path("f"), "new\r\n\n"), "");
  EXPECT_EQ(dir.ReadFile("f"), "new\r\n\n");
  EXPECT_EQ(Calls, "write\nowner " + Owner() + "\nflush file\nrename\nflush directory\n");
  EXPECT_EQ(FilesIn(dir), "f");
}

TEST(ReplaceFile, RefusalsLeaveTheFile) {
  const TempDir dir;
  for (const auto& c : Refusals) {
    SCOPED_TRACE(c.call);
    dir.WriteFile("f", "old");
    if (setxattr(dir.Path("f").c_str(), "user.note", "x", 1, 0) != 0 && errno == ENOTSUP) {
      GTEST_SKIP() << "the file system of " << dir.Path() << " has no extended attributes";
    }
    Failing = c.call;
    FailingWith = c.error;
    EXPECT_EQ(Replace(dir.Path("f"), "new"), c.problem);
    Failing.clear();
    EXPECT_NE(Calls.find(c.call), std::string::npos);
    EXPECT_EQ(dir.ReadFile("f"), *c.problem == '\0' ? "new" : "old");
    EXPECT_EQ(FilesIn(dir), "f");
  }
}

TEST(ReplaceFile, KeepsWhatIsNotBytes) {
  const TempDir dir;
  const std::string path = dir.Path("f");
  const std::string long_value(2000, 'x');
  // An access list: rw for the owner, r for a user, the group and by the mask, nothing for others.
  const std::string list(
      "\2\0\0\0\1\0\6\0\377\377\377\377\2\0\4\0\1\0\0\0\4\0\4\0\377\377\377\377\20\0\4\0"
      "\377\377\377\377\40\0\0\0\377\377\377\377",
      44);
  for (const mode_t mode : {0600U, 0664U, 04755U, 0200U}) {
    dir.WriteFile("f", "old");
    if (setxattr(path.c_str(), "user.note", long_value.data(), long_value.size(), 0) != 0 ||
        setxattr(path.c_str(), "system.posix_acl_access", list.data(), list.size(), 0) != 0) {
      GTEST_SKIP() << "the file system of " << dir.Path() << " has no extended attributes";
    }
    if (mode == 0200 && geteuid() != 0) continue;  // it can't be read
    ASSERT_EQ(chmod(path.c_str(), mode), 0);
    EXPECT_EQ(Replace(path, "new"), "");
    EXPECT_EQ(ModeOf(path), mode);
    std::string value(long_value.size(), '\0');
    EXPECT_EQ(getxattr(path.c_str(), "user.note", value.data(), value.size()), 2000);
    EXPECT_EQ(value, long_value);
    EXPECT_EQ(getxattr(path.c_str(), "system.posix_acl_access", nullptr, 0), 44);
  }
}

TEST(ReplaceFile, KeepsTheOwner) {
  if (geteuid() != 0) GTEST_SKIP() << "only root gives files away";
  const TempDir dir;
  dir.WriteFile("f", "old");
  ASSERT_EQ(chown(dir.Path("f").c_str(), 1234, 1235), 0);
  ASSERT_EQ(chmod(dir.Path("f").c_str(), 06664), 0);
  ASSERT_EQ(Replace(dir.Path("f"), "new"), "");
  struct stat status {};
  ASSERT_EQ(stat(dir.Path("f").c_str(), &status), 0);
  EXPECT_EQ(std::to_string(status.st_uid) + " " + std::to_string(status.st_gid), "1234 1235");
  EXPECT_EQ(ModeOf(dir.Path("f")), 06664);
  // Without the owner, what the mode grants to the group isn't granted to another.
  Failing = "owner ";
  FailingWith = EPERM;
  EXPECT_EQ(Replace(dir.Path("f"), "newer"), "");
  Failing.clear();
  EXPECT_NE(Calls.find("owner 1234 1235\nowner - 1235\n"), std::string::npos);
  EXPECT_EQ(ModeOf(dir.Path("f")), 0644);
}

TEST(ReplaceFile, LinksLeadOn) {
  const TempDir dir;
  std::filesystem::create_directory(dir.Path("d"));
  const struct {
    const char *link, *to, *file, *problem;
  } cases[] = {
      {"near", "f", "f", ""},
      {"far", "d/g", "d/g", ""},
      {"d/back", "../f", "f", ""},
      {"twice", "d/back", "f", ""},
      {"dangling", "made", "made", ""},
      {"round", "round", "f", "can't be opened: Too many levels of symbolic links"},
      {"directory", "d", "f", "isn't a regular file"},
      {"device", "/dev/null", "f", "isn't a regular file"},
      {"nowhere", "none/f", "f", "a copy beside it can't be made: No such file or directory"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.link);
    dir.WriteFile("f", "f");
    dir.WriteFile("d/g", "g");
    std::filesystem::create_symlink(c.to, dir.Path(c.link));
    EXPECT_EQ(Replace(dir.Path(c.link), c.link), c.problem);
    EXPECT_TRUE(std::filesystem::is_symlink(dir.Path(c.link)));
    EXPECT_EQ(dir.ReadFile(c.file), *c.problem == '\0' ? c.link : "f");
  }
  EXPECT_EQ(Replace(dir.Path("d\\g"), "backslash"), "");
  EXPECT_EQ(dir.ReadFile("d/g"), "backslash");
}

TEST(ReplaceFile, MakesAMissingOne) {
  const TempDir dir;
  const mode_t before = umask(027);
  EXPECT_EQ(Replace(dir.Path("f"), "new"), "");
  umask(before);
  EXPECT_EQ(dir.ReadFile("f"), "new");
  EXPECT_EQ(ModeOf(dir.Path("f")), 0640);
  const std::string long_name(255, 'n');
  EXPECT_EQ(Replace(dir.Path(long_name), "long"), "");
  EXPECT_EQ(dir.ReadFile(long_name), "long");
}

TEST(ReplaceFile, ChangedMeanwhile) {
  const TempDir dir;
  for (const bool there : {true, false}) {
    if (there) dir.WriteFile("f", "old");
    FileReplacement file(dir.Path("f"));
    std::string bytes;
    FileStamp stamp;
    ASSERT_EQ(file.Read(&bytes, &stamp), "");
    EXPECT_EQ(stamp.exists, there);
    EXPECT_EQ(bytes, there ? "old" : "");
    dir.WriteFile("f", "another");
    EXPECT_EQ(file.Put("new"), "another program has changed it meanwhile");
    EXPECT_EQ(dir.ReadFile("f"), "another");
    std::filesystem::remove(dir.Path("f"));
  }
}

TEST(ReplaceFile, OthersWait) {
  const TempDir dir;
  dir.WriteFile("f", "0");
  const auto count = [&dir] {
    for (int i = 0; i < 100; i++) {
      FileReplacement file(dir.Path("f"));
      std::string bytes;
      FileStamp stamp;
      EXPECT_EQ(file.Read(&bytes, &stamp), "");
      EXPECT_EQ(file.Put(std::to_string(std::stoi(bytes) + 1)), "");
    }
  };
  std::thread other(count);
  count();
  other.join();
  EXPECT_EQ(dir.ReadFile("f"), "200");
}

TEST(ReplaceFile, FileSizeLimitIsNoSignal) {
  const TempDir dir;
  dir.WriteFile("f", "old");
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  rlimit limit = before;
  limit.rlim_cur = 10;
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  const std::string problem = Replace(dir.Path("f"), std::string(100, 'x'));
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_EQ(problem, "a copy beside it can't be written: File too large");
  EXPECT_EQ(dir.ReadFile("f"), "old");
  EXPECT_EQ(FilesIn(dir), "f");
}
