#!/usr/bin/env bash
# Kills the tool at random moments of a loop of writes. The file is the old one or the new one.
source "$(dirname "$0")/common.sh" "$1"
rounds=50

for ((i = 0; i < 4000; i++)); do printf 'k%d = %d\n' "$i" 1; done >ones.cfg
sed '1s/1$/2/' ones.cfg >twos.cfg
cp ones.cfg f.cfg

# A whole run, in microseconds, so that the kills fall inside of one.
start=${EPOCHREALTIME/./}
call "a run that isn't killed" 0 '' '' set f.cfg k0 2
run=$((${EPOCHREALTIME/./} - start))
cmp -s f.cfg twos.cfg || fail "a run that isn't killed writes"

killed=0
changed=0
for ((i = 0; i < rounds; i++)); do
  value=$((i % 2 + 1))
  cp f.cfg before.cfg
  "$tool" set f.cfg k0 "$value" &
  sleep "$(printf '0.%06d' $((RANDOM * run * 5 / 4 / 32768)))"
  kill -9 $! 2>/dev/null
  { wait $!; } 2>/dev/null
  (($? == 137)) && killed=$((killed + 1))
  if ((value == 1)); then wanted=ones.cfg; else wanted=twos.cfg; fi
  if cmp -s f.cfg $wanted && ! cmp -s f.cfg before.cfg; then
    changed=$((changed + 1))
  elif ! cmp -s f.cfg before.cfg; then
    fail "round $i: the file is neither the old one nor the new one"
    break
  fi
done
echo "$rounds rounds: $killed killed, $changed changed the file"
((killed >= rounds / 5)) || fail "too few runs were killed to show anything"

call "a run after all that" 0 '' '' set f.cfg k0 2
cmp -s f.cfg twos.cfg || fail "a run after all that writes"
finish
