// Standard streams, for POSIX systems.
#include "platform/console.h"

#include <unistd.h>

#include <csignal>

namespace confgrove::Platform {

std::vector<std::string> Arguments(int argc, char** argv) { return {argv, argv + argc}; }

void PassBytes() {}  // they always do

void LetLargeWritesFail() { std::signal(SIGXFSZ, SIG_IGN); }

bool StandardOutputIsTerminal() { return ::isatty(STDOUT_FILENO) == 1; }

bool StandardErrorIsTerminal() { return ::isatty(STDERR_FILENO) == 1; }

}  // namespace confgrove::Platform
