// imports: prints the tree of imported files.
#include <confgrove/inspect.h>

#include <iostream>
#include <memory>

#include "commands.h"
#include "open_file.h"
#include "refusal.h"
#include "standard_input.h"

namespace confgrove::Tool {
namespace {

void PrintTree(Config* config, const std::string& file, std::size_t depth) {
  const char* const time = file == StandardInput ? nullptr : config->GetFileTime();
  std::cout << std::string(2 * depth, ' ') << file << "  " << (time == nullptr ? "-" : time)
            << '\n';
  for (Config* const import : Imports(config)) {  // as look-ups go through them
    PrintTree(import, FileName::ForSystem(OwnFile(import)), depth + 1);
  }
}

int ShowImports(const std::string& file) {
  PrintTree(LoadInput(file).get(), file, 0);
  return ExitDone;
}

}  // namespace

void AddImports(Command* tool) {
  const auto file = std::make_shared<std::string>();
  Command imports = tool->AddCommand("imports", "Print the tree of imported files");
  imports.AddFile(file.get());
  imports.SetAction([file] { return ShowImports(*file); });
}

}  // namespace confgrove::Tool
