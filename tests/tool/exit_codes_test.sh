#!/usr/bin/env bash
# Each row of the table of exit codes in docs/tool.md, by calls that end in it:
#
#   exit_codes_test.sh TOOL
page=$(realpath "$(dirname "$0")/../../docs/tool.md")
source "$(dirname "$0")/common.sh" "$1"

file a.cfg 'a = 1 #c\nb = @a\nt = "x"\n'
file same.cfg 't="x" a=1\nb = @a\n'
file other.cfg 'a = 2\n'
file warn.cfg 'w = 0.00\n'
file faulty.cfg 'a = \n'
file ring.cfg 'a = @a\n'
file canonical.cfg 'a = 1\n'
file known.cfg 'a = 1\n'
file input 'nonsense\n'
mkdir directory

# The code that the page tells for each row.
declare -A codes met
while IFS='|' read -r _ code when _; do
  [[ $code =~ ^\ [0-9]\ $ ]] || continue
  when=${when# }
  codes[${when% }]=${code// /}
done < <(sed -n '/^| Exit code/,/^$/p' "$page")
((${#codes[@]} > 10)) || fail "the page has ${#codes[@]} rows"

while IFS='|' read -r when call redirection; do
  [[ -n $when ]] && row=$when
  [[ -v codes[$row] ]] || fail "the page has no row '$row'"
  met[$row]=1
  eval "\"\$tool\" $call >\"\$top/output\" 2>\"\$top/complaints\" <input $redirection"
  equal "$row: $call" "${codes[$row]}" "$?"
done <<'ROWS'
All is done, be it that nothing had to be.|get a.cfg b
|set known.cfg a 2
|set known.cfg a 2
|format canonical.cfg
|check a.cfg
|--help
|--version
`check`: there are warnings, but no errors.|check warn.cfg
`diff`: programs read the same from both files.|diff a.cfg same.cfg
A file, a section, a value, a comment or a page isn't there.|get none.cfg a
|get a.cfg none
|get --comment a.cfg a
|list a.cfg none
|where a.cfg none
|unset a.cfg none
|explain none
A file is faulty.|check faulty.cfg
|get faulty.cfg a
|set faulty.cfg a 1
|format faulty.cfg
|diff a.cfg faulty.cfg
|flatten faulty.cfg
What was asked for is refused, and nothing is changed.|set a.cfg a x
|set a.cfg a 1e999
|unset a.cfg a
|rename a.cfg a b
|rename a.cfg a b.c
A file can't be read or written, or standard output can't.|get directory a
|set directory a 1
|list a.cfg|>/dev/full
One of several files or paths can't be dealt with; the others are.|get a.cfg none a
|check none.cfg a.cfg
|format none.cfg canonical.cfg
`format --check`: a file isn't canonical.|format --check a.cfg
`diff`: the files differ.|diff a.cfg other.cfg
`where`: the links run in a circle.|where ring.cfg a
An unknown command or option.|nonsense
|get --nonsense a.cfg a
An argument too few or too many.|get a.cfg
|diff a.cfg
|rename a.cfg a b c
A value that its option rules out, or options that rule each other out.|check --format=xml a.cfg
|convert input --from yaml
|list --json --null a.cfg
|get --type --comment a.cfg a
|set --string --link a.cfg a x
Standard input where it can't be: `check --fix -`, `diff - -`.|check --fix -
|diff - -
A line that `edit` doesn't understand.|edit a.cfg
ROWS

for when in "${!codes[@]}"; do
  [[ -v met[$when] ]] || fail "no call stands for '$when'"
done
holds "no call that fails changes the file" a.cfg 'a = 1 #c\nb = @a\nt = "x"\n'
finish
