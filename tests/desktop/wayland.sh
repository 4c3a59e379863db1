#!/bin/bash
# Under a Wayland compositor a window opens, is drawn into, sleeps when nothing happens, and closes.
# Use: wayland.sh PROBE MINIMAL
. "$(dirname "$0")/common.sh"
probe=$1 minimal=$2
command -v weston >/dev/null || { say "SKIPPED: weston is not installed"; exit 77; }
begin wayland
export HOME=$home XDG_RUNTIME_DIR=$home/run
mkdir -m 700 "$XDG_RUNTIME_DIR"
# In a window of our display: without one it has no mouse and no keyboard, for which the window library is not made.
weston --backend=x11-backend.so --use-pixman --no-config --idle-time=0 --socket=wayland-test \
    >"$pictures/$name.weston.log" 2>&1 &
compositor=$!
trap 'kill -KILL $compositor 2>/dev/null' EXIT
until_true 20 test -S "$XDG_RUNTIME_DIR/wayland-test" || { say "SKIPPED: weston does not start here"; end 77; }
unset DISPLAY
export WAYLAND_DISPLAY=wayland-test

timeout 30 "$probe" once >"$log" 2>&1 || fail "the probe ended with status $?"
expect_line 'open on desktop'

"$minimal" >"$log" 2>&1 &
app=$!
sleep 5 # by now it has its window
kill -0 "$app" || fail "$minimal has ended"
ls -l "/proc/$app/fd" | grep -q socket || fail "$minimal does not speak to the compositor"
before=$(waits)
sleep 3
[ $(($(waits) - before)) -le 3 ] || fail "idle, it woke $(($(waits) - before)) times in three seconds"
finish
