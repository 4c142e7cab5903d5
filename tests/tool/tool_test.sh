#!/usr/bin/env bash
# Calls of the tool: what it answers, what it complains of, and what becomes of the files.
# shellcheck disable=SC2016  # a directive begins with a dollar sign
source "$(dirname "$0")/common.sh" "$1"

# --- Reading ---------------------------------------------------------------------------------

file base.cfg 'speed = 5\nlimits { far = "x" }\n'
file read.cfg '# head\n$import "base"\ntitle = "alpha" #shown\n# where\nport = 8080\n
limits { rate = [1.5 2, 0.1] alias = @limits.rate\nbig = 100000 }\nto = @speed\nblock = @limits\nme = @me\n
both = 1e15 { \xe8\xec\xff = "\xe4\xe0" }\n'

while IFS='|' read -r note code output complaints arguments; do
  read -ra words <<<"$arguments"
  call "$note" "$code" "$output" "$complaints" "${words[@]}"
done <<'ROWS'
text|0|alpha\n||get read.cfg title
number|0|8080\n||get read.cfg port
plain large number|0|100000\n||get read.cfg limits.big
array|0|1.5\n2\n0.1\n||get read.cfg limits.rate
link|0|1.5\n2\n0.1\n||get read.cfg limits.alias
link into an import|0|5\n||get read.cfg to
import|0|x\n||get read.cfg limits.far
Cyrillic path in UTF-8|0|M-dM-`\n||get read.cfg both.имя
type of a text|0|string\n||get --type read.cfg title
type of a link|0|array\n||get --type read.cfg limits.alias
type of a block|0|block\n||get --type read.cfg limits
type of a link to a block|0|block\n||get --type read.cfg block
type of a link in a circle|0|none\n||get --type read.cfg me
comment|0| where\n||get read.cfg port --comment
inline comment|0|shown\n||get read.cfg title --inline
no comment|1||confgrove: read.cfg: no such comment at 'title'\n|get read.cfg title --comment
no section|1||confgrove: read.cfg: no section 'no.such'\n|get read.cfg no.such
misspelt|1||confgrove: read.cfg: no section 'limits.raet'; the nearest that is there is 'limits.rate'\n|get read.cfg limits.raet
several|1|8080\nalpha\n|confgrove: read.cfg: no section 'no'\n|get read.cfg port no title
default|0|9\n8080\n||get --default 9 read.cfg no port
default is for what is missing|1||confgrove: read.cfg: no value at 'limits'\n|get --default 9 read.cfg limits
no value|1||confgrove: read.cfg: no value at 'limits'\n|get read.cfg limits
link in a circle|1||confgrove: read.cfg: no value at 'me'\n|get read.cfg me
no path|1||confgrove: read.cfg: no path of sections: '1x'\n|get read.cfg 1x
a star is a letter|1||confgrove: read.cfg: no path of sections: 'base*'\n|get read.cfg base*
no file|1||confgrove: none.cfg: no such file\n|get none.cfg a
directory|1||confgrove: .: not a regular file\n|get . a
empty name|1||confgrove: 'work/' names no file\n|get work/ a
list below a path|0|limits block\nlimits.rate array [1.5, 2, 0.1]\nlimits.alias link @limits.rate\nlimits.big number 100000\n||list read.cfg limits
list in an import|0|speed number 5\n||list read.cfg speed
list a missing path|1||confgrove: read.cfg: no section 'no'\n|list read.cfg no
ROWS

# Standard input, which imports from the working directory.
while IFS='|' read -r note code input output complaints arguments; do
  file "$top/input" "$input"
  read -ra words <<<"$arguments"
  call "standard input: $note" "$code" "$output" "$complaints" "${words[@]}" <"$top/input"
done <<'ROWS'
get|0|$import "base"\na = @speed\n|5\n||get - a
where|0|$import "base"\na = @speed\n|-:2:1: a link @speed\nbase.cfg:1:1: speed number 5\n||where - a
imports|0|a = 1\n|-  -\n||imports -
a fault|1|$import "base"\na = @sped\n|-:2:5: error: link to undefined section [undefined-link]: no section 'sped'; did you mean 'speed'?\n||check --format=short -
nothing|0||||list -
records|0|a { b = 1 }|a block\0a.b number 1\0||list --null -
places|0|a = 1|{\n  "kind": "number",\n  "value": 1,\n  "file": "-",\n  "line": 1,\n  "column": 1\n}\n||list --json --where - a
ROWS
equal "no copy of standard input stays" '' "$(find . -name '.confgrove-*')"

sed -i 's/speed = 5/speed = 5 # m\/s/' base.cfg
call "list a file" 0 'speed number 5\nlimits block\nlimits.far string "x"\n' '' list base.cfg
call "JSON" 0 '{
  "sections": {
    "speed": {
      "kind": "number",
      "value": 5,
      "inline_comment": " m/s"
    },
    "limits": {
      "kind": "block",
      "sections": {
        "far": {
          "kind": "string",
          "value": "x"
        }
      }
    }
  }
}\n' '' list --json base.cfg
if command -v python3 >/dev/null; then
  equal "JSON of everything" "[['base'], ' head\\n', 'alpha', ' where\\n', [1.5, 2, 0.1], 'limits.rate', 'да']" \
    "$("$tool" list --json read.cfg | PYTHONIOENCODING=utf-8 python3 -c '
import json, sys
t = json.load(open(0, encoding="utf-8")); s = t["sections"]; l = s["limits"]["sections"]
print([t["imports"], t["comment"], s["title"]["value"], s["port"]["comment"], l["rate"]["value"],
       l["alias"]["target"], s["both"]["sections"]["имя"]["value"]])')"
fi

mkdir sub
file sub/deep.cfg 'd = 1\n'
file sub/mid.cfg '$import "sub/deep"\n'
file tree.cfg '$import "sub\\mid"\n$import "base"\n'
touch -d '2024-02-13 04:05:06' tree.cfg base.cfg sub/mid.cfg sub/deep.cfg
when='Tue Feb 13 04:05:06 2024'
call "imports" 0 "tree.cfg  $when\n  base.cfg  $when\n  sub${separator}mid.cfg  $when\n    sub/deep.cfg  $when\n" '' \
  imports tree.cfg

# Where a value stands: the links that lead to it, and what it hides.
file far.cfg 'a = 1\nlimits { far = 2 }\n'
file near.cfg '$import "far"\n\ta = 2\n'
file where.cfg '$import "near"\r\n\xe8\xec\xff = 1 b = @limits.far\r\n\ta = @b c = @a\r\nd=@d'
echo >>where.cfg
while IFS='|' read -r note code output complaints arguments; do
  read -ra words <<<"$arguments"
  call "where: $note" "$code" "$output" "$complaints" "${words[@]}"
done <<'ROWS'
own|0|where.cfg:2:1: имя number 1\n||where where.cfg имя
imported|0|far.cfg:2:10: limits.far number 2\n||where where.cfg limits.far
chain and hidden|0|where.cfg:3:9: c link @a\nwhere.cfg:3:2: a link @b\nnear.cfg:2:2: a number 2 (hidden)\nfar.cfg:1:1: a number 1 (hidden)\nwhere.cfg:2:9: b link @limits.far\nfar.cfg:2:10: limits.far number 2\n||where where.cfg c
circle|1|where.cfg:4:1: d link @d\n|confgrove: where.cfg: 'd': its links run in a circle\n|where where.cfg d
nowhere|1||confgrove: where.cfg: no section 'x'\n|where where.cfg x
ROWS

# --- Checking --------------------------------------------------------------------------------

file sub/in.cfg 'z = 1\n\ty = "open\n'
file bad.cfg 'a = 1 /* two\nlines */\r\nb = @nope\nw = 0.00\n$import "sub/in"\n'
file out.cfg '$import "away"\n'
call "errors and warnings" 1 "bad.cfg:3:5: error: link to undefined section [undefined-link]: no section 'nope'
bad.cfg:4:5: warning: cannot parse number, set to zero [zero-number]: the number is 0; if that is meant, write '0'
sub/in.cfg:2:6: error: \" outline [unclosed-text]: the text has no closing quote on its line
out.cfg:1:9: error: cannot parse import file [import-failed]: 'away' can't be opened: there is no away.cfg\n" \
  'confgrove: none.cfg: no such file\n' check --format=short bad.cfg read.cfg out.cfg none.cfg
file warn.cfg 'w = 0.00\n'
call "warnings are no faults" 0 "warn.cfg:1:5: warning: cannot parse number, set to zero [zero-number]
    1 | w = 0.00
      |     ^^^^ the number is 0; if that is meant, write '0'
      = fix: write '0'\n" '' check warn.cfg
NO_COLOR=1 "$tool" check --color=always warn.cfg | head -1 | grep -qF $'\e[1;35mwarning:' ||
  fail "colour, if it is asked for"
file fix.cfg '// one\r\na = 1;\r\nb: 0.00 // two\r\nc = yes\r\n'
call "safe fixes" 1 'fix.cfg:4:5: error: expected number or "string" (may be array) after '"'='"' [no-value]: '"'yes' is no value: a text stands in double quotes
" 'fix.cfg: 5 fixes applied\n' check --fix --format=short fix.cfg
holds "safe fixes" fix.cfg '# one\r\na = 1\r\nb = 0 # two\r\nc = yes\r\n'
call "without warnings" 0 '0\n' '' get warn.cfg w
for command in 'get bad.cfg a' 'set bad.cfg a 2' 'format bad.cfg' 'unset bad.cfg a' 'rename bad.cfg a c'; do
  cp bad.cfg bad.before
  read -ra words <<<"$command"
  "$tool" "${words[@]}" >"$top/output" 2>"$top/complaints"
  equal "a faulty file: $command" 1 "$?"
  equal "a faulty file says so: $command" 'bad.cfg:3:5: error: link to undefined section [undefined-link]' \
    "$(head -1 "$top/complaints")"
  cmp bad.cfg bad.before || fail "a faulty file is touched: $command"
done

# --- Names of files --------------------------------------------------------------------------

mkdir a.b ' d'
for name in x x. x.cfgold .cfg a.cfg.cfg two.dots.conf a.b/c ' d/ first.cfg' 'last.cfg ' ./p.cfg \
  '[b]' '[b].cfg' "$PWD/abs.cfg" -dash.cfg; do
  file "$name" 'v=1'
  ls -A . a.b ' d' >"$top/before"
  call "set in '$name'" 0 '' '' set -- "$name" v 2
  holds "set in '$name'" "$name" 'v=2'
  call "get from '$name'" 0 '2\n' '' get -- "$name" v
  equal "no file but '$name'" "$(cat "$top/before")" "$(ls -A . a.b ' d')"
  file "$name" 'v='
  "$tool" check -- "$name" >"$top/output" && fail "check of '$name'"
  equal "a fault in '$name'" \
    "$name:1:2: error: expected number or \"string\" (may be array) after '=' [no-value]" \
    "$(head -1 "$top/output")"
  rm -- "$name"
done
file 'y ' 'v = 1'
file y 'v = 2'
call "blank at the end" 1 '' "confgrove: 'y ': a name without extension that ends in a blank can't be opened\n" \
  get 'y ' v
mkdir back
file 'back\\slash.cfg' 'v = 1'
file back/slash.cfg 'v = 2'
call "backslash" 1 '' 'confgrove: back\\slash.cfg: a path with a backslash can'"'"'t be opened\n' \
  get 'back\slash.cfg' v

# --- Wrong calls -----------------------------------------------------------------------------

file w.cfg 'a = 1\n'
while IFS='|' read -r arguments input; do
  read -ra words <<<"$arguments"
  "$tool" "${words[@]}" >"$top/output" 2>"$top/complaints" < <(printf '%b' "$input")
  equal "wrong call '$arguments' $input" 2 "$?"
  equal "no answer to '$arguments' $input" '' "$(cat "$top/output")"
  [[ -s $top/complaints ]] || fail "no complaint about '$arguments' $input"
done <<'ROWS'

nonsense
get
get w.cfg
get w.cfg a --default 1 --type
list w.cfg --where
list w.cfg --json --null
check --fix -
get w.cfg a --type --comment
check
check --nonsense w.cfg
set w.cfg a
set w.cfg b 1 x
set w.cfg b @1
set w.cfg a @b @c --link
set w.cfg a x y --string
set w.cfg a x --number
set w.cfg a x --string --link
set w.cfg a 1 --comment=
rename w.cfg a
edit
edit w.cfg|set a
edit w.cfg|set a 2\nset b "c
edit w.cfg|unset a b
edit w.cfg|rename a
edit w.cfg|remove a
ROWS
holds "wrong calls" w.cfg 'a = 1\n'
for command in '' check get list where imports set unset rename edit format; do
  "$tool" ${command:+"$command"} --help >"$top/output" 2>"$top/complaints" || fail "help of '$command'"
  grep -q "Usage: confgrove${command:+ $command}" "$top/output" || fail "help of '$command' lacks its usage"
done
"$tool" --version | grep -Eq '^confgrove [0-9]+\.[0-9]+\.[0-9]+$' || fail "version"

# --- Changing --------------------------------------------------------------------------------

# Each row: a file, the call with FILE for its name, what is said, and the file afterwards. The
# marks of the shell hold in the call. --diff of the same call writes nothing.
change() {
  local note=$1 before=$2 arguments=$3 complaints=$4 after=$5 words
  file c.cfg "$before"
  eval "words=(${arguments//FILE/c.cfg})"
  "$tool" "${words[0]}" --diff "${words[@]:1}" >"$top/output" 2>"$top/complaints" <"$top/input"
  equal "$note: exit code of --diff" 0 "$?"
  holds "$note: --diff" c.cfg "$before"
  cp "$top/output" "$top/diff"
  call "$note" 0 '' "${complaints//FILE/c.cfg}" "${words[@]}" <"$top/input"
  holds "$note" c.cfg "$after"
  file before.cfg "$before"
  equal "$note: the diff" "$(diff -u --label c.cfg --label c.cfg before.cfg c.cfg | sed '/^@@/s/,1\b//g')" \
    "$(sed '/^@@/s/,1\b//g' "$top/diff")"
}
: >"$top/input"

while IFS='|' read -r note before arguments complaints after; do
  change "$note" "$before" "$arguments" "$complaints" "$after"
done <<'ROWS'
number|a=1|set FILE a 2||a=2
the same number|a=1e3 #c\n|set FILE a 1000||a=1e3 #c\n
negative number|a=1\n|set FILE a -2.5e-3||a=-0.0025\n
signs and letters of a number|a=1\n|set FILE a +1d3||a=1000\n
all digits|a=1\n|set FILE a 0.1234567||a=0.1234567\n
array|a = 1\n|set FILE a 1 .5 -3||a = [1,0.5,-3]\n
array as list prints it|a = 1\n|set FILE a '[1, 2]'||a = [1,2]\n
array without quotes|a = 1\n|set FILE a [1, 2]||a = [1,2]\n
a new array|b=1\n|set FILE a [1 2]|confgrove: FILE: 'a' is new\n|b=1\na=[1,2]\n
text|a = "x" # c\n|set FILE a 'one two'||a = "one two" # c\n
empty text|a = "x"|set FILE a ''||a = ""
text stays a text|host = "x"\n|set FILE host 8080||host = "8080"\n
so does a code|phone = "x"\n|set FILE phone 0123||phone = "0123"\n
and what looks like a link|a = "x"\n|set FILE a @a||a = "@a"\n
and what looks like an array|a = "x"\n|set FILE a '[1, 2]'||a = "[1, 2]"\n
a number from a text|a = "x"\n|set FILE --number a 12||a = 12\n
a text from a number|a = 1\n|set FILE --string a 12||a = "12"\n
a new number|a = 1\n|set FILE port 80|confgrove: FILE: 'port' is new\n|a = 1\nport = 80\n
a new code|a = 1\n|set FILE phone 0123|confgrove: FILE: 'phone' is new\n|a = 1\nphone = "0123"\n
a new zero|a = 1\n|set FILE zero 0|confgrove: FILE: 'zero' is new\n|a = 1\nzero = 0\n
no number|b = 1\n|set FILE a 1e|confgrove: FILE: 'a' is new\n|b = 1\na = "1e"\n
no number either|b = 1\n|set FILE a inf|confgrove: FILE: 'a' is new\n|b = 1\na = "inf"\n
no array|b = 1\n|set FILE a '[c]'|confgrove: FILE: 'a' is new\n|b = 1\na = "[c]"\n
names of commands are text|a = ""\n|set FILE a list||a = "list"\n
plus signs|a = ""\n|set FILE a ++||a = "++"\n
dashes|a = ""\n|set FILE a -- --b||a = "--b"\n
link|a=1\n|set FILE b @a|confgrove: FILE: 'b' is new\n|a=1\nb=@a\n
link in place of a number|a=1 b=2\n|set FILE --link b a||a=1 b=@a\n
link to something else|a=1\nb=2\nc=@a # c\n|set FILE c @b||a=1\nb=2\nc=@b # c\n
number in place of a link|a=1\nb=@a\n|set FILE --number b 2||a=1\nb=2\n
misspelt|port = 1\nlimits { rate = 1 }\n|set FILE limts.raet 2|confgrove: FILE: 'limts.raet' is new; the nearest that is there is 'limits.rate'\n|port = 1\nlimits { rate = 1 }\nlimts {\n\traet = 2\n}\n
below what is there|a { b = 1 }\n|set FILE a.other 2|confgrove: FILE: 'a.other' is new; the nearest that is there is 'a'\n|a { b = 1 other = 2 }\n
not like one of two|ab = 1\nac = 1\n|set FILE ad 2|confgrove: FILE: 'ad' is new\n|ab = 1\nac = 1\nad = 2\n
block gets a value|a { b = 1 }\n|set FILE a 2||a = 2 { b = 1 }\n
over an import|$import "base"\na=1\n|set FILE speed 6|confgrove: FILE: 'speed' is new here and hides the one in base.cfg\n|$import "base"\na=1\nspeed=6\n
comments|a=1\n|set FILE a --comment $' one\n two' --inline ' three'||# one\n# two\na=1 # three\n
inline comment goes|a=1 #c\n|set FILE a --inline ''||a=1\n
Cyrillic name|a=1\n|set FILE имя 2|confgrove: FILE: 'имя' is new\n|a=1\n\xe8\xec\xff=2\n
CR LF stays|a=1\r\nb=2\r\n|set FILE a 3||a=3\r\nb=2\r\n
seven digits elsewhere|t=1234567.5 /* b */\n//\nport = 1\n|set FILE port 9||t=1234567.5 /* b */\n//\nport = 9\n
unset|a=1\n# c\nb=2 # d\nc=3\n|unset FILE b||a=1\nc=3\n
unset within a line|a=1 b=2 c=3\n|unset FILE b||a=1 c=3\n
unset leaves the head|# licence\n\n# c\na=1\nb=2\n|unset FILE a||# licence\n\nb=2\n
unset what is below a value|a=1 { c=3 }\n|unset FILE a.c||a=1\n
unset the last|a=1\n|unset FILE a||
unset the last of blocks|x=1\na\n{\n\tb\n\t{\n\t\tc = 1\n\t}\n}\ny=1\n|unset FILE a.b.c||x=1\ny=1\n
unset the last below a value|a = 1\n{\n\tb = 1\n}\n|unset FILE a.b||a = 1\n
unset the last beside a comment|a\n{\n\tb = 1\n\t# c\n}\n|unset FILE a.b|confgrove: FILE: 'a' stays, empty: a comment or an import stands in it\n|a\n{\n\t# c\n}\n
unset the last below a comment|a { # c {\n\n\tb = 1 }\n|unset FILE a.b|confgrove: FILE: 'a' stays, empty: a comment or an import stands in it\n|a { # c {\n\n\t}\n
unset the last beside a block comment|a { /* c */ b = 1 }\n|unset FILE a.b|confgrove: FILE: 'a' stays, empty: a comment or an import stands in it\n|a { /* c */ }\n
unset the last behind a comment|a # one\n# c\n{\n\tb = 1\n}\nd = 1\n|unset FILE a.b|confgrove: FILE: 'a' stays, empty: a comment or an import stands in it\n|a # one\n# c\n{\n}\nd = 1\n
unset the last of two bodies|a { b = 1 } { } # a\nd = 1\n|unset FILE a.b||d = 1\n
unset the last below a link|a { b = 1 }\nc = @a\n|unset FILE a.b|confgrove: FILE: 'a' stays, empty: 'c' leads to it\n|a { }\nc = @a\n
unset with links|a { b=1 c=@a.b }\nd=@a.c\ne=1\n|unset FILE a.b --links||e=1\n
unset a link|a=1\nb=@a\n|unset FILE b||a=1\n
unset what links to itself|a { b=1 c=@a.b }\nd=1\n|unset FILE a||d=1\n
rename|a=1 b=2 c=3|rename FILE b d||a=1 d=2 c=3
rename below|a { b=2 #c\n}\n|rename FILE a.b c||a { c=2 #c\n}\n
rename to itself|a=1|rename FILE a a||a=1
links follow|a { b=1 }\nab=2\nc=@a.b # c\nd=@a\ne=@ab\n|rename FILE a x||x { b=1 }\nab=2\nc=@x.b # c\nd=@x\ne=@ab\n
ROWS
no_copies "after changes"

# Several at once, told by standard input.
while IFS='|' read -r note before input complaints after; do
  file "$top/input" "$input"
  change "edit: $note" "$before" 'edit FILE' "$complaints" "$after"
done <<'ROWS'
nothing|a=1|||a=1
all kinds|a=1\nb { c="x" }\nd=@b.c\n|# by hand\n\n set b.c  two \r\nset e "a text" \nunset a\nrename b f\nset g [1, 2]|confgrove: FILE: 'e' is new\nconfgrove: FILE: 'g' is new\n|f { c="two" }\nd=@f.c\ne="a text"\ng=[1,2]\n
one after the other|a=1\nb=2\n|rename a c\nrename b a\nset a 3||c=1\na=3\n
a text by its quotes|a=1\n|set a "2"||a="2"\n
a target and its link|a=1\nb=@a\nc=1\n|unset a\nunset b||c=1\n
a block left empty and renamed|a { b=1 }\nc=1\n|unset a.b\nrename a d||c=1\n
ROWS
: >"$top/input"

file e.cfg 'a = 1\n'
while IFS='|' read -r note input complaints; do
  file "$top/input" "$input"
  call "edit: $note" 1 '' "$complaints" edit --existing e.cfg <"$top/input"
  holds "edit: $note" e.cfg 'a = 1\n'
done <<'ROWS'
all or nothing|set a 2\nunset b|confgrove: line 2: e.cfg: 'b' isn't there\n
what is there alone|set a 2\nset b 3|confgrove: line 2: e.cfg: 'b' is new\n
ROWS

# What is refused, and why. Nothing is written.
while IFS='|' read -r note before arguments complaints; do
  file r.cfg "$before"
  eval "words=(${arguments//FILE/r.cfg})"
  call "$note" 1 '' "${complaints//FILE/r.cfg}" "${words[@]}"
  holds "$note" r.cfg "$before"
done <<'ROWS'
no number|port=1|set FILE port abc|confgrove: FILE: 'port' holds numbers, and 'abc' is none; --string makes a text of it\n
no number in an array|a=[1]|set FILE a '[1, b]'|confgrove: FILE: 'a' holds numbers, and '[1, b]' is none; --string makes a text of it\n
no array|a=[1]|set FILE a []|confgrove: FILE: 'a' holds numbers, and '[]' is none; --string makes a text of it\n
a link for a number|a=1 b=2|set FILE b @a|confgrove: FILE: 'b' holds numbers, and '@a' is none; --string makes a text of it, --link a link\n
several for a text|a="x"|set FILE a 1 2|confgrove: FILE: 'a' is a text; --number makes an array of numbers of it\n
a number for a link|a=1 b=@a\n|set FILE b 2|confgrove: FILE: 'b' is a link; --link, --number or --string says what it becomes\n
infinity|a=1|set FILE a 1e999|confgrove: FILE: 'a': a file can't hold an infinity, or what is no number\n
quote|a=""|set FILE a 'x"y'|confgrove: a text can't hold a double quote or a line end\n
line end|a=""|set FILE a $'x\ny'|confgrove: a text can't hold a double quote or a line end\n
inline comment of two lines|a=1|set FILE a --inline $'x\ny'|confgrove: an inline comment is one line\n
comment that hides a setting|a=1|set FILE a --comment $'x\rb = 2'|confgrove: FILE: 'a': a comment can't hold such a line end\n
comment of nothing|a=1|set FILE b --comment c|confgrove: FILE: 'b' isn't there\n
nothing new|limits { rate=1 }|set --existing FILE limits.raet 2|confgrove: FILE: 'limits.raet' is new; the nearest that is there is 'limits.rate'\n
nothing new over an import|$import "base"\n|set --existing FILE speed 2|confgrove: FILE: 'speed' is new here and hides the one in base.cfg\n
target of a link|a { b=1 }\n\nc=@a.b d=@a\n|unset FILE a|confgrove: FILE:3: 'c' leads to 'a.b'\nconfgrove: FILE:3: 'd' leads to 'a'\nconfgrove: FILE: left as it is; --links removes these links too\n
link with sections|a=1\nb=@a { c=1 }\n|unset FILE a --links|confgrove: FILE:2: 'b' leads to 'a'\nconfgrove: FILE: left as it is; a link with sections below it is yours to remove\n
link to what comes later|a=1 b=1|set FILE --link a b|confgrove: FILE: 'a': what would be written can't be read: link to undefined section\n
no such section|a=1|unset FILE b|confgrove: FILE: 'b' isn't there\n
imported section|$import "base"\n|unset FILE speed|confgrove: FILE: 'speed' stands in an imported file\n
imported section renamed|$import "base"\n|rename FILE limits.far x|confgrove: FILE: 'limits.far' stands in an imported file\n
name that is there|a=1 b=2|rename FILE a b|confgrove: FILE: 'b' is there already\n
no name|a=1|rename FILE a b.c|confgrove: 'b.c' is no name of a section\n
no path to set|a=1|set FILE b.1c 2|confgrove: 'b.1c' is no path of sections\n
the whole file|a=1|unset FILE ''|confgrove: '' is no path of sections\n
letters that names don't have|a=1|set FILE è 2|confgrove: 'M-CM-(' holds characters that no name can have\n
ROWS
no_copies "after refusals"

# --- Format ----------------------------------------------------------------------------------

# Nothing is lost, and what is canonical stays so.
while IFS='|' read -r note before after; do
  file c.cfg "$before"
  call "format: $note" 0 '' '' format c.cfg
  written "format: $note" c.cfg "$after"
  call "format: $note, once more" 0 '' '' format --check c.cfg
done <<'ROWS'
nothing||
sections|a=1{b=[1 2,]}c=@a.b\n|a = 1\n{\n\tb = [1,2]\n}\nc = @a.b\n
spelling of numbers|a=1e999 b=1200000 c=5.\n|a = 1e999\nb = 1200000\nc = 5.\n
an empty block|a { }|a\n{\n}\n
comment of a section|x { # c\ny=1}|x\n{\n\t# c\n\ty = 1\n}\n
block comments|/* b */ a=1 /* c */\n|/* b */\n/* c */\na = 1\n
a comment at the end|a { b=1\n# c\n}\n# d\n|a\n{\n\tb = 1\n\n\t# c\n}\n\n# d\n
a directive|a=1\n$import "base"\nb=@speed\n|\n$import "base"\n\na = 1\nb = @speed\n
CR LF|a=1\r\nb=2\r\n|a = 1\nb = 2\n
what is cut off|a=1 b|a = 1\nb
ROWS

canonical='#c\na = 1\n\n#d\nb = 2\n'
for name in f1 f2 f3; do file $name.cfg '#c\na=1\n#d\nb=2'; done
file faulty.cfg 'a='
call "check of several" 1 '' 'confgrove: f1.cfg: not in canonical form
faulty.cfg:1:2: error: expected number or "string" (may be array) after '"'='"' [no-value]
    1 | a=
      |  ^ nothing stands behind this '"'='"'
confgrove: f2.cfg: not in canonical form\n' format --check f1.cfg faulty.cfg f2.cfg
call "diff" 0 '--- f1.cfg
+++ f1.cfg
@@ -1,4 +1,5 @@
 #c
-a=1
+a = 1
+
 #d
-b=2
\\ No newline at end of file
+b = 2\n' '' format --diff f1.cfg
call "diff and check" 1 "$("$tool" format --diff f1.cfg)\n" 'confgrove: f1.cfg: not in canonical form\n' \
  format --diff --check f1.cfg
holds "a preview writes nothing" f1.cfg '#c\na=1\n#d\nb=2'
"$tool" format f1.cfg faulty.cfg f2.cfg f3.cfg 2>/dev/null
equal "one of several is refused" 1 "$?"
for name in f1 f2 f3; do written "whatever the order" $name.cfg "$canonical"; done
call "all canonical" 0 '' '' format --check f3.cfg f2.cfg f1.cfg
call "no difference" 0 '' '' format --diff f3.cfg

touch -d '2024-02-03 04:05:06' f1.cfg
inode=$(stat -c '%i %Y' f1.cfg)
call "canonical already" 0 '' '' format f1.cfg
call "the same value" 0 '' '' set f1.cfg a 1
equal "a file isn't written without a change" "$inode" "$(stat -c '%i %Y' f1.cfg)"

# --- What a change touches -------------------------------------------------------------------

# A file of every kind of layout: each change gives a diff of the lines that it must touch.
file layout.cfg '# Licence\r\n# of two lines\r\n\r\n/* Tuned\r\n   by hand */\r\n\r\n# Where it listens\r\nserver\r\n{\r\n\taddress = "10.0.0.1"   # inner\r\n\tport    = 8080         # outer\r\n}\r\n\r\n# Limits\r\nlimits {\r\n    samples = 1234567.5  # since\r\n    steps = [1, 2,\r\n             3]\r\n    # old\r\n    legacy = "on"\r\n}\r\nback = @limits.samples\r\n\r\n# The end\r\n'
while IFS='|' read -r note arguments wanted; do
  cp layout.cfg c.cfg
  read -ra words <<<"${arguments//FILE/c.cfg}"
  call "layout: $note" 0 '' '' "${words[@]}"
  file "$top/wanted" "$wanted"
  equal "layout: $note" "$(cat "$top/wanted")" "$(diff layout.cfg c.cfg | sed 's|[ \r]*$||')"
done <<'ROWS'
set|set FILE server.port 9|11c11\n< \tport    = 8080         # outer\n---\n> \tport    = 9         # outer
unset|unset FILE limits.legacy|19,20d18\n<     # old\n<     legacy = "on"
unset a block|unset FILE server|7,13d6\n< # Where it listens\n< server\n< {\n< \taddress = "10.0.0.1"   # inner\n< \tport    = 8080         # outer\n< }\n<
rename|rename FILE limits.samples count|16c16\n<     samples = 1234567.5  # since\n---\n>     count = 1234567.5  # since\n22c22\n< back = @limits.samples\n---\n> back = @limits.count
rename a block|rename FILE limits bounds|15c15\n< limits {\n---\n> bounds {\n22c22\n< back = @limits.samples\n---\n> back = @bounds.samples
ROWS

# --- What stands around a file ---------------------------------------------------------------

mkdir links real
file links/near.cfg 'n = 1\n'
file real/version2 '$import "near"\na = @n\nv = ""\n'
chmod 640 real/version2
ln -s ../real/version2 links/app.cfg
ln -s links other
for name in links/app.cfg other/app.cfg "$PWD/other/app.cfg"; do
  call "through a link: $name" 0 '' '' set "$name" v "$name"
  holds "through a link" real/version2 "\$import \"near\"\na = @n\nv = \"$name\"\n"
done
equal "the link stays" ../real/version2 "$(readlink links/app.cfg)"
equal "the mode stays" 640 "$(stat -c %a real/version2)"
ln -s nowhere dangling.cfg
call "link to nowhere" 1 '' 'confgrove: dangling.cfg: no such file\n' set dangling.cfg a 1
ln -s /dev/full full.cfg
call "device" 1 '' 'confgrove: full.cfg: not a regular file\n' set full.cfg a 1

# Permissions don't bind root, who tests them as somebody else; under Wine they do.
if ((EUID == 0)) && [[ ${CONFGROVE_SYSTEM:-} != Windows ]]; then
  chmod 755 "$top"
  mkdir -m 777 "$top/nobody"
  cp "$tool" "$top/nobody/confgrove"
  nobody=(setpriv --reuid=65534 --regid=65534 --clear-groups env "TMPDIR=$top/nobody")
  as_nobody() { "${nobody[@]}" "$top/nobody/confgrove" "$@"; }
else
  as_nobody() { "$tool" "$@"; }
fi
mkdir closed
file closed/c.cfg 'a=1'
chmod 444 closed/c.cfg
chmod 555 closed
complaint=$(as_nobody set closed/c.cfg a 2 2>&1)
equal "read-only file" "1 confgrove: closed/c.cfg: can't be written: Permission denied" "$? $complaint"
chmod 666 closed/c.cfg
complaint=$(as_nobody set closed/c.cfg a 2 2>&1)
equal "closed directory" "1 confgrove: closed/c.cfg: a copy beside it can't be made: Permission denied" "$? $complaint"
complaint=$(as_nobody format --check closed/c.cfg 2>&1)
equal "preview in a closed directory" "1 confgrove: closed/c.cfg: not in canonical form" "$? $complaint"
chmod 000 closed/c.cfg
complaint=$(as_nobody get closed/c.cfg a 2>&1)
equal "unreadable file" "1 confgrove: closed/c.cfg: can't be opened" "$? $complaint"
chmod 755 closed

# --- No room ---------------------------------------------------------------------------------

for ((i = 0; i < 3000; i++)); do echo "k$i = $i"; done >large.cfg
cp large.cfg large.before
for limit in 0 1 7 30; do  # in KiB; the file has 37
  complaints=$(ulimit -f $limit && exec "$tool" set large.cfg k5 1 2>&1)
  equal "size limit $limit" 1 "$?"
  equal "size limit $limit says so" \
    "confgrove: large.cfg: a copy beside it can't be written: $too_large" "$complaints"
  cmp large.cfg large.before || fail "size limit $limit loses the file"
done
no_copies "without room"
for command in 'get read.cfg port' 'list large.cfg' 'list --json read.cfg' --help; do
  read -ra words <<<"$command"
  "$tool" "${words[@]}" >/dev/full 2>"$top/complaints"
  equal "full output: $command" 1 "$?"
  equal "full output says so: $command" "confgrove: standard output can't be written" "$(cat "$top/complaints")"
done

complaints=$(ulimit -f 1 && exec "$tool" list large.cfg 2>&1 >"$top/output")
equal "answer beyond the size limit" "1 confgrove: standard output can't be written" "$? $complaints"

# --- Many at once ----------------------------------------------------------------------------

file many.cfg 'k0 = 0\n'
for ((i = 1; i <= 20; i++)); do "$tool" set many.cfg "k$i" "$i" 2>/dev/null & done
wait
equal "no change of twenty is lost" "$(for ((i = 0; i <= 20; i++)); do echo "k$i number $i"; done)" \
  "$("$tool" list many.cfg | sort -V)"
no_copies "at the end"
finish
