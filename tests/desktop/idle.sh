#!/bin/bash
# A program with nothing to do sleeps: it is woken by its caret and its timers, for the frames that they change,
# and by nothing else.
# Use: idle.sh PROGRAM COUNTER-LIBRARY TICKS-A-SECOND
# TICKS-A-SECOND is how often its timers fire, or "caret" for the blinks that it prints.
. "$(dirname "$0")/common.sh"
program=$1 library=$2 ticks=$3
begin "idle.$(basename "$program")"
counts=$pictures/$name.waits
rm -f "$counts"
start "$program" "$(basename "$program")" LD_PRELOAD="$library" WAITS_FILE="$counts"
move 5 600
sleep 2
[ -s "$counts" ] || fail "the counter was not loaded"

# Sleeps and answers of the display so far.
count() { od -An -t u8 -w16 "$counts"; }

seconds=10
read -r sleeps_before frames_before <<<"$(count)"
began=$(date +%s%N) used_before=$(processor_ticks)
sleep $seconds
read -r sleeps frames <<<"$(count)"
elapsed=$(($(date +%s%N) - began)) used=$(($(processor_ticks) - used_before))
sleeps=$((sleeps - sleeps_before)) frames=$((frames - frames_before))

caret=$(sed -n 's/^caret //p' "$log")
[ "$ticks" = caret ] && expected=$((elapsed * 60 / caret / 1000000000)) || expected=$((elapsed * ticks / 1000000000))
say "$(basename "$program"): woken $sleeps times in $seconds s, $frames frames, $expected ticks," \
    "$used hundredths of a second of processor"
kill -0 "$app" || fail "it has ended"

# A tick that comes sooner after a frame than the display refreshes sleeps once more, until its frame may be shown.
[ $frames -le $((expected + 2)) ] || fail "more frames than ticks"
if [ "$ticks" = caret ]; then
    [ $sleeps -ge $((expected - 2)) ] || fail "the caret stands still"
    [ $sleeps -le $((expected + 2)) ] || fail "woken more often than the caret blinks"
else
    [ $sleeps -ge $((expected - 2)) ] || fail "its timers do not fire"
    [ $sleeps -le $((expected + (ticks ? frames + 2 : 0))) ] || fail "woken more often than ticks and frames ask for"
fi
finish
