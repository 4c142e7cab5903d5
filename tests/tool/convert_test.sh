#!/usr/bin/env bash
# confgrove convert: what comes out for each format, and what is refused. What comes out is a sound
# file to the reader.
source "$(dirname "$0")/common.sh" "$1"

# --- Sound files: note|format|file|output|what is said ------------------------------------------

while IFS='|' read -r note format text output notes; do
  file in "$text"
  call "$note" 0 "$output" "$notes" convert in --from "$format"
  cp "$top/output" out.cfg
  call "$note: read back" 0 '' '' check out.cfg
done <<'END'
nothing|json|{}||
each kind, in the order of the file|json|{"z": 1, "a": "t", "b": {"on": true, "off": false, "c": {"d": -0.5}}}|z = 1\na = "t"\nb\n{\n\ton = 1\n\toff = 0\n\tc\n\t{\n\t\td = -0.5\n\t}\n}\n|
arrays|json|{"a": [1, 2.5, true], "one": [7]}|a = [1,2.5,1]\none = [7]\n|
numbers with all their digits|json|{"a": 0.1, "b": 9007199254740992, "c": 123456.789, "d": 18446744073709549568}|a = 0.1\nb = 9007199254740992\nc = 123456.789\nd = 18446744073709549568\n|
Russian names|json|{"\\u041f\\u0440\\u0438\\u0447\\u0430\\u043b": "\\u0451\\u0451"}|\xcf\xf0\xe8\xf7\xe0\xeb = "\xd1\x91\xd1\x91"\n|
libconfig, numbers of all kinds|libconfig|b = { x = 0x10; big = 4294967296L; r = 1.50; };\na = [1, 2];\nl = (1, 2.5);\nt = "x" "y";\nyes = true;\n|b\n{\n\tx = 16\n\tbig = 4294967296\n\tr = 1.5\n}\na = [1,2]\nl = [1,2.5]\nt = "xy"\nyes = 1\n|
INFO, value and block, texts and numbers|info|log info { file "/var/x y" }\nport 8080\nempty\nr -0.5\n|log = "info"\n{\n\tfile = "/var/x y"\n}\nport = 8080\nempty = ""\nr = -0.5\n|
what isn't written as a number is stays a text|info|version 1.10\nzip 00420\nyes true\n|version = "1.10"\nzip = "00420"\nyes = "true"\n|confgrove: version: kept as the text "1.10"; as a number it would be 1.1\nconfgrove: zip: kept as the text "00420"; as a number it would be 420\n
INI, quotes mark a text|ini|; about\nname = "008"\nport=80\n[log]\nfile = /var/x = y\n|name = "008"\nport = 80\nlog\n{\n\tfile = "/var/x = y"\n}\n|
TOML, tables in the order of the file|toml|z = 1_000\n[b]\nz = 0x10\na.c = 1\n[a]\nt = 'C:\\x'\n|z = 1000\nb\n{\n\tz = 16\n\ta\n\t{\n\t\tc = 1\n\t}\n}\na\n{\n\tt = "C:\\x"\n}\n|
TOML, dates become texts|toml|d = 2026-11-23\nt = 07:32:00\nw = 1979-05-27T07:32:00Z\n|d = "2026-11-23"\nt = "07:32:00"\nw = "1979-05-27T07:32:00Z"\n|confgrove: d: kept as the text "2026-11-23"\nconfgrove: t: kept as the text "07:32:00"\nconfgrove: w: kept as the text "1979-05-27T07:32:00Z"\n
END

# --- Refused: note|format|file|what is said ----------------------------------------------------

while IFS='|' read -r note format text refusal; do
  file in "$text"
  call "$note" 1 '' "$refusal" convert in --from "$format"
done <<'END'
all that can't be carried, at once|json|{"a-b": 1, "n": null, "x": {"1": 2, "t": "say \\"hi\\"", "": 3}}|confgrove: n: there is no empty value\nconfgrove: a-b: a name is letters, digits and _, a letter or _ first\nconfgrove: x.1: a name is letters, digits and _, a letter or _ first\nconfgrove: x.t: a text can't hold a double quote, a line end or a NUL\nconfgrove: x."": a name is letters, digits and _, a letter or _ first\n
arrays of other than numbers|json|{"a": {"s": ["x"], "e": [], "n": [[1]], "o": [{"x": 1}], "z": [1, null]}}|confgrove: a.s: an array holds numbers alone\nconfgrove: a.e: there are no empty arrays\nconfgrove: a.n: an array holds numbers alone\nconfgrove: a.o: an array holds numbers alone\nconfgrove: a.z[1]: there is no empty value\n
a name twice|json|{"a": {"b": 1, "b": 2}, "b": 3}|confgrove: b: stands twice in one object\n
a letter that no name has|json|{"\\u0419": 1}|confgrove: \xd0\x99: a name is letters, digits and _, a letter or _ first\n
a whole number that no double is|json|{"a": 9007199254740993, "b": 18446744073709551615}|confgrove: a: no number of ours is exactly 9007199254740993\nconfgrove: b: no number of ours is exactly 18446744073709551615\n
line ends in a text|json|{"a": "x\\ny"}|confgrove: a: a text can't hold a double quote, a line end or a NUL\n
no object|json|[1]|confgrove: in: the whole of it must be an object\n
faulty JSON|json|{"a": 1,\n}|confgrove: in: parse error at line 2, column 1: syntax error while parsing object key - unexpected '}'; expected string literal\n
faulty libconfig|libconfig|a = 1;\nb = ;\n|confgrove: in:2: syntax error\n
a libconfig name with a dash, a list of texts|libconfig|a-b = 1; l = ("x", "y");|confgrove: l: an array holds numbers alone\nconfgrove: a-b: a name is letters, digits and _, a letter or _ first\n
faulty INFO|info|a { b 1\n|confgrove: in:2: unmatched {\n
INFO, a name twice|info|a 1\na 2\n|confgrove: a: stands twice in one block\n
faulty INI|ini|[a]\nb\n|confgrove: in:2: '=' character not found in line\n
INI, a section with a dot|ini|[a.b]\nc = 1\n|confgrove: a.b: a name is letters, digits and _, a letter or _ first\n
faulty TOML|toml|a = 1\nb = \n|confgrove: in:2: Error while parsing key-value pair: expected value, saw '\\n'\n
TOML, infinities and tables in arrays|toml|i = inf\nn = nan\n[[t]]\nx = 1\n|confgrove: i: there is no way to write an infinity or what is no number\nconfgrove: n: there is no way to write an infinity or what is no number\nconfgrove: t: an array holds numbers alone\n
END

file names '{"max-size": 1, "1st": 2, "\xd0\x9f-r\xc3\xa9": 3, "": 4, "\xd0\xb91": {"a b": 5}}'
call "other names" 0 'max_size = 1\n_1st = 2\n\xcf_r_ = 3\n_ = 4\n_1\n{\n\ta_b = 5\n}\n' \
  'confgrove: max-size: is called max_size now\nconfgrove: 1st: is called _1st now
confgrove: \xd0\x9f-r\xc3\xa9: is called \xd0\x9f_r_ now\nconfgrove: "": is called _ now
confgrove: \xd0\xb91: is called _1 now\nconfgrove: \xd0\xb91.a b: is called a_b now\n' \
  convert names --from json --rename
file names '{"a-b": 1, "a_b": 2}'
call "other names, one taken" 1 '' \
  'confgrove: a-b: is called a_b now\nconfgrove: a_b: stands twice in one block\n' \
  convert names --from json --rename
for format in ini info libconfig toml json; do
  "$tool" convert missing --from "$format" >"$top/output" 2>"$top/complaints"
  equal "a missing file, $format: exit code" 1 "$?"
  grep -q '^confgrove: missing: ' "$top/complaints" || fail "a missing file, $format: nothing is said"
done
printf '{"a":%.0s' {1..1001} >deep
printf '1' >>deep
printf '}%.0s' {1..1001} >>deep
call "a file that is too deep" 1 '' 'confgrove: deep: nesting too deep\n' convert deep --from json
call "a format that is none" 2 '' '--from: xml not in {libconfig,info,ini,toml,json}\nRun with --help for more information.\n' convert in --from xml
finish
