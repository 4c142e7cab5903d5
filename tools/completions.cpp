// Completion scripts. Each holds the commands, options and positionals as a table, and a few lines
// of the shell's own that look into it.
#include <algorithm>

#include "describe.h"

namespace confgrove::Tool {
namespace {

std::string Replaced(std::string text, const std::string& what, const std::string& with) {
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size()) {
    text.replace(at, what.size(), with);
  }
  return text;
}

// Between single quotes, for sh and zsh.
std::string Quoted(const std::string& text) { return "'" + Replaced(text, "'", "'\\''") + "'"; }

std::string QuotedForFish(const std::string& text) {
  return "'" + Replaced(Replaced(text, "\\", "\\\\"), "'", "\\'") + "'";
}

// For the descriptions in an argument of _arguments.
std::string ZshText(std::string text) {
  for (const char* special : {"\\", "[", "]", ":"}) {
    text = Replaced(text, special, std::string("\\") + special);
  }
  return text;
}

std::vector<std::string> CommandNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* command : CommandsOf(app)) names.push_back(command->get_name());
  return names;
}

std::vector<std::string> OptionNames(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::Option* option : OptionsOf(command)) {
    for (const std::string& name : NamesOf(*option)) names.push_back(name);
  }
  return names;
}

// The names of all options of a command that take a value, as patterns of sh: "set:--comment".
std::vector<std::string> ValuePatterns(const CLI::App& app) {
  std::vector<std::string> patterns;
  for (const CLI::App* command : CommandsOf(app)) {
    for (const CLI::Option* option : OptionsOf(*command)) {
      if (!TakesValue(*option)) continue;
      for (const std::string& name : NamesOf(*option)) {
        patterns.push_back(command->get_name() + ":" + name);
      }
    }
  }
  return patterns;
}

enum class Offer { Files, Paths, Words, Nothing };

// What to offer in the place of a positional or of the value of an option.
Offer OfferFor(const CLI::Option& option) {
  if (!WordsOf(option).empty()) return Offer::Words;
  const std::string name = option.nonpositional() ? option.get_type_name() : option.get_name(true);
  if (name == "PATH") return Offer::Paths;
  if (name.find("FILE") != std::string::npos || name.find("DIR") != std::string::npos) {
    return Offer::Files;
  }
  return Offer::Nothing;
}

// The lines of a bash `case` that fill in what is offered.
void WriteBashOffer(std::ostream& out, const std::string& pattern, const CLI::Option& option) {
  const std::string words = CLI::detail::join(WordsOf(option), " ");
  switch (OfferFor(option)) {
    case Offer::Files: out << "    " << pattern << ") compopt -o default ;;\n"; break;
    case Offer::Paths:
      out << "    " << pattern << ") words=$(_confgrove_paths \"$file\") ;;\n";
      break;
    case Offer::Words: out << "    " << pattern << ") words=" << Quoted(words) << " ;;\n"; break;
    case Offer::Nothing: break;
  }
}

void WriteBashCommand(std::ostream& out, const CLI::App& command) {
  const std::string& name = command.get_name();
  for (const CLI::Option* option : OptionsOf(command)) {
    if (!TakesValue(*option)) continue;
    for (const std::string& option_name : NamesOf(*option)) {
      std::string pattern = name;
      pattern.append(":").append(option_name).append(":*");
      WriteBashOffer(out, pattern, *option);
    }
  }
  out << "    " << name << "::*:-*) words=" << Quoted(CLI::detail::join(OptionNames(command), " "))
      << " ;;\n";
  int place = 0;
  for (const CLI::Option* positional : PositionalsOf(command)) {
    WriteBashOffer(out, name + "::" + (Repeats(*positional) ? "*" : std::to_string(++place) + ":*"),
                   *positional);
  }
}

// One argument of _arguments, for an option or a positional.
std::string ZshAction(const CLI::Option& option) {
  switch (OfferFor(option)) {
    case Offer::Files: return "_files";
    case Offer::Paths: return "_confgrove_paths";
    case Offer::Words: return "(" + CLI::detail::join(WordsOf(option), " ") + ")";
    case Offer::Nothing: break;
  }
  return " ";
}

void WriteZshCommand(std::ostream& out, const CLI::App& command) {
  out << "        " << command.get_name() << ")\n          _arguments";
  for (const CLI::Option* option : OptionsOf(command)) {
    for (const std::string& name : NamesOf(*option)) {
      std::string argument = name + "[" + ZshText(option->get_description()) + "]";
      if (TakesValue(*option)) argument += ":value:" + ZshAction(*option);
      out << " \\\n            " << Quoted(argument);
    }
  }
  int place = 0;
  for (const CLI::Option* positional : PositionalsOf(command)) {
    const std::string which = Repeats(*positional) ? "*" : std::to_string(++place);
    out << " \\\n            "
        << Quoted(which + ":" + ZshText(positional->get_name(true)) + ":" + ZshAction(*positional));
  }
  out << " ;;\n";
}

std::string FishArguments(const CLI::Option& option) {
  switch (OfferFor(option)) {
    case Offer::Files: return " -F";
    case Offer::Paths: return " -a '(__confgrove_paths)'";
    case Offer::Words: return " -a " + QuotedForFish(CLI::detail::join(WordsOf(option), " "));
    case Offer::Nothing: break;
  }
  return "";
}

void WriteFishOption(std::ostream& out, const std::string& condition, const CLI::Option& option) {
  out << "complete -c confgrove -n " << QuotedForFish(condition);
  for (const std::string& name : option.get_snames()) out << " -s " << name;
  for (const std::string& name : option.get_lnames()) out << " -l " << name;
  if (TakesValue(option)) out << " -x" << FishArguments(option);
  out << " -d " << QuotedForFish(option.get_description()) << '\n';
}

void WriteFishCommand(std::ostream& out, const CLI::App& command) {
  const std::string& name = command.get_name();
  out << "complete -c confgrove -n '__confgrove_at 0' -a " << name << " -d "
      << QuotedForFish(command.get_description()) << '\n';
  for (const CLI::Option* option : OptionsOf(command)) {
    WriteFishOption(out, "__confgrove_in " + name, *option);
  }
  int place = 0;
  for (const CLI::Option* positional : PositionalsOf(command)) {
    if (OfferFor(*positional) == Offer::Nothing) continue;
    std::string condition = "__confgrove_in " + name;
    if (!Repeats(*positional)) condition += "; and __confgrove_at " + std::to_string(++place);
    out << "complete -c confgrove -n " << QuotedForFish(condition) << FishArguments(*positional)
        << '\n';
  }
}

}  // namespace

void WriteBash(std::ostream& out, const CLI::App& app) {
  out << R"(# Completion of confgrove for bash.

_confgrove_paths() { confgrove list -- "$1" 2>/dev/null | cut -d ' ' -f 1; }

_confgrove() {
  local word=${COMP_WORDS[COMP_CWORD]} command= option= file= place=0 words= i
  for ((i = 1; i < COMP_CWORD; i++)); do
    if [[ -n $option ]]; then
      option=
      continue
    fi
    case $command:${COMP_WORDS[i]} in
)";
  const std::vector<std::string> with_value = ValuePatterns(app);
  if (!with_value.empty()) {
    out << "      " << CLI::detail::join(with_value, " | ") << ") option=${COMP_WORDS[i]} ;;\n";
  }
  out << R"(      *:-*) ;;
      :*) command=${COMP_WORDS[i]} ;;
      *) ((++place > 1)) || file=${COMP_WORDS[i]} ;;
    esac
  done
  case $command:$option:$((place + 1)):$word in
)";
  for (const CLI::App* command : CommandsOf(app)) WriteBashCommand(out, *command);
  out << "    ::*:-*) words=" << Quoted(CLI::detail::join(OptionNames(app), " ")) << " ;;\n"
      << "    ::*) words=" << Quoted(CLI::detail::join(CommandNames(app), " ")) << " ;;\n"
      << R"(  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -F _confgrove confgrove
)";
}

void WriteZsh(std::ostream& out, const CLI::App& app) {
  out << R"zsh(#compdef confgrove
# Completion of confgrove for zsh.

_confgrove_paths() {
  local file=${${words[2,-1]:#-*}[1]}
  local -a paths=(${${(f)"$(confgrove list -- ${(Q)file} 2>/dev/null)"}%% *})
  compadd -a paths
}

_confgrove() {
  local curcontext=$curcontext state line
  local -a commands
  _arguments -C)zsh";
  for (const CLI::Option* option : OptionsOf(app)) {
    for (const std::string& name : NamesOf(*option)) {
      out << " \\\n    " << Quoted(name + "[" + ZshText(option->get_description()) + "]");
    }
  }
  out << R"zsh( \
    '1:command:->command' '*::argument:->argument'
  case $state in
    command)
      commands=(
)zsh";
  for (const CLI::App* command : CommandsOf(app)) {
    out << "        " << Quoted(command->get_name() + ":" + ZshText(command->get_description()))
        << '\n';
  }
  out << R"zsh(      )
      _describe command commands ;;
    argument)
      case $words[1] in
)zsh";
  for (const CLI::App* command : CommandsOf(app)) WriteZshCommand(out, *command);
  out << R"zsh(      esac ;;
  esac
}

_confgrove "$@"
)zsh";
}

void WriteFish(std::ostream& out, const CLI::App& app) {
  out << R"(# Completion of confgrove for fish.

# The command and what follows it, without options and their values.
function __confgrove_words
    set -l before
    set -l command
    for word in (commandline -opc)[2..-1]
        if contains -- "$command:$before" )"
      << CLI::detail::join(ValuePatterns(app), " ") << R"(
            set before
            continue
        end
        set before $word
        string match -q -- '-*' $word; and continue
        test -n "$command"; or set command $word
        echo $word
    end
end

function __confgrove_in
    test "$(__confgrove_words)[1]" = $argv[1]
end

# The number of the word that is being completed: 0 for the command.
function __confgrove_at
    test (count (__confgrove_words)) -eq $argv[1]
end

function __confgrove_paths
    confgrove list -- (__confgrove_words)[2] 2>/dev/null | string replace -r ' .*' ''
end

complete -c confgrove -f
)";
  for (const CLI::Option* option : OptionsOf(app))
    WriteFishOption(out, "__confgrove_at 0", *option);
  for (const CLI::App* command : CommandsOf(app)) WriteFishCommand(out, *command);
}

}  // namespace confgrove::Tool
