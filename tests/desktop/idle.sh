#!/bin/bash
# A program with nothing to do sleeps: it is woken by its caret and its timers and by nothing else.
# Use: idle.sh PROGRAM WAKES-A-SECOND
. "$(dirname "$0")/common.sh"
program=$1 allowed=$2
begin "idle.$(basename "$program")"
start "$program" "$(basename "$program")"
move 5 600
sleep 2

seconds=10
before=$(waits) ticks=$(processor_ticks)
sleep $seconds
woken=$(($(waits) - before)) used=$(($(processor_ticks) - ticks))
say "$(basename "$program"): woken $woken times in $seconds s, $used hundredths of a second of processor"
[ $woken -le $((allowed * seconds + 5)) ] || fail "more than $allowed times a second"
kill -0 "$app" || fail "it has ended"
finish
