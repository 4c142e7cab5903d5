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

OptionText TextOf(const CLI::Option& option) {
  OptionText text;
  text.short_names = option.get_snames();
  text.long_names = option.get_lnames();
  if (option.get_positional()) text.name = option.get_name(true);
  text.type = option.get_type_name();
  const std::size_t begin = text.type.find('{');  // "TEXT:{a,b}"
  const std::size_t end = text.type.find('}');
  if (begin < end && end != std::string::npos) {
    text.words = CLI::detail::split(text.type.substr(begin + 1, end - begin - 1), ',');
  }
  text.about = option.get_description();
  text.takes_value = option.get_items_expected_max() > 0;
  text.repeats = option.get_items_expected_max() > 1;
  text.is_required = option.get_required();
  return text;
}

CommandText TextOf(const CLI::App& command) {
  CommandText text{command.get_name(), command.get_description(), command.get_footer(), {}, {}};
  for (const CLI::Option* option : command.get_options()) {
    if (option->get_group().empty()) continue;
    auto& options = option->get_positional() ? text.arguments : text.options;
    options.push_back(TextOf(*option));
    options.back().is_help = option == command.get_help_ptr();
  }
  return text;
}

// Adds an option that the help doesn't show.
void AddDescribe(CLI::App* app) {
  const auto describe = [app](const std::string& directory) {
    ToolText tool{TextOf(*app), {}};
    for (const CLI::App* command :
         app->get_subcommands([](const CLI::App* one) { return !one->get_group().empty(); })) {
      tool.commands.push_back(TextOf(*command));
      // A command that has no notes gets those of the tool.
      if (tool.commands.back().notes == tool.notes) tool.commands.back().notes.clear();
    }
    Describe(tool, directory);
    throw CLI::Success();
  };
  app->add_option_function<std::string>("--describe", describe)->group("");
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
