// Taking arguments, by CLI11.
#include "command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace confgrove::Tool {
namespace {

std::string Unprotected(const std::string& argument) {
  return argument.substr(0, argument.find('\0'));
}

}  // namespace

std::vector<std::string> Protected(const std::vector<std::string>& call) {
  std::vector<std::string> arguments(call.begin() + 1, call.end());
  for (std::string& argument : arguments) {
    const bool in_brackets = !argument.empty() && argument.front() == '[' && argument.back() == ']';
    if (in_brackets || argument == "++") argument += '\0';
  }
  std::reverse(arguments.begin(), arguments.end());
  return arguments;
}

Option& Option::Require() {
  option_->required();
  return *this;
}

Option& Option::Exclude(const Option& other) {
  option_->excludes(other.option_);
  return *this;
}

Option& Option::Need(const Option& other) {
  option_->needs(other.option_);
  return *this;
}

Option& Option::TakeOneOf(const std::vector<std::string>& words) {
  option_->check(CLI::IsMember(words));
  return *this;
}

Command Command::AddCommand(const std::string& name, const std::string& about) {
  return {app_->add_subcommand(name, about), action_};
}

Option Command::AddText(const std::string& name, std::string* text, const std::string& about) {
  return Option(app_->add_option(name, *text, about)->transform(Unprotected));
}

Option Command::AddText(const std::string& name, std::optional<std::string>* text,
                        const std::string& about) {
  return Option(app_->add_option(name, *text, about)->transform(Unprotected));
}

Option Command::AddTexts(const std::string& name, std::vector<std::string>* texts,
                         const std::string& about) {
  return Option(app_->add_option(name, *texts, about)->transform(Unprotected));
}

Option Command::AddFlag(const std::string& name, bool* flag, const std::string& about) {
  return Option(app_->add_flag(name, *flag, about));
}

void Command::AddFile(std::string* file) {
  AddText("FILE", file, "The configuration file").Require();
}

void Command::AddFiles(std::vector<std::string>* files) {
  AddTexts("FILE", files, "The configuration files").Require();
}

void Command::AddPath(std::string* path) {
  AddText("PATH", path, "Names joined by dots: limits.rate").Require();
}

void Command::SetNotes(const std::string& notes) { app_->footer(notes); }

void Command::SetAction(const Action& action) {
  app_->callback([stored = action_, action] { *stored = action; });
}

}  // namespace confgrove::Tool
