#!/bin/bash
# The gallery as its user knows it: moves the window by its title bar, sets a check box, types a name, has it greeted,
# opens the second window, and ends with OK. Where things are is read from the gallery's own resources.
# Use: gallery.sh GALLERY GALLERY.R
. "$(dirname "$0")/common.sh"
gallery=$1 resources=$2
begin gallery

# place KIND ID: the rectangle of a resource as "top left bottom right".
place() {
    awk -v start="resource '$1' ($2" '
        index($0, start) { inside = 1 }
        inside && match($0, /\{ *-?[0-9]+, *-?[0-9]+, *-?[0-9]+, *-?[0-9]+ *\}/) {
            print substr($0, RSTART + 1, RLENGTH - 2); exit
        }' "$resources" | tr -d ','
}

# find_content: sets left and top to where the window's white content is on the screen, below the menu bar.
find_content() {
    picture now
    local box
    box=$(convert "$pictures/$name.now.png" -crop 0x0+0+24 +repage -fill black +opaque white -format '%@' info:)
    left=$(echo "$box" | cut -d+ -f2)
    top=$(($(echo "$box" | cut -d+ -f3) + 24))
    [ "${box%%+*}" = "$width"x"$height" ]
}
set -- $(place DLOG kGalleryWindow)
[ $# = 4 ] || fail "no window in $resources"
width=$(($4 - $2)) height=$(($3 - $1))

# at CONTROL: its middle on the screen, as "x y".
at() {
    set -- $(place CNTL "$1")
    echo $((left + ($2 + $4) / 2)) $((top + ($1 + $3) / 2))
}
# area CONTROL: its rectangle on the screen as convert writes it.
area() {
    set -- $(place CNTL "$1")
    echo "$(($4 - $2))x$(($3 - $1))+$((left + $2))+$((top + $1))"
}
# changes CONTROL COMMAND...: the control looks different afterwards.
changes() {
    local control=$1
    shift
    picture before
    "$@"
    until_true 5 looks_different "$control" || fail "$control looks the same after: $*"
}
looks_different() {
    picture after
    different "$pictures/$name.before.png" "$pictures/$name.after.png" "$(area "$1")"
}

start "$gallery" gallery
until_true 5 find_content || fail "no white content of $width x $height is on the screen"
picture open

changes kMoveBox click $(at kMoveBox)
changes kLargeBox click $(at kLargeBox)
changes kBlueButton click $(at kBlueButton)

drag $((left + 200)) $((top - 11)) $((left + 260)) $((top + 29))
expected="$((left + 60)) $((top + 40))"
find_content
[ "$left $top" = "$expected" ] || fail "dragged by its title bar, the window is at $left $top, not at $expected"

changes kNameField click $(at kNameField)
keys ctrl+a
changes kNameField type_text "Ada L."
changes kGreetingText click $(at kGreetButton)
picture greeted

click $(at kAboutButton)
sleep 0.5
picture about
keys Return
sleep 0.5

click $(at kOKButton)
expect_exit 0
finish
