// Manual pages and completion scripts, made from the same description of the commands as --help.
#ifndef CONFGROVE_TOOLS_DESCRIBE_H
#define CONFGROVE_TOOLS_DESCRIBE_H

#include <ostream>
#include <string>
#include <vector>

namespace confgrove::Tool {

// An option, or an argument that is told by its place.
struct OptionText {
  std::vector<std::string> short_names;  // without dashes; none of an argument
  std::vector<std::string> long_names;
  std::string name;                // of an argument; "" of an option
  std::string type;                // of the value: "TEXT"
  std::vector<std::string> words;  // that the value is one of; none if it is free
  std::string about;
  bool takes_value = false;
  bool repeats = false;
  bool is_required = false;
  bool is_help = false;
};

struct CommandText {
  std::string name;
  std::string about;
  std::string notes;  // what stands below the help of this one
  std::vector<OptionText> options;
  std::vector<OptionText> arguments;
};

// The tool as a whole, whose notes tell the exit codes. Without what the help hides.
struct ToolText : CommandText {
  std::vector<CommandText> commands;
};

// Writes the pages man1/NAME.1 and the scripts bash, zsh and fish into a directory that exists, or
// ends in a Refusal.
void Describe(const ToolText& tool, const std::string& directory);

// What a shell is to read, so that it completes commands, options, their words, files and, with the
// help of the tool itself, paths within a file.
void WriteBash(std::ostream& out, const ToolText& tool);
void WriteZsh(std::ostream& out, const ToolText& tool);
void WriteFish(std::ostream& out, const ToolText& tool);

// With its dashes: "-h", "--help".
std::vector<std::string> NamesOf(const OptionText& option);

std::string Joined(const std::vector<std::string>& texts, const char* between);

}  // namespace confgrove::Tool

#endif
