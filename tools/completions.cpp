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
std::string ShellQuoted(const std::string& text) {
  return "'" + Replaced(text, "'", "'\\''") + "'";
}

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

std::vector<std::string> CommandNames(const ToolText& tool) {
  std::vector<std::string> names;
  for (const CommandText& command : tool.commands) names.push_back(command.name);
  return names;
}

std::vector<std::string> OptionNames(const CommandText& command) {
  std::vector<std::string> names;
  for (const OptionText& option : command.options) {
    for (const std::string& name : NamesOf(option)) names.push_back(name);
  }
  return names;
}

// The names of all options of a command that take a value, as patterns of sh: "set:--comment".
std::vector<std::string> ValuePatterns(const ToolText& tool) {
  std::vector<std::string> patterns;
  for (const CommandText& command : tool.commands) {
    for (const OptionText& option : command.options) {
      if (!option.takes_value) continue;
      for (const std::string& name : NamesOf(option)) {
        patterns.push_back(command.name + ":" + name);
      }
    }
  }
  return patterns;
}

enum class Offer { Files, Paths, Words, Nothing };

// What to offer in the place of a positional or of the value of an option.
Offer OfferFor(const OptionText& option) {
  if (!option.words.empty()) return Offer::Words;
  const std::string name = option.name.empty() ? option.type : option.name;
  if (name == "PATH") return Offer::Paths;
  if (name.find("FILE") != std::string::npos || name.find("DIR") != std::string::npos) {
    return Offer::Files;
  }
  return Offer::Nothing;
}

// The lines of a bash `case` that fill in what is offered.
void WriteBashOffer(std::ostream& out, const std::string& pattern, const OptionText& option) {
  const std::string words = Joined(option.words, " ");
  switch (OfferFor(option)) {
    case Offer::Files: out << "    " << pattern << ") compopt -o default ;;\n"; break;
    case Offer::Paths:
      out << "    " << pattern << ") words=$(_confgrove_paths \"$file\") ;;\n";
      break;
    case Offer::Words:
      out << "    " << pattern << ") words=" << ShellQuoted(words) << " ;;\n";
      break;
    case Offer::Nothing: break;
  }
}

void WriteBashCommand(std::ostream& out, const CommandText& command) {
  const std::string& name = command.name;
  for (const OptionText& option : command.options) {
    if (!option.takes_value) continue;
    for (const std::string& option_name : NamesOf(option)) {
      std::string pattern = name;
      pattern.append(":").append(option_name).append(":*");
      WriteBashOffer(out, pattern, option);
    }
  }
  out << "    " << name << "::*:-*) words=" << ShellQuoted(Joined(OptionNames(command), " "))
      << " ;;\n";
  int place = 0;
  for (const OptionText& argument : command.arguments) {
    WriteBashOffer(out, name + "::" + (argument.repeats ? "*" : std::to_string(++place) + ":*"),
                   argument);
  }
}

// One argument of _arguments, for an option or a positional.
std::string ZshAction(const OptionText& option) {
  switch (OfferFor(option)) {
    case Offer::Files: return "_files";
    case Offer::Paths: return "_confgrove_paths";
    case Offer::Words: return "(" + Joined(option.words, " ") + ")";
    case Offer::Nothing: break;
  }
  return " ";
}

void WriteZshCommand(std::ostream& out, const CommandText& command) {
  out << "        " << command.name << ")\n          _arguments";
  for (const OptionText& option : command.options) {
    for (const std::string& name : NamesOf(option)) {
      std::string argument = name + "[" + ZshText(option.about) + "]";
      if (option.takes_value) argument += ":value:" + ZshAction(option);
      out << " \\\n            " << ShellQuoted(argument);
    }
  }
  int place = 0;
  for (const OptionText& argument : command.arguments) {
    const std::string which = argument.repeats ? "*" : std::to_string(++place);
    out << " \\\n            "
        << ShellQuoted(which + ":" + ZshText(argument.name) + ":" + ZshAction(argument));
  }
  out << " ;;\n";
}

std::string FishArguments(const OptionText& option) {
  switch (OfferFor(option)) {
    case Offer::Files: return " -F";
    case Offer::Paths: return " -a '(__confgrove_paths)'";
    case Offer::Words: return " -a " + QuotedForFish(Joined(option.words, " "));
    case Offer::Nothing: break;
  }
  return "";
}

void WriteFishOption(std::ostream& out, const std::string& condition, const OptionText& option) {
  out << "complete -c confgrove -n " << QuotedForFish(condition);
  for (const std::string& name : option.short_names) out << " -s " << name;
  for (const std::string& name : option.long_names) out << " -l " << name;
  if (option.takes_value) out << " -x" << FishArguments(option);
  out << " -d " << QuotedForFish(option.about) << '\n';
}

void WriteFishCommand(std::ostream& out, const CommandText& command) {
  const std::string& name = command.name;
  out << "complete -c confgrove -n '__confgrove_at 0' -a " << name << " -d "
      << QuotedForFish(command.about) << '\n';
  for (const OptionText& option : command.options) {
    WriteFishOption(out, "__confgrove_in " + name, option);
  }
  int place = 0;
  for (const OptionText& argument : command.arguments) {
    if (OfferFor(argument) == Offer::Nothing) continue;
    std::string condition = "__confgrove_in " + name;
    if (!argument.repeats) condition += "; and __confgrove_at " + std::to_string(++place);
    out << "complete -c confgrove -n " << QuotedForFish(condition) << FishArguments(argument)
        << '\n';
  }
}

}  // namespace

void WriteBash(std::ostream& out, const ToolText& tool) {
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
  const std::vector<std::string> with_value = ValuePatterns(tool);
  if (!with_value.empty()) {
    out << "      " << Joined(with_value, " | ") << ") option=${COMP_WORDS[i]} ;;\n";
  }
  out << R"(      *:-*) ;;
      :*) command=${COMP_WORDS[i]} ;;
      *) ((++place > 1)) || file=${COMP_WORDS[i]} ;;
    esac
  done
  case $command:$option:$((place + 1)):$word in
)";
  for (const CommandText& command : tool.commands) WriteBashCommand(out, command);
  out << "    ::*:-*) words=" << ShellQuoted(Joined(OptionNames(tool), " ")) << " ;;\n"
      << "    ::*) words=" << ShellQuoted(Joined(CommandNames(tool), " ")) << " ;;\n"
      << R"(  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -F _confgrove confgrove
)";
}

void WriteZsh(std::ostream& out, const ToolText& tool) {
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
  for (const OptionText& option : tool.options) {
    for (const std::string& name : NamesOf(option)) {
      out << " \\\n    " << ShellQuoted(name + "[" + ZshText(option.about) + "]");
    }
  }
  out << R"zsh( \
    '1:command:->command' '*::argument:->argument'
  case $state in
    command)
      commands=(
)zsh";
  for (const CommandText& command : tool.commands) {
    out << "        " << ShellQuoted(command.name + ":" + ZshText(command.about)) << '\n';
  }
  out << R"zsh(      )
      _describe command commands ;;
    argument)
      case $words[1] in
)zsh";
  for (const CommandText& command : tool.commands) WriteZshCommand(out, command);
  out << R"zsh(      esac ;;
  esac
}

_confgrove "$@"
)zsh";
}

void WriteFish(std::ostream& out, const ToolText& tool) {
  out << R"(# Completion of confgrove for fish.

# The command and what follows it, without options and their values.
function __confgrove_words
    set -l before
    set -l command
    for word in (commandline -opc)[2..-1]
        if contains -- "$command:$before" )"
      << Joined(ValuePatterns(tool), " ") << R"(
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
  for (const OptionText& option : tool.options) WriteFishOption(out, "__confgrove_at 0", option);
  for (const CommandText& command : tool.commands) WriteFishCommand(out, command);
}

}  // namespace confgrove::Tool
