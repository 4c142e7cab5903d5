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
comment|0| where\n||get read.cfg port --comment
inline comment|0|shown\n||get read.cfg title --inline
no comment|1||confgrove: read.cfg: no such comment at 'title'\n|get read.cfg title --comment
no section|1||confgrove: read.cfg: no section 'limits.no'\n|get read.cfg limits.no
no value|1||confgrove: read.cfg: no value at 'limits'\n|get read.cfg limits
link in a circle|1||confgrove: read.cfg: no value at 'me'\n|get read.cfg me
no path|1||confgrove: read.cfg: '1x': section cannot begin with number\n|get read.cfg 1x
no file|1||confgrove: none.cfg: no such file\n|get none.cfg a
directory|1||confgrove: .: not a regular file\n|get . a
empty name|1||confgrove: 'work/' names no file\n|get work/ a
list below a path|0|limits block\nlimits.rate array [1.5, 2, 0.1]\nlimits.alias link @limits.rate\nlimits.big number 100000\n||list read.cfg limits
list in an import|0|speed number 5\n||list read.cfg speed
list a missing path|1||confgrove: read.cfg: no section 'no'\n|list read.cfg no
ROWS

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
touch -d '2024-02-03 04:05:06' tree.cfg base.cfg sub/mid.cfg sub/deep.cfg
when='Sat Feb  3 04:05:06 2024'
call "imports" 0 "tree.cfg  $when\n  base.cfg  $when\n  sub/mid.cfg  $when\n    sub/deep.cfg  $when\n" '' \
  imports tree.cfg

# --- Checking --------------------------------------------------------------------------------

file sub/in.cfg 'z = 1\n\ty = "open\n'
file bad.cfg 'a = 1 /* two\nlines */\r\nb = @nope\nw = 0.00\n$import "sub/in"\n'
file out.cfg '$import "away"\n'
call "errors and warnings" 1 '' "bad.cfg:3: error: link to undefined section
    b = @nope
bad.cfg:4: warning: cannot parse number, set to zero
    w = 0.00
sub/in.cfg:2: error: \" outline
     y = \"open
bad.cfg:5: error: cannot parse import file
    \$import \"sub/in\"
out.cfg: cannot open import file:away.cfg
out.cfg:1: error: cannot parse import file
    \$import \"away\"
confgrove: none.cfg: no such file\n" check bad.cfg read.cfg out.cfg none.cfg
file warn.cfg 'w = 0.00\n'
call "warnings are no faults" 0 '' 'warn.cfg:1: warning: cannot parse number, set to zero\n    w = 0.00\n' \
  check warn.cfg
call "without warnings" 0 '0\n' '' get warn.cfg w
for command in 'get bad.cfg a' 'set bad.cfg a 2' 'format bad.cfg' 'unset bad.cfg a' 'rename bad.cfg a c'; do
  cp bad.cfg bad.before
  read -ra words <<<"$command"
  "$tool" "${words[@]}" >"$top/output" 2>"$top/complaints"
  equal "a faulty file: $command" 1 "$?"
  equal "a faulty file says so: $command" 'bad.cfg:3: error: link to undefined section' \
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
  holds "set in '$name'" "$name" 'v = 2\n'
  call "get from '$name'" 0 '2\n' '' get -- "$name" v
  equal "no file but '$name'" "$(cat "$top/before")" "$(ls -A . a.b ' d')"
  file "$name" 'v='
  "$tool" check -- "$name" 2>"$top/complaints" && fail "check of '$name'"
  equal "a fault in '$name'" "$name:1: error: expected number or \"string\" (may be array) after '='" \
    "$(head -1 "$top/complaints")"
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
while IFS= read -r arguments; do
  read -ra words <<<"$arguments"
  "$tool" "${words[@]}" >"$top/output" 2>"$top/complaints"
  equal "wrong call '$arguments'" 2 "$?"
  equal "no answer to '$arguments'" '' "$(cat "$top/output")"
  [[ -s $top/complaints ]] || fail "no complaint about '$arguments'"
done <<'ROWS'

nonsense
get
get w.cfg
get w.cfg a b
get w.cfg a --type --comment
check
check --nonsense w.cfg
set w.cfg a
set w.cfg a 1 x
set w.cfg a @1
set w.cfg a @b @c
set w.cfg a x y --string
set w.cfg a x --string --link
rename w.cfg a
ROWS
holds "wrong calls" w.cfg 'a = 1\n'
for command in '' check get list imports set format unset rename; do
  "$tool" ${command:+"$command"} --help >"$top/output" 2>"$top/complaints" || fail "help of '$command'"
  grep -q "Usage: confgrove${command:+ $command}" "$top/output" || fail "help of '$command' lacks its usage"
done
"$tool" --version | grep -Eq '^confgrove [0-9]+\.[0-9]+\.[0-9]+$' || fail "version"

# --- Changing --------------------------------------------------------------------------------

# Each row: a file, the call with FILE for its name, and the file afterwards. The marks of the
# shell hold in the call.
while IFS='|' read -r note before arguments after; do
  file c.cfg "$before"
  eval "words=(${arguments//FILE/c.cfg})"
  call "$note" 0 '' '' "${words[@]}"
  holds "$note" c.cfg "$after"
  call "$note: canonical" 0 '' '' format --check c.cfg
done <<'ROWS'
number|a=1|set FILE a 2|a = 2\n
negative number|a=1|set FILE a -2.5e-3|a = -0.0025\n
signs and letters of a number|a=1|set FILE a +1d3|a = 1000\n
array|a=1|set FILE a 1 .5 -3|a = [1,0.5,-3]\n
text|a=1|set FILE a 'one two'|a = "one two"\n
empty text|a=1|set FILE a ''|a = ""\n
text that looks like a number|a=1|set FILE --string a 12|a = "12"\n
text that looks like a link|a=1|set FILE --string a @b|a = "@b"\n
no number|a=1|set FILE a 1e|a = "1e"\n
no number either|a=1|set FILE a inf|a = "inf"\n
brackets are text|a=1|set FILE a '[1,2]'|a = "[1,2]"\n
names of commands are text|a=1|set FILE a list|a = "list"\n
plus signs|a=1|set FILE a ++|a = "++"\n
dashes|a=1|set FILE a -- --b|a = "--b"\n
link|a=1 b=2|set FILE b @a|a = 1\nb = @a\n
link without a sign|a=1 b=2|set FILE --link b a|a = 1\nb = @a\n
new path|a=1|set FILE b.c.d 2|a = 1\nb\n{\n\tc\n\t{\n\t\td = 2\n\t}\n}\n
block gets a value|a { b = 1 }|set FILE a 2|a = 2\n{\n\tb = 1\n}\n
in place of a link|a = 1 b = @a\n|set FILE b 2|a = 1\nb = 2\n
over an import|$import "base"\na=1|set FILE speed 6|\n$import "base"\n\na = 1\nspeed = 6\n
comments|a=1|set FILE a --comment $' one\n two' --inline ' three'|# one\n# two\na = 1 # three\n
value and comment|a=1|set FILE b 2 --comment=c|a = 1\n\n#c\nb = 2\n
inline comment goes|a=1 #c\n|set FILE a --inline ''|a = 1\n
Cyrillic name|a=1|set FILE имя 2|a = 1\n\xe8\xec\xff = 2\n
unset|a=1 b=2 c=3|unset FILE b|a = 1\nc = 3\n
unset with all below|a=1 b=2 { c=3 }|unset FILE b|a = 1\n
unset what is below a value|a=1 { c=3 }|unset FILE a.c|a = 1\n
unset a blank section|a=1 b { }|unset FILE b|a = 1\n
unset the last|a=1|unset FILE a|
rename|a=1 b=2 c=3|rename FILE b d|a = 1\nd = 2\nc = 3\n
rename below|a { b=2 #c\n}|rename FILE a.b c|a\n{\n\tc = 2 #c\n}\n
rename to itself|a=1|rename FILE a a|a = 1\n
format|a=1{b=[1 2,]}c=@a.b\n|format FILE|a = 1\n{\n\tb = [1,2]\n}\nc = @a.b\n
format of nothing||format FILE|
comment of a section|x { # c\ny=1}|format FILE|x\n{\n\t# c\n\ty = 1\n}\n
directive moves to the head|a=1\n$import "base"\nb=@speed\n|format FILE|\n$import "base"\n\na = 1\nb = @speed\n
imports in order|$import "sub/deep" $import "base"|format FILE|\n$import "base"\n$import "sub/deep"\n\n
head comment|#h\n$import "base"\n#c\na=1|format FILE|#h\n\n$import "base"\n\n#c\na = 1\n
link into an import, below a value|limits=6 a=1 $import "base"\nz=@limits.far\n|set FILE a 2|\n$import "base"\n\nlimits = 6\n{\n}\na = 2\nz = @limits.far\n
CR LF|a=1\r\nb=2\r\n|format FILE|a = 1\nb = 2\n
comments given up|/* b */ a=1 /* c */\n# d\n|format --allow-comment-loss FILE|a = 1\n
head comment given up|#h\n$import "base"\n$import "sub/deep"\na=1|format --allow-comment-loss FILE|\n$import "base"\n$import "sub/deep"\n\na = 1\n
ROWS
no_copies "after changes"

# What is refused, and why. Nothing is written.
while IFS='|' read -r note before arguments complaints; do
  file r.cfg "$before"
  eval "words=(${arguments//FILE/r.cfg})"
  call "$note" 1 '' "${complaints//FILE/r.cfg}" "${words[@]}"
  holds "$note" r.cfg "$before"
done <<'ROWS'
digits|a=1234567\nb=1|set FILE b 2|confgrove: FILE: 'a': 1234567 would become 1234570; six digits of a number are kept\nconfgrove: FILE: left as it is\n
digits in an array|a=[1 2.0000001]\n|format FILE|confgrove: FILE: 'a': 2.0000001 would become 2; six digits of a number are kept\nconfgrove: FILE: left as it is\n
digits of a new value|a=1|set FILE b 0.1234567|confgrove: FILE: 'b': 0.1234567 would become 0.123457; six digits of a number are kept\nconfgrove: FILE: left as it is\n
infinity|a=1e999\n|format FILE|FILE (as it would be written):1: error: expected number or "string" (may be array) after '='\n    a = inf\nconfgrove: FILE: left as it is: what would be written can't be read\n
blank section|a=1 b { }|format FILE|confgrove: FILE: 'b' would be lost: it has neither a value nor sections below it\nconfgrove: FILE: left as it is\n
nothing but a blank section|b #c\n|format FILE|confgrove: FILE: 'b' would be lost: it has neither a value nor sections below it\nconfgrove: FILE: left as it is\n
last of a block|a { b=1 }|unset FILE a.b|confgrove: FILE: 'a' would be lost: it has neither a value nor sections below it\nconfgrove: FILE: left as it is\n
comment of nothing|a=1|set FILE b --comment c|confgrove: FILE: 'b' would be lost: it has neither a value nor sections below it\nconfgrove: FILE: left as it is\n
target of a link|a=1 b=@a\n|unset FILE a|FILE (as it would be written):1: error: link to undefined section\n    b = @a\nconfgrove: FILE: left as it is: what would be written can't be read\n
target of a link renamed|a=1 b=@a\n|rename FILE a c|FILE (as it would be written):2: error: link to undefined section\n    b = @a\nconfgrove: FILE: left as it is: what would be written can't be read\n
link to what comes later|a=1 b=1|set FILE a @b|FILE (as it would be written):1: error: link to undefined section\n    a = @b\nconfgrove: FILE: left as it is: what would be written can't be read\n
block comment|a=1\n/* c */|set FILE a 2|confgrove: FILE: line 2: the block comment would be lost\nconfgrove: FILE: left as it is; --allow-comment-loss would go on\n
block comment in an array|a=[1 /* 2 */]|format FILE|confgrove: FILE: line 1: the block comment would be lost\nconfgrove: FILE: left as it is; --allow-comment-loss would go on\n
last comment|a=1\n#c\n|format FILE|confgrove: FILE: line 2: the comment '#c' belongs to no section and would be lost\nconfgrove: FILE: left as it is; --allow-comment-loss would go on\n
comment without a line end|a=1\n#c|format FILE|confgrove: FILE: line 2: the comment '#c' belongs to no section and would be lost\nconfgrove: FILE: left as it is; --allow-comment-loss would go on\n
comment at the end of a block|a { b=1\n#c\n}|format FILE|confgrove: FILE: line 2: the comment '#c' belongs to no section and would be lost\nconfgrove: FILE: left as it is; --allow-comment-loss would go on\n
second inline comment|a=1 #c\n{b=1} #c\n|format FILE|confgrove: FILE: line 2: the comment '#c' belongs to no section and would be lost\nconfgrove: FILE: left as it is; --allow-comment-loss would go on\n
head comment of two imports|$import "base"\n#h\n$import "sub/deep"\n|format FILE|confgrove: FILE: the comment at the head would be lost or changed\nconfgrove: FILE: left as it is; --allow-comment-loss would go on\n
slashes|// c = 1\n|format --allow-comment-loss FILE|confgrove: FILE: line 1: '//' is passed over by the reader and would be lost\nconfgrove: FILE: left as it is\n
name at the end|a=1 b|format --allow-comment-loss FILE|confgrove: FILE: line 1: 'b' is passed over by the reader and would be lost\nconfgrove: FILE: left as it is\n
string at the end|a=1 "b|format --allow-comment-loss FILE|confgrove: FILE: line 1: '"b' is passed over by the reader and would be lost\nconfgrove: FILE: left as it is\n
NUL byte|a=1\0000b=2|format FILE|confgrove: FILE: it holds a NUL byte\nconfgrove: FILE: left as it is\n
quote|a=1|set FILE a 'x"y'|confgrove: a text can't hold a double quote or a line end\n
inline comment of two lines|a=1|set FILE a --inline $'x\ny'|confgrove: FILE: the inline comment of 'a' would be lost or changed\nconfgrove: FILE: left as it is; --allow-comment-loss would go on\n
comment that hides a setting|a=1|set FILE a --comment $'x\rb = 2'|confgrove: FILE: 'b' would appear\nconfgrove: FILE: the comment of 'a' would be lost or changed\nconfgrove: FILE: left as it is\n
comment that hides an import|a=1|set FILE a --comment $'x\r$import "base"'|confgrove: FILE: the imports would change\nconfgrove: FILE: the comment at the head would be lost or changed\nconfgrove: FILE: the comment of 'a' would be lost or changed\nconfgrove: FILE: left as it is\n
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

# --- Format of several files -----------------------------------------------------------------

canonical='#c\na = 1\n\n#d\nb = 2\n'
for name in f1 f2 f3; do file $name.cfg '#c\na=1\n#d\nb=2'; done
file refused.cfg '/**/a=1'
call "check of several" 1 '' 'confgrove: f1.cfg: not in canonical form
confgrove: refused.cfg: line 1: the block comment would be lost
confgrove: refused.cfg: left as it is; --allow-comment-loss would go on
confgrove: f2.cfg: not in canonical form\n' format --check f1.cfg refused.cfg f2.cfg
call "diff" 0 '--- f1.cfg
+++ f1.cfg (canonical)
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
"$tool" format f1.cfg refused.cfg f2.cfg f3.cfg 2>/dev/null
equal "one of several is refused" 1 "$?"
for name in f1 f2 f3; do holds "whatever the order" $name.cfg "$canonical"; done
call "all canonical" 0 '' '' format --check f3.cfg f2.cfg f1.cfg
call "no difference" 0 '' '' format --diff f3.cfg
touch -d '2024-02-03 04:05:06' f1.cfg
inode=$(stat -c '%i %Y' f1.cfg)
call "canonical already" 0 '' '' format f1.cfg
equal "a canonical file isn't written" "$inode" "$(stat -c '%i %Y' f1.cfg)"

# --- What stands around a file ---------------------------------------------------------------

mkdir links real
file links/near.cfg 'n = 1\n'
file real/version2 '$import "near"\na = @n\n'
chmod 640 real/version2
ln -s ../real/version2 links/app.cfg
ln -s links other
for name in links/app.cfg other/app.cfg "$PWD/other/app.cfg"; do
  call "through a link: $name" 0 '' '' set "$name" v "$name"
  holds "through a link" real/version2 "\n\$import \"near\"\n\na = @n\nv = \"$name\"\n"
done
equal "the link stays" ../real/version2 "$(readlink links/app.cfg)"
equal "the mode stays" 640 "$(stat -c %a real/version2)"
ln -s nowhere dangling.cfg
call "link to nowhere" 1 '' 'confgrove: dangling.cfg: no such file\n' set dangling.cfg a 1
ln -s /dev/full full.cfg
call "device" 1 '' 'confgrove: full.cfg: not a regular file\n' set full.cfg a 1

# Permissions don't bind root, who tests them as somebody else.
if ((EUID == 0)); then
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
equal "read-only file" "1 confgrove: closed/c.cfg: Permission denied" "$? $complaint"
chmod 666 closed/c.cfg
complaint=$(as_nobody set closed/c.cfg a 2 2>&1)
equal "closed directory" "1 confgrove: closed/c.cfg: a copy can't be made: Permission denied" "$? $complaint"
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
    "confgrove: large.cfg: left as it is: a copy can't be written in full; is there room?" "$complaints"
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
for ((i = 1; i <= 20; i++)); do "$tool" set many.cfg "k$i" "$i" & done
wait
equal "no change of twenty is lost" "$(for ((i = 0; i <= 20; i++)); do echo "k$i number $i"; done)" \
  "$("$tool" list many.cfg | sort -V)"
no_copies "at the end"
finish
