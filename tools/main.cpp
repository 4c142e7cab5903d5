// The `confgrove` command: takes the call apart and runs what it has come to.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <iostream>

#include "commands.h"
#include "describe.h"
#include "messages.h"
#include "platform/console.h"
#include "refusal.h"

namespace confgrove::Tool {
namespace {

int Run(int argc, char** argv) {
  CLI::App app("Reads, checks and changes configuration files without losing a setting.",
               "confgrove");
  app.set_version_flag("--version", "confgrove " CONFGROVE_VERSION);
  app.require_subcommand(1);
  app.allow_windows_style_options(false);  // a path may begin with a slash
  app.footer("Exit code: 0 done, 1 not found, faulty or refused, 2 a wrong call.");
  Action action;
  Command tool(&app, &action);
  AddCommands(&tool);
  AddDescribe(&app);
  try {
    app.parse(Protected(Platform::Arguments(argc, argv)));
    return action();
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? ExitDone : ExitWrongCall;
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
