#!/bin/bash
# The viewer as its user knows it: Next and Previous by mouse and by key, a dialog chosen from the list, the place that
# it keeps, and its close box.
# Use: viewer.sh VIEW RSRC
. "$(dirname "$0")/common.sh"
program=$1 rsrc=$2
begin viewer

cat >"$home/three.r" <<'R'
resource 'DLOG' (200, "First") { {40, 40, 140, 240}, documentProc, visible, noGoAway, 0, 200, "First", noAutoCenter };
resource 'DITL' (200) { { {20, 20, 40, 120}, Button { enabled, "One" } } };
resource 'DLOG' (201, "Second") { {40, 40, 240, 340}, documentProc, visible, noGoAway, 0, 201, "Second", noAutoCenter };
resource 'DITL' (201) { { {20, 20, 40, 120}, CheckBox { enabled, "Two" } } };
resource 'DLOG' (202, "Third") { {40, 40, 340, 440}, documentProc, visible, noGoAway, 0, 202, "Third", noAutoCenter };
resource 'DITL' (202) { { {20, 20, 40, 120}, RadioButton { enabled, "Three" } } };
R
"$rsrc" build "$home/three.r" -o "$home/three.rsrc" || fail "the dialogs cannot be built"

cat >"$home/view" <<S
#!/bin/sh
exec "$program" "$home/three.rsrc"
S
chmod +x "$home/view"

# The content of the dialogs begins at 40,60; which one is shown is told by how far it reaches.
paper='#ECECEC'
shows() { # 1 2 or 3
    local beyond=$((40 + 100 * ($1 + 1) + 10))
    sees $((beyond - 20)) 130 "$paper" && ! sees $beyond 130 "$paper"
}
expect_dialog() { until_true 5 shows "$1" || fail "dialog $1 is not shown after $2"; }

start "$home/view" view
paper=$(pixel 60 120)
expect_dialog 1 "the start"
click 207 718
expect_dialog 2 "Next"
click 207 718
expect_dialog 3 "Next again"
click 207 718
expect_dialog 1 "Next at the end"
click 145 718
expect_dialog 3 "Previous at the beginning"
keys Prior
expect_dialog 2 "Page Up"
keys Next
expect_dialog 3 "Page Down"

click 320 684 # the list opens with the third in its place: the first is two lines above
picture list
move 320 650
picture list
click 320 650
expect_dialog 1 "choosing it in the list"

drag 240 624 540 524 # by the title bar
sleep 0.3
click 354 524 # the close box
expect_exit 0

# It opens again where it was.
start "$home/view" view
expect_dialog 1 "the second start"
click 507 618
expect_dialog 2 "Next, at its new place"
click 690 618 # Quit
expect_exit 0
finish
