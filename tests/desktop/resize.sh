#!/bin/bash
# The window is resized while a program draws into its memory sixty times a second: at every size the screen is in its
# place, pixel by pixel, black is around it, and the mouse hits what it points at.
# Use: resize.sh PATTERN
. "$(dirname "$0")/common.sh"
program=$1
begin resize
truth=$pictures/$name.truth.png
"$program" "$truth" || fail "the pattern cannot be drawn without a display"
[ "$(identify -format '%wx%h' "$truth")" = 640x480 ] || fail "the pattern has another size"

start "$program" pattern
xdotool windowmove "$window" 0 0 # where all of it is seen at any size

# expected WIDTH HEIGHT HOW: what a window of that size shows; HOW enlarges the screen.
expected() {
    convert "$truth" $3 -background black -gravity center -extent "$1x$2" "$pictures/$name.expected.png"
}
matches() {
    picture now
    [ "$(compare -metric AE "$pictures/$name.now.png" "$pictures/$name.expected.png" null: 2>&1)" = 0 ]
}
near() { # within PERCENT of what another way of smoothing finds for each pixel
    picture now
    [ "$(compare -fuzz "$1%" -metric AE "$pictures/$name.now.png" "$pictures/$name.expected.png" null: 2>&1)" = 0 ]
}
hits() { grep -c '^hit' "$log"; }
more_hits() { [ "$(hits)" -gt "$1" ]; }

# click_button WIDTH HEIGHT: the middle of the button, and then a point beside it, which must not hit.
click_button() {
    local scale before left top
    scale=$(awk -v w="$1" -v h="$2" 'BEGIN { a = w / 640; b = h / 480; print a < b ? a : b }')
    read -r left top middle_x middle_y beside_y <<<"$(awk -v w="$1" -v h="$2" -v s="$scale" 'BEGIN {
        l = (w - 640 * s) / 2; t = (h - 480 * s) / 2
        printf "%d %d %d %d %d", l, t, l + 320.5 * s, t + 232.5 * s, t + 260.5 * s }')"
    before=$(hits)
    click "$middle_x" "$middle_y"
    until_true 5 more_hits "$before" || fail "at $1x$2, a click at $middle_x,$middle_y missed the button"
    before=$(hits)
    click "$middle_x" "$beside_y"
    sleep 0.2
    [ "$(hits)" = "$before" ] || fail "at $1x$2, a click at $middle_x,$beside_y hit the button"
}
# at_size WIDTH HEIGHT HOW: this size now.
at_size() {
    expected "$@"
    until_true 5 matches || fail "at $1x$2 the window shows something else"
    click_button "$1" "$2"
}
managed() { xprop -id "$window" WM_STATE | grep -q Normal; }
resize() { xdotool windowsize --sync "$window" "$1" "$2"; }

at_size 640 480 ''
for size in 800x480 640x600 641x481 900x480; do # the screen has its own size, and margins
    resize "${size%x*}" "${size#*x}"
    at_size "${size%x*}" "${size#*x}" ''
done
resize 1280 960
at_size 1280 960 '-sample 200%'
resize 1280 1000
at_size 1280 1000 '-sample 200%'

resize 960 720 # smoothed
expected 960 720 '-filter Triangle -resize 150%'
until_true 5 near 10 || fail "at 960x720 the window shows something else"
click_button 960 720
resize 320 240
expected 320 240 '-filter Box -resize 50%'
until_true 5 near 30 || fail "at 320x240 the window shows something else"
click_button 320 240

# As fast as a user drags its corner, never waiting.
for step in $(seq 1 60); do
    xdotool windowsize "$window" $((600 + step * 7 % 300)) $((450 + step * 13 % 250))
done
resize 800 600
expected 800 600 '-filter Triangle -resize 125%'
until_true 5 near 10 || fail "after many sizes the window shows something else"
resize 720 480
at_size 720 480 ''
resize 640 480
at_size 640 480 ''

# F11 is the whole display and back; it takes a window manager, which comes last, since it puts a frame around the window.
if command -v openbox >/dev/null; then
    openbox >/dev/null 2>&1 &
    manager=$!
    until_true 10 managed || fail "the window manager did not start"
    xdotool windowactivate --sync "$window" 2>/dev/null
    keys F11
    at_size 1280 1024 '-sample 200%'
    keys F11
    at_size 640 480 ''
    kill $manager
else
    say "F11 is left out: openbox is not installed"
fi
finish
