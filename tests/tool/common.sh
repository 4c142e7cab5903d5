# What the tests of the tool share. They are called with the path of the tool.
tool=$(realpath "$1")
source "$(dirname "${BASH_SOURCE[0]}")/systems.sh"
memory=/dev/shm  # where it is there, since each change of a file waits for the disk
[[ -d $memory && -w $memory ]] || memory=${TMPDIR:-/tmp}
top=$(mktemp -d -p "$memory")
trap 'rm -rf "$top"' EXIT
mkdir "$top/work" "$top/scratch"
export TMPDIR=$top/scratch LC_ALL=C
cd "$top/work" || exit 1
failures=0

fail() {
  holds_here "$1" || return 0
  printf 'FAILED: %s\n' "$1"
  failures=$((failures + 1))
}

# equal NOTE WANTED FOUND
equal() {
  [[ "$2" == "$3" ]] && return
  holds_here "$1" || return
  fail "$1"
  printf -- '--- wanted\n%s\n--- found\n%s\n' "$2" "$3"
}

# file NAME TEXT, with the escapes of printf
file() { printf '%b' "$2" >"$1"; }

# The bytes of a file, with a mark that keeps the line ends before it.
bytes() {
  cat -v -- "$1"
  printf '.'
}

# holds NOTE NAME TEXT
holds() {
  file "$top/wanted" "$3"
  equal "$1: bytes of $2" "$(bytes "$top/wanted")" "$(bytes "$2")"
}

# written NOTE NAME TEXT: the same for a file that is written anew, with the system's line ends
written() { holds "$1" "$2" "${3//\\n/$line_end}"; }

# call NOTE CODE OUTPUT COMPLAINTS ARGUMENT...: one call of the tool and all that comes of it
call() {
  local note=$1 code=$2 output=$3 complaints=$4
  shift 4
  "$tool" "$@" >"$top/output" 2>"$top/complaints"
  equal "$note: exit code" "$code" "$?"
  file "$top/wanted" "$output"
  equal "$note: output" "$(bytes "$top/wanted")" "$(bytes "$top/output")"
  file "$top/wanted" "$complaints"
  equal "$note: complaints" "$(bytes "$top/wanted")" "$(bytes "$top/complaints")"
}

no_copies() {
  equal "$1: no copy is left behind" "" "$(find "$top" -name '.?*.??????')"
}

finish() {
  ((failures == 0)) && echo "all passed" && exit 0
  echo "$failures failed"
  exit 1
}
