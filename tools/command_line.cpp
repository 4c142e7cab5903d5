// Taking arguments.
#include "command_line.h"

#include <algorithm>

namespace confgrove::Tool {

std::vector<std::string> Protected(const std::vector<std::string>& call) {
  std::vector<std::string> arguments(call.begin() + 1, call.end());
  for (std::string& argument : arguments) {
    const bool in_brackets = !argument.empty() && argument.front() == '[' && argument.back() == ']';
    if (in_brackets || argument == "++") argument += '\0';
  }
  std::reverse(arguments.begin(), arguments.end());
  return arguments;
}

std::string Unprotected(const std::string& argument) {
  return argument.substr(0, argument.find('\0'));
}

void AddFile(CLI::App* command, std::string* file) {
  AddText(command, "FILE", file, "The configuration file")->required();
}

void AddFiles(CLI::App* command, std::vector<std::string>* files) {
  AddText(command, "FILE", files, "The configuration files")->required();
}

void AddPath(CLI::App* command, std::string* path) {
  AddText(command, "PATH", path, "Names joined by dots: limits.rate")->required();
}

}  // namespace confgrove::Tool
