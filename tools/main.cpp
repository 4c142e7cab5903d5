// The `confgrove` command: carries out a call, and sees that its answer arrives.
#include <cstdio>
#include <exception>
#include <iostream>

#include "commands.h"
#include "messages.h"
#include "platform/console.h"
#include "refusal.h"

namespace confgrove::Tool {
namespace {

using Arguments = std::function<std::vector<std::string>()>;

int Run(const Arguments& arguments) {
  try {
    return CarryOut(arguments(), AddCommands);
  } catch (const Refusal& refusal) {
    Complain(refusal.what());
    return refusal.code;
  }
}

// Runs the command, and sees that its answer has gone out.
int RunAndFlush(const Arguments& arguments) {
  Platform::PassBytes();
  Platform::LetLargeWritesFail();
  CollectMessages();
  const int code = Run(arguments);
  std::cout.flush();
  if (std::cout) return code;
  Complain("standard output can't be written");
  return ExitRefused;
}

}  // namespace

int Main(const Arguments& arguments) {
  try {
    return RunAndFlush(arguments);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "confgrove: %s\n", error.what());
    return ExitRefused;
  }
}

}  // namespace confgrove::Tool
