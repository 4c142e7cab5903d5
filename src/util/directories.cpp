// Directories on behalf of the host. The backslash alone divides them.
#include <confgrove/io.h>

#include <cassert>
#include <cerrno>
#include <cstring>
#include <string>

#include "base/trace.h"
#include "platform/platform.h"

namespace {

constexpr char Backslash = '\\';

bool Refuse(int error) {
  confgrove::TraceHandler(confgrove::LevelError, "error during creating directory, errno: %d\n",
                          error);
  return false;
}

}  // namespace

char* Io::Dir(char* path) {
  assert(path != nullptr);
  const std::size_t length = std::strlen(path);
  if (length > 0 && path[length - 1] == Backslash) return path;
  path[length] = Backslash;
  path[length + 1] = '\0';
  return path;
}

bool Io::CreateDirectoryRecursive(const char* path) {
  assert(path != nullptr);
  using confgrove::Platform::MakeDirectory;
  const std::string whole = path;
  for (std::size_t slash = whole.find(Backslash); slash != std::string::npos;
       slash = whole.find(Backslash, slash + 1)) {
    // What is above may exist and be closed to us, and what is below still be open.
    const int error = MakeDirectory(whole.substr(0, slash + 1));
    if (error != 0 && error != EEXIST && error != EACCES) return Refuse(error);
  }
  if (!whole.empty() && whole.back() == Backslash) return true;
  const int error = MakeDirectory(whole);
  return error == 0 || error == EEXIST || Refuse(error);
}

bool Io::DeleteDirectoryRecursive(const char* /*path*/) { return true; }
