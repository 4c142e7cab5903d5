// Manual pages and completion scripts, made from the same description of the commands as --help.
#ifndef CONFGROVE_TOOLS_DESCRIBE_H
#define CONFGROVE_TOOLS_DESCRIBE_H

#include <CLI/CLI.hpp>
#include <ostream>
#include <string>
#include <vector>

namespace confgrove::Tool {

// Adds an option that the help doesn't show: --describe DIRECTORY writes into that directory, which
// exists, the pages man1/NAME.1 and the scripts bash, zsh and fish. It throws CLI::Success then, or
// a Refusal. The footer of `app` tells the exit codes. Call it when all commands have been added.
void AddDescribe(CLI::App* app);

// The manual page of `app`, or of `command`, one of its commands.
void WriteManual(std::ostream& out, const CLI::App& app);
void WriteManual(std::ostream& out, const CLI::App& app, const CLI::App& command);

// What a shell is to read, so that it completes commands, options, their words, files and, with the
// help of the tool itself, paths within a file.
void WriteBash(std::ostream& out, const CLI::App& app);
void WriteZsh(std::ostream& out, const CLI::App& app);
void WriteFish(std::ostream& out, const CLI::App& app);

// The parts of a description, without what the help hides.
std::vector<const CLI::App*> CommandsOf(const CLI::App& app);
std::vector<const CLI::Option*> OptionsOf(const CLI::App& command);
std::vector<const CLI::Option*> PositionalsOf(const CLI::App& command);
bool TakesValue(const CLI::Option& option);
bool Repeats(const CLI::Option& option);
// With its dashes: "-h", "--help".
std::vector<std::string> NamesOf(const CLI::Option& option);
// The words that an option or positional is one of, as its type {a,b} says; none if it is free.
std::vector<std::string> WordsOf(const CLI::Option& option);

}  // namespace confgrove::Tool

#endif
