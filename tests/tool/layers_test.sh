#!/usr/bin/env bash
# Tests diff and flatten: layers_test TOOL
source "$(dirname "$0")/common.sh"

# --- diff: OLD, NEW, the lines that come of them, and options ------------------------------------

# differs NOTE OLD NEW LINES OPTION...
differs() {
  local note=$1 code=0
  [[ -n $4 ]] && code=1
  file old.cfg "$2\n"
  file new.cfg "$3\n"
  call "diff: $note" "$code" "$4" '' diff old.cfg new.cfg "${@:5}"
}

file base.cfg 'a = 1 b { c = "x" } #in base\n'
differs "layout" 'a = 1.50 b { c = "x" }' '#new\nb\n{ /* y */\n c="x" #here\n} a=15e-1' ''
differs "order and depth" 'a = 1 b { c = 2 }' 'b { c = 3 d { e = [1] } } f = @b.c' \
  '- a number 1\n~ b.c number 2 -> number 3\n+ b.d block\n+ b.d.e number 1\n+ f link @b.c\n'
differs "kinds" 'a = "1" b = 1 c = @b d = 1 e = [1 2] f = 1 { g = 1 }' \
  'a = 1 b = 1 c = 1 d = "" e = [1 2 3] f { g = 1 }' \
  '~ a string "1" -> number 1\n~ c link @b -> number 1\n~ d number 1 -> string ""
~ e array [1, 2] -> array [1, 2, 3]\n~ f number 1 -> block\n'
differs "what is imported and hidden" '$import "base" a = 2' 'a = 2 b { c = "x" }' ''
differs "what is no longer hidden" '$import "base" a = 2' '$import "base"' \
  '~ a number 2 -> number 1\n'
differs "comments" '#one\na = 1 #x\n' '#two\n#"\na = 1\n' \
  '~ a comment "one\\n" -> "two\\n\\"\\n"\n~ a inline comment "x" -> ""\n' --comments
differs "the comment of the head" '#one\n$import "base"' '#two\n$import "base"' \
  '~ (head) comment "one\\n" -> "two\\n"\n' --comments
differs "json" 'a = 1 b = @a c { }' '#n\na = 1 b = [1 2] d = "\xfc"' \
  '{"path":"b","change":"changed","old":{"kind":"link","target":"a"},"new":{"kind":"array","value":[1,2]}}
{"path":"c","change":"removed","old":{"kind":"none"}}
{"path":"d","change":"added","new":{"kind":"string","value":"\xd1\x8c"}}\n' --json
differs "json with comments" 'a = 1' '#n\na = 1' \
  '{"path":"a","change":"changed","old":{"kind":"number","value":1},"new":{"kind":"number","value":1,"comment":"n\\n"}}\n' \
  --json --comments
call "diff: a file that isn't there" 1 '' 'confgrove: none.cfg: no such file\n' \
  diff old.cfg none.cfg
file "$top/input" '$import "base"\na = 2\n'
call "diff: standard input as the old file" 1 '~ a number 2 -> number 1\n- b block\n- b.c string "x"\n' '' \
  diff - old.cfg <"$top/input"
call "diff: standard input as the new file" 1 '~ a number 1 -> number 2\n+ b block\n+ b.c string "x"\n' '' \
  diff old.cfg - <"$top/input"
call "diff: standard input twice" 2 '' 'confgrove: -: standard input is one file, and diff compares two\n' \
  diff - - <"$top/input"
file faulty.cfg 'a = }'
"$tool" diff faulty.cfg old.cfg >"$top/output" 2>"$top/complaints"
equal "diff: a faulty file: exit code and output" "1 " "$? $(cat "$top/output")"
grep -q '^faulty.cfg:1:5: error' "$top/complaints" || fail "diff: a faulty file is shown"

# --- flatten -------------------------------------------------------------------------------------

# flat NOTE TEXT WANTED
flat() {
  file app.cfg "$2\n"
  call "flatten: $1" 0 "$3" '' flatten app.cfg
}

# refused NOTE TEXT REASON
refused() {
  file app.cfg "$2\n"
  call "flatten: $1" 1 '' "confgrove: app.cfg: can't be flattened: $3\n" flatten app.cfg
}

file base.cfg '#of base\n$import "deep"\n\n#how often\nrate = [1 2.5] #per s\nb { x = "t" y = 1e999 }'
file deep.cfg 'rate = 3 { max = -1e-7 } deep { } far = @rate.max\n'
flat "alone" '#c\na = 1 #i\n#d\nb = 2 { c = @a }' '#c\na = 1 #i\n\n#d\nb = 2\n{\n\tc = @a\n}\n'
flat "what each file adds" '# head */ \n$import "base"\nb = 5 { y = 0 }' '/* head * /  */

b = 5\n{\n\ty = 0\n\tx = "t" /* base.cfg:6 */\n}

#how often\nrate = [1,2.5] /* base.cfg:5 */ #per s\n{\n\tmax = -1e-07 /* deep.cfg:1 */\n}
deep /* deep.cfg:1 */\n{\n}\nfar = @rate.max /* deep.cfg:1 */\n'
flat "an infinity" '$import "base" rate { max = 1 } far = 1 deep = 1 b { x = 1 }' 'rate\n{\n\tmax = 1\n}
far = 1\ndeep = 1\nb\n{\n\tx = 1\n\ty = 1e999 /* base.cfg:6 */\n}\n'
file base.cfg 'a { b = 1 c = 2 } d = 3'
flat "links come behind their targets" '$import "base" x { y = @d } z = @x.y a { e = @a.b }' \
  'd = 3 /* base.cfg:1 */\nx\n{\n\ty = @d\n}\nz = @x.y
a\n{\n\tb = 1 /* base.cfg:1 */\n\te = @a.b\n\tc = 2 /* base.cfg:1 */\n}\n'
flat "a link to itself and what is around it" '$import "base" a = @a { f = @a }' 'a = @a\n{\n\tf = @a
\tb = 1 /* base.cfg:1 */\n\tc = 2 /* base.cfg:1 */\n}\nd = 3 /* base.cfg:1 */\n'
file "$top/input" '$import "base"\ne = @d\n'
call "flatten: standard input" 0 'd = 3 /* base.cfg:1 */
e = @d\na /* base.cfg:1 */\n{\n\tb = 1 /* base.cfg:1 */\n\tc = 2 /* base.cfg:1 */\n}\n' '' flatten - <"$top/input"
file "$top/input" 'a = @b\n'
call "flatten: standard input with a fault" 1 '' "-:1:5: error: link to undefined section [undefined-link]
    1 | a = @b
      |     ^^ no section 'b'\n" flatten - <"$top/input"
equal "no copy of standard input stays" '' "$(find . -name '.confgrove-*')"
refused "a link to below itself" '$import "base" a = @a.b' \
  "'a' leads to 'a.b', which would stand below it"
refused "two blocks that need each other" '$import "base"\ng = @d n { m = @a.b }\na { k = @n.m }' \
  "a link has to stand behind what it leads to, and there is no such order for the links 'a.k' (app.cfg:3) to 'n.m', 'n.m' (app.cfg:2) to 'a.b'"

file app.cfg 'a\0b = 1'
call "flatten: a name that no path leads to" 1 '' \
  "confgrove: app.cfg: no path leads to 'a␀b', in whose name there is a NUL\n" flatten app.cfg
file base.cfg 'a = 1'
if [[ -d /proc/self ]]; then # where nobody can make a file
  complaint=$(TMPDIR=/proc "$tool" flatten base.cfg 2>&1)
  equal "flatten: nothing that isn't read back is printed" \
    "1 confgrove: base.cfg: can't be flattened: no copy to read back can be made: No such file or directory" \
    "$? $complaint"
fi

# --- Generated layers: every path reads the same from the flat file ------------------------------

python3 - "$tool" "$seeds" <<'END' || fail "generated layers"
import itertools
import random
import subprocess
import sys

TOOL, SEEDS = sys.argv[1], int(sys.argv[2])
NAMES, LAYERS = "abc", {"top": ["low", "mid"], "mid": ["deep"], "deep": [], "low": []}
PATHS = [".".join(p) for n in (1, 2, 3) for p in itertools.product(NAMES, repeat=n)]


def call(*arguments):
    done = subprocess.run([TOOL, *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    return done.returncode, done.stdout, done.stderr


def block(above, known, depth):
    """Statements; what they make is added to `known`, which links lead to."""
    text = ""
    for name in random.sample(NAMES, random.randint(0 if depth else 1, 3)):
        path = above + name
        value = random.choice(["", "", "1", '"t%d"' % random.randint(0, 9), "[1 2 3]", "link", "link"])
        if value == "link":
            value = "@" + random.choice(sorted(known | {path}))
        known.add(path)
        text += random.choice(["", f"#{random.randint(0, 9)} of {path}\n"]) + name + (value and " = " + value)
        text += random.choice(["", " # behind"]) + "\n"
        if not value or random.random() < 0.5:
            text += "{\n" + (block(path + ".", known, depth + 1) if depth < 2 else "") + "}\n"
    return text


def write(name):
    known = set().union(*map(write, LAYERS[name]))
    imports = "".join(f'$import "{other}"\n' for other in LAYERS[name])
    text = imports + block("", known, 0)
    open(name + ".cfg", "w").write(text)
    return known


def answers(file, option):
    """What is printed for all paths, and which of them have no answer. Blocks may be in several files."""
    code, text, complaints = call("get", *option, file, *PATHS)
    complaints = [line.replace(file, "").split("; the nearest")[0] for line in complaints.splitlines()]
    return code, text.replace("block\n", "none\n"), complaints


flattened = refused = 0
for seed in range(SEEDS):
    random.seed(seed)
    write("top")
    code, text, complaint = call("flatten", "top.cfg")
    if code:
        refused += 1
        assert "can't be flattened" in complaint and not text, (seed, complaint)
        continue
    flattened += 1
    open("flat.cfg", "w").write(text)
    assert call("diff", "--comments", "top.cfg", "flat.cfg") == (0, "", ""), seed
    for option in [], ["--type"], ["--comment"], ["--inline"]:
        wanted, found = answers("top.cfg", option), answers("flat.cfg", option)
        assert wanted == found, (seed, option, wanted, found)
assert flattened > SEEDS / 3, (flattened, refused)
print(f"{flattened} layers flattened, {refused} refused")
END

finish
