// Taking arguments, by CLI11.
#include "command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "describe.h"
#include "refusal.h"

namespace confgrove::Tool {
namespace {

// CLI11 splits an argument in brackets and takes "++" for its own. A byte that no argument can hold
// keeps it from both; options take it off again. In the order that CLI11 takes.
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

}  // namespace

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

int CarryOut(const std::vector<std::string>& call, void (*add)(Command* tool)) {
  CLI::App app("Reads, checks and changes configuration files without losing a setting.",
               "confgrove");
  app.set_version_flag("--version", "confgrove " CONFGROVE_VERSION);
  app.require_subcommand(1);
  app.allow_windows_style_options(false);  // a path may begin with a slash
  app.footer("Exit code: 0 done, 1 not found, faulty or refused, 2 a wrong call.");
  Action action;
  Command tool(&app, &action);
  add(&tool);
  AddDescribe(&app);
  try {
    app.parse(Protected(call));
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? ExitDone : ExitWrongCall;
  }
  return action();
}

}  // namespace confgrove::Tool
