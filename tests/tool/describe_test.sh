#!/usr/bin/env bash
# Compares the manual pages and the completions of bash, zsh and fish with --help: describe_test TOOL
# Each must name the same commands and options, and the shells must offer them when asked.
source "$(dirname "$0")/common.sh"

"$tool" --describe . || fail "the tool doesn't describe itself"
PATH=$top/bin:$PATH # where the completions look for the tool, for paths in files
mkdir "$top/bin"
ln -s "$tool" "$top/bin/confgrove"
file app.cfg 'limits { rate = 1 burst = 2 }\nlog = "x"\n'

# The long and short options of a help text, and its commands.
options_of_help() { grep -oE '^  (-[a-z],)?--?[a-z-]+' | grep -oE -- '--?[a-z-]+' | sort; }
commands_of_help() { "$tool" --help | sed -n '/^Subcommands:/,/^$/p' | awk '/^  [a-z]/ {print $1}'; }

# As one line of words, for the lines are broken elsewhere.
words() { tr -s ' \n' ' '; }

# page NOTE FILE COMMAND...: the options of the page, and that all texts of the help stand in it.
page() {
  local note=$1 page=$2 help text
  shift 2
  help=$("$tool" "$@" --help)
  equal "$note: options" "$(options_of_help <<<"$help")" \
    "$(sed -n '/^\.SH OPTIONS/,/^\.SH [^O]/p' "$page" | grep '^\\fB' | sed 's/\\-/-/g' |
      grep -oE -- '\\fB--?[a-z-]+' | cut -c 4- | sort)"
  equal "$note: groff has no complaint" "" "$(groff -man -Tutf8 -ww -z "$page" 2>&1)"
  text=$(groff -man -Tascii -P-c -P-b -P-u -rHY=0 -rLL=1000n "$page" | words)
  while read -r line; do
    [[ -z $line || $text == *"$(words <<<"$line" | sed 's/ $//')"* ]] ||
      fail "$note: the page doesn't say: $line"
  done < <(sed -n 's/^  [^ ].*   *\([A-Z].*\)/\1/p' <<<"$help")
}

# What bash offers for the last of the words.
in_bash() {
  bash -c 'compopt() { ls; }
    source ./bash
    COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
    _confgrove
    ((${#COMPREPLY[@]} == 0)) || printf "%s\n" "${COMPREPLY[@]}"' bash "$@" | sort
}

in_fish() {
  fish --no-config -c 'source ./fish; complete -C "$argv"' "$*" | cut -f 1 | sed 's#/$##' | sort
}

# What zsh is told to offer: what reaches its own _arguments, without descriptions.
in_zsh() {
  zsh -f -c '_arguments() {
      [[ $1 == -C ]] && { state=argument; shift }
      print -rl -- ${@%%\[*}
    }
    words=($@)
    state=argument
    source ./zsh' zsh "$@" | grep -oE '^--?[a-z-]+' | sort -u
}

complete_options() {
  local command=$1 wanted
  wanted=$("$tool" "$command" --help | options_of_help)
  equal "bash: options of $command" "$wanted" "$(in_bash confgrove "$command" -)"
  equal "fish: options of $command" "$(grep -- -- <<<"$wanted")" "$(in_fish confgrove "$command" --)"
  equal "zsh: options of $command" "$(printf '%s\n' "$wanted" --version | sort)" \
    "$(in_zsh "$command")"
}

page "confgrove" man1/confgrove.1
pages=confgrove.1
for command in $(commands_of_help); do
  page "$command" "man1/confgrove-$command.1" "$command"
  complete_options "$command"
  pages+=" confgrove-$command.1"
done
equal "pages" "$(tr ' ' '\n' <<<"$pages" | sort)" "$(ls man1)"
equal "bash: commands" "$(commands_of_help | sort)" "$(in_bash confgrove '')"
equal "fish: commands" "$(commands_of_help | sort)" "$(in_fish 'confgrove ')"
equal "zsh: commands" "$(commands_of_help | sort)" \
  "$(zsh -f -c '_arguments() { state=command }; _describe() { print -rl -- ${commands%%:*} }
    source ./zsh' | sort)"

files=$(ls)
for shell in bash fish; do
  case $shell in
    bash) offer() { in_bash confgrove "$@"; } ;;
    fish) offer() { in_fish confgrove "$@"; } ;;
  esac
  equal "$shell: files" "$files" "$(offer get '')"
  equal "$shell: paths" $'limits\nlimits.burst\nlimits.rate\nlog' "$(offer get app.cfg '')"
  equal "$shell: a path behind options" $'log' "$(offer set --comment x app.cfg lo)"
  equal "$shell: a second file" "$files" "$(offer check app.cfg '')"
done
((failures == 0)) && echo "$(ls man1 | wc -l) pages and the completions of three shells agree with --help"
