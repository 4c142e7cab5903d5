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

int Run(int argc, char** argv) {
  try {
    return CarryOut(Platform::Arguments(argc, argv), AddCommands);
  } catch (const Refusal& refusal) {
    Complain(refusal.what());
    return refusal.code;
  }
}

// Runs the command, and sees that its answer has gone out.
int RunAndFlush(int argc, char** argv) {
  Platform::PassBytes();
  Platform::LetLargeWritesFail();
  CollectMessages();
  const int code = Run(argc, argv);
  std::cout.flush();
  if (std::cout) return code;
  Complain("standard output can't be written");
  return ExitRefused;
}

}  // namespace
}  // namespace confgrove::Tool

int main(int argc, char** argv) {
  try {
    return confgrove::Tool::RunAndFlush(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "confgrove: %s\n", error.what());
    return confgrove::Tool::ExitRefused;
  }
}
