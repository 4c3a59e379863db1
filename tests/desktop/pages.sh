#!/bin/bash
# The gallery's pages as their user knows them: sprites that move, and a picture whose name is typed, which goes when
# the next name is that of no picture.
# Use: pages.sh GALLERY
. "$(dirname "$0")/common.sh"
gallery=$1
begin pages

# with ARGUMENT...: the gallery with them, as a program that start can run.
with() {
    printf '#!/bin/sh\nexec "%s" %s\n' "$gallery" "$*" >"$home/gallery"
    chmod +x "$home/gallery"
}

with --page sprites
start "$home/gallery" gallery
sleep 1
picture early
sleep 1
picture late
# The page's content begins at 192,166 and is 640 by 480.
different "$pictures/$name.early.png" "$pictures/$name.late.png" 640x480+192+166 || fail "the sprites stand still"
kill "$app" && wait "$app" 2>/dev/null
app=

# The picture's middle, on a screen of 1024 by 768 pixels.
middle="512 435"
convert -size 100x80 xc:red "$home/red.png"
convert -size 90x120 xc:blue "$home/blue.gif"
echo "no picture" >"$home/words"
name_file() { keys ctrl+a; type_text "$1"; keys Return; }

with --page picture
start "$home/gallery" gallery
name_file "$home/red.png"
expect_pixel $middle '#FF0000'
name_file "$home/words"
expect_pixel $middle '#FFFFFF'
name_file "$home/blue.gif"
expect_pixel $middle '#0000FF'
name_file "$home/nowhere"
expect_pixel $middle '#FFFFFF'
picture nowhere
keys ctrl+q
expect_exit 0
finish
