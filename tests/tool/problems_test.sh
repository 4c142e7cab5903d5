#!/usr/bin/env bash
# Checks each file of tests/problems, and compares what is said of it with the .txt beside it. All
# forms must show the same places.
#
#   problems_test.sh TOOL [--update]    --update makes today's answers the ones to keep to
tool=$(realpath "$1")
top=$(realpath "$(dirname "${BASH_SOURCE[0]}")/../..")
pairs=$top/tests/problems
source "$top/tests/tool/systems.sh"
export LC_ALL=C
failures=0
work=$(mktemp -d)
trap 'rm -r "$work"' EXIT
cp -r "$pairs/." "$work"
cd "$work" || exit 1
for ((i = 1; i <= 100; ++i)); do # one file more than a chain can have
  echo "\$import \"parts/chain$((i + 1))\"" >"parts/chain$i.cfg"
done

# What a person sees, and, where that leaves anything out, all of it in short.
answers() {
  local text all
  text=$("$tool" check "$1" 2>&1)
  printf '$ confgrove check %s\n%s\n(%d)\n' "$1" "$text" "$?"
  all=$("$tool" check --all --format=short "$1" 2>&1)
  [[ $all == *"(follows from "* ]] || return
  printf '$ confgrove check --all --format=short %s\n%s\n' "$1" "$all"
}

short_places() { "$tool" check --all --format=short "$1" | grep -a '\[' | cut -d ' ' -f 1; }
json_places() {
  "$tool" check --format=json "$1" | jq -r 'select(.line > 0) | "\(.file):\(.line):\(.column):"'
}
rendered_places() { "$tool" check --format=json "$1" | jq -r '.rendered' | grep -a '^[a-z].*\]' | cut -d ' ' -f 1; }
sarif_places() {
  "$tool" check --format=sarif "$1" | jq -r '.runs[0].results[].locations[0].physicalLocation |
    "\(.artifactLocation.uri):\(.region.startLine):\(.region.startColumn):"'
}

for file in *.cfg; do
  if [[ ${2-} == --update ]]; then
    answers "$file" >"$pairs/${file%.cfg}.txt"
  elif ! difference=$(diff --label wanted --label found -u "${file%.cfg}.txt" <(answers "$file")); then
    printf 'FAILED: %s\n%s\n' "$file" "$difference"
    failures=$((failures + 1))
  fi
  command -v jq >/dev/null || continue
  for form in $forms; do
    if [[ $(short_places "$file" | head -n 50) != $("${form}_places" "$file" | head -n 50) ]]; then
      printf 'FAILED: %s: the places as %s are others\n' "$file" "$form"
      failures=$((failures + 1))
    fi
  done
done
# Each message of the reader has a pair, and so has each code but that of a file that isn't there.
messages=0
while read -r message; do
  grep -qF -- ": $message [" *.txt || {
    echo "FAILED: no pair has the message $message"
    failures=$((failures + 1))
  }
  messages=$((messages + 1))
done < <(grep -hE '(Report(Error|Warning)|Error|Warning)\(.*"|[?:] "|return "|[a-z_]*fault = "' \
  "$top"/src/lexer/{lexer,number}.cpp "$top"/src/parser/conf_parser.cpp |
  grep -v TraceHandler | grep -oE '"([^"\]|\\.)+"' | sed 's/^"//; s/"$//; s/\\"/"/g')
((messages >= 40)) || failures=$((failures + 1))
codes=0
for code in $(sed -n '/Slugs = /,/};/p' "$top/src/text/codes.cpp" | grep -o '"[a-z-]*"' | tr -d '"'); do
  [[ $code == unreadable ]] || grep -qF "[$code]" *.txt || {
    echo "FAILED: no pair has the code $code"
    failures=$((failures + 1))
  }
  codes=$((codes + 1))
done
((codes >= 38)) || failures=$((failures + 1))

# The pages: the first example of each has its problem, the second has none.
mkdir pages
cd pages || exit 1
echo 'rate = 1' >base.cfg
examples=0
codes=$("$tool" explain)
for code in $codes; do
  page=$("$tool" explain "$code")
  [[ $page == *'```'* ]] || continue
  awk '/^```/ { ++marks; next } marks == 1' <<<"$page" >"bad-$code.cfg"
  awk '/^```/ { ++marks; next } marks == 3' <<<"$page" >"good-$code.cfg"
  [[ $code == cut-off ]] && printf %s "$(<"bad-$code.cfg")" >"bad-$code.cfg"
  examples=$((examples + 1))
done
((examples > 30)) || failures=$((failures + 1))
printf '%s\n' bad-*.cfg | xargs -n 20 "$tool" check --format=short >found # shows no more than 50
for bad in bad-*.cfg; do
  code=${bad#bad-}
  code=${code%.cfg}
  grep -q "^$bad:.*\[$code\]" found || {
    echo "FAILED: the bad example of $code has no such problem"
    failures=$((failures + 1))
  }
  [[ -s good-$code.cfg ]] || {
    echo "FAILED: there is no good example of $code"
    failures=$((failures + 1))
  }
done
if ! "$tool" check good-*.cfg >found 2>&1 || [[ -s found ]]; then
  printf 'FAILED: a good example isn%st sound\n%s\n' "'" "$(<found)"
  failures=$((failures + 1))
fi
for code in $(grep -ohE '\[[a-z]+(-[a-z]+)+\]' "$pairs"/*.txt | tr -d '[]' | sort -u); do
  [[ $'\n'$codes$'\n' == *$'\n'"$code"$'\n'* ]] || {
    echo "FAILED: $code has no page"
    failures=$((failures + 1))
  }
done

((failures == 0)) && echo "all passed" && exit 0
echo "$failures failed"
exit 1
