// The call of the tool: its commands, and the options and arguments that they take.
#ifndef CONFGROVE_TOOLS_COMMAND_LINE_H
#define CONFGROVE_TOOLS_COMMAND_LINE_H

#include <functional>
#include <optional>
#include <string>
#include <vector>

// A large header that takes seconds to compile: few files know more of it than these names.
namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace confgrove::Tool {

// What a call has come to. It gives the exit code, or ends in a Refusal.
using Action = std::function<int()>;

// A handle on an option or an argument of a command. Goes with the CLI::App.
class Option {
 public:
  explicit Option(CLI::Option* option) : option_(option) {}

  Option& Require();
  Option& Exclude(const Option& other);
  Option& Need(const Option& other);
  Option& TakeOneOf(const std::vector<std::string>& words);

 private:
  CLI::Option* option_;  // not owned
};

// A handle on a command, or on the tool as a whole. What options and arguments are stored in must
// live until the call has been carried out.
class Command {
 public:
  // A call stores what it has come to in `*action`.
  Command(CLI::App* app, Action* action) : app_(app), action_(action) {}

  Command AddCommand(const std::string& name, const std::string& about);

  // An option, or an argument if its name has no dashes.
  Option AddText(const std::string& name, std::string* text, const std::string& about);
  Option AddText(const std::string& name, std::optional<std::string>* text,
                 const std::string& about);
  Option AddTexts(const std::string& name, std::vector<std::string>* texts,
                  const std::string& about);
  Option AddFlag(const std::string& name, bool* flag, const std::string& about);

  // The arguments FILE and PATH, which must be there.
  void AddFile(std::string* file);
  void AddFiles(std::vector<std::string>* files);
  void AddPath(std::string* path);

  void SetNotes(const std::string& notes);
  void SetAction(const Action& action);

 private:
  CLI::App* app_;   // not owned
  Action* action_;  // not owned
};

// Takes a call apart, which begins with the program's name, and carries it out. The commands are
// those that `add` adds. Gives the exit code, or ends in a Refusal.
int CarryOut(const std::vector<std::string>& call, void (*add)(Command* tool));

}  // namespace confgrove::Tool

#endif
