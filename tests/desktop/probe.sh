#!/bin/bash
# The desktop machine without any manager: keys, text, mouse, scaling, clipboard, idle waits, and how it ends.
# Use: probe.sh PROBE
. "$(dirname "$0")/common.sh"
probe=$1
begin probe

# Without a display a program says how to go on, and only when it wants a screen.
said=$(env -u DISPLAY timeout 20 "$probe" 2>&1) && fail "it ran without a display"
[ "$(echo "$said" | grep -c LAMPBLACK_SCREEN=headless)" = 1 ] || fail "without a display it said: $said"
env -u DISPLAY timeout 20 "$probe" no-screen >/dev/null || fail "a program without a screen needs a display"
env -u DISPLAY LAMPBLACK_SCREEN=headless timeout 20 "$probe" once >/dev/null || fail "it did not run headless"
said=$(env DISPLAY=:9999 timeout 20 "$probe" 2>&1) && fail "it ran on a display that is not there"
echo "$said" | grep -q LAMPBLACK_SCREEN=headless || fail "with a wrong display it said: $said"

start "$probe" Probe PROBE_PICTURE="$pictures/probe.saved.png"
expect_pixel 2 2 '#FF0000'
expect_pixel 317 2 '#00FF00'
expect_pixel 2 197 '#0000FF'
expect_pixel 317 197 '#FFFFFF'

click 30 40
expect_line 'down where=30,40 button=1 clicks=1'
xdotool click 1
expect_line 'down where=30,40 button=1 clicks=2'
xdotool click 3
expect_line 'down where=30,40 button=2 clicks=1'
xdotool click 5
expect_line 'wheel where=30,40'
drag 100 100 150 120
expect_line 'up where=150,120'

keys a shift+a Return Left
expect_line 'keydown .* key=00 modifiers=0000 text=0061'
expect_line 'keydown .* key=00 modifiers=0200 text=0041'
expect_line 'keydown .* key=24 modifiers=0000 text=000D'
expect_line 'keydown .* key=7B modifiers=0000 text=001C'
keys ctrl+g super+c alt+k
expect_line 'keydown .* key=05 modifiers=0100 text=0067'
expect_line 'keydown .* key=08 modifiers=1000 text=0003'
expect_line 'keydown .* key=28 modifiers=0800 text=006B'
keys dead_acute e
expect_line 'keydown .* key=0E .*text=00E9'

keys c v
expect_line 'copied=1'
expect_line 'clipboard=from the probe serial=0'
keys w
expect_line woken
keys t b s
expect_line 'saved=1'
[ "$(convert "$pictures/probe.saved.png" -crop 1x1+317+2 +repage -depth 8 txt:- | tail -1 | grep -o '#[0-9A-F]*')" = '#00FF00' ] ||
    fail "the saved picture is another"

# Twice the size is sharp, another shape is centred, and the mouse is exact in both.
xdotool windowsize --sync "$window" 640 400
expect_pixel 39 39 '#FF0000'
expect_pixel 40 39 '#0C0C0C'
click 639 399
expect_line 'down where=319,199'
xdotool windowsize --sync "$window" 480 400
expect_pixel 240 20 '#000000'
expect_pixel 3 53 '#FF0000'
click 479 349
click 0 50
expect_line 'down where=0,0 '
picture letterbox
xdotool windowsize --sync "$window" 320 200
expect_pixel 317 2 '#00FF00'

# Beeps are over; nothing may wake the program now.
sleep 1
before=$(waits) ticks=$(processor_ticks)
sleep 3
[ $(($(waits) - before)) -le 1 ] || fail "idle, it woke $(($(waits) - before)) times in three seconds"
[ $(($(processor_ticks) - ticks)) -le 1 ] || fail "idle, it used the processor"

# Another program copies.
env HOME="$home" PROBE_COPY="from elsewhere" "$probe" copy >/dev/null &
other=$!
sleep 1
xdotool windowfocus "$window"
keys v
expect_line 'clipboard=from elsewhere serial=1'
kill $other 2>/dev/null

keys Escape
expect_line '^end'
expect_exit 0
finish
