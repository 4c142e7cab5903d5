// What the commands share in taking their arguments.
#ifndef CONFGROVE_TOOLS_COMMAND_LINE_H
#define CONFGROVE_TOOLS_COMMAND_LINE_H

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

namespace confgrove::Tool {

// What a call has come to. It gives the exit code, or ends in a Refusal.
using Action = std::function<int()>;

// CLI11 splits an argument in brackets and takes "++" for its own. A byte that no argument can hold
// keeps it from both; the Add... functions below take it off again. `call` begins with the
// program's name. In the order that CLI11 takes.
std::vector<std::string> Protected(const std::vector<std::string>& call);
std::string Unprotected(const std::string& argument);

// An option, or an argument if its name has no dashes.
template <typename Value>
CLI::Option* AddText(CLI::App* command, const std::string& name, Value* value,
                     const std::string& help) {
  return command->add_option(name, *value, help)->transform(Unprotected);
}

// The arguments FILE and PATH, which must be there.
void AddFile(CLI::App* command, std::string* file);
void AddFiles(CLI::App* command, std::vector<std::string>* files);
void AddPath(CLI::App* command, std::string* path);

}  // namespace confgrove::Tool

#endif
