#!/usr/bin/env bash
# Kills the tool at random moments of a loop of writes. The file is the old one or the new one.
source "$(dirname "$0")/common.sh" "$1"
wanted_kills=50

for ((i = 0; i < 4000; i++)); do printf 'k%d = %d\n' "$i" 1; done >ones.cfg
sed '1s/1$/2/' ones.cfg >twos.cfg
cp ones.cfg f.cfg

# A whole run, in microseconds: the first guess at the time in which to kill.
start=${EPOCHREALTIME/./}
call "a run that isn't killed" 0 '' '' set f.cfg k0 2
window=$((${EPOCHREALTIME/./} - start))
cmp -s f.cfg twos.cfg || fail "a run that isn't killed writes"

killed=0
changed=0
for ((round = 0; killed < wanted_kills && round < 20 * wanted_kills; round++)); do
  value=$((round % 2 + 1))
  cp f.cfg before.cfg
  "$tool" set f.cfg k0 "$value" &
  delay=$((RANDOM * window / 32768))
  sleep "$((delay / 1000000)).$(printf '%06d' $((delay % 1000000)))"
  kill -9 $! 2>/dev/null
  { wait $!; } 2>/dev/null
  # The window follows the load of the machine, so that kills fall at all moments of a run.
  if (($? == 137)); then
    killed=$((killed + 1))
    window=$((window * 21 / 20))
  else
    window=$((window * 4 / 5))
  fi
  if ((value == 1)); then wanted=ones.cfg; else wanted=twos.cfg; fi
  if cmp -s f.cfg $wanted && ! cmp -s f.cfg before.cfg; then
    changed=$((changed + 1))
  elif ! cmp -s f.cfg before.cfg; then
    fail "round $round: the file is neither the old one nor the new one"
    break
  fi
done
echo "$round rounds: $killed killed, $changed changed the file"
((killed == wanted_kills)) || fail "too few runs were killed"

call "a run after all that" 0 '' '' set f.cfg k0 2
cmp -s f.cfg twos.cfg || fail "a run after all that writes"
finish
