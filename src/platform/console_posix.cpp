// Standard streams, for POSIX systems.
#include "platform/console.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>

namespace confgrove::Platform {

void PassBytes() {}  // they always do

void LetLargeWritesFail() { std::signal(SIGXFSZ, SIG_IGN); }

std::error_code MakeOwnFile(const std::string& prefix, const std::string& suffix,
                            std::string* path) {
  std::string name = prefix + "XXXXXX" + suffix;
  const int fd = ::mkstemps(name.data(), static_cast<int>(suffix.size()));
  if (fd < 0) return {errno, std::generic_category()};
  ::close(fd);
  *path = name;
  return {};
}

bool StandardOutputIsTerminal() { return ::isatty(STDOUT_FILENO) == 1; }

bool StandardErrorIsTerminal() { return ::isatty(STDERR_FILENO) == 1; }

}  // namespace confgrove::Platform

int main(int argc, char** argv) {
  return confgrove::Tool::Main([=] { return std::vector<std::string>(argv, argv + argc); });
}
