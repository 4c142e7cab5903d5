#!/usr/bin/env bash
# Letters of all kinds in arguments, names of files and answers, and a disk that is full: the same on
# each system.
source "$(dirname "$0")/common.sh" "$1"

file c.cfg 'a = 1 # x\r\n'
call "a text" 0 '' "confgrove: c.cfg: 'name' is new\n" set c.cfg name 日本
holds "a text" c.cfg 'a = 1 # x\r\nname = "日本"\r\n'
call "a text" 0 '日本\n' '' get c.cfg name
call "two lines" 0 'a number 1\nname string "日本"\n' '' list c.cfg

file 'жук 設定.cfg' 'a = 1\n'
call "a name" 0 '1\n' '' get 'жук 設定.cfg' a
call "a name" 0 '' '' set 'жук 設定.cfg' a 2
holds "a name" 'жук 設定.cfg' 'a = 2\n'
call "a missing name" 1 '' 'confgrove: 日.cfg: no such file\n' get 日.cfg a

# A disk that is full, as the limit on the size of files stands in for it.
for ((i = 0; i < 400; i++)); do printf 'k%d = %d\n' "$i" "$i"; done >large.cfg
cp large.cfg before.cfg
(ulimit -f 2 && exec "$tool" set large.cfg k0 7) 2>complaint
equal "full disk: exit code" 1 "$?"
cmp -s large.cfg before.cfg || fail "full disk: the file isn't as it was"
[[ -s complaint ]] || fail "full disk: no word of it"
no_copies "full disk"
finish
