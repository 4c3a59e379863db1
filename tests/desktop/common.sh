# What the scripts of this folder share: a display of their own, a program on it, and a user with mouse and keyboard.
# Use: . common.sh; begin NAME; start PROGRAM TITLE [VARIABLE=value ...]; ... ; finish
# Pictures and logs stay in $PICTURES (default: the current folder).
set -u

pictures=${PICTURES:-.}
app= server= log= window=

say() { echo "desktop: $*"; }

fail() {
    say "FAILED: $*"
    [ -n "$log" ] && [ -f "$log" ] && sed 's/^/    /' "$log" | tail -40
    [ -n "$window" ] && picture failed
    end 1
}

end() {
    [ -n "$app" ] && kill "$app" 2>/dev/null && wait "$app" 2>/dev/null
    [ -n "$server" ] && kill "$server" 2>/dev/null && wait "$server" 2>/dev/null
    [ -n "${home:-}" ] && rm -rf "$home"
    exit "$1"
}

# begin NAME: skips (status 77) when the machine lacks a tool, else opens a display.
begin() {
    name=$1
    for tool in Xvfb xdotool import convert; do
        command -v $tool >/dev/null || { say "SKIPPED: $tool is not installed"; exit 77; }
    done
    mkdir -p "$pictures"
    log=$pictures/$name.log
    trap 'end 1' INT TERM
    number=$pictures/$name.display
    rm -f "$number"
    Xvfb -noreset -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$number" >/dev/null 2>&1 &
    server=$!
    until_true 10 test -s "$number" || fail "Xvfb did not start"
    export DISPLAY=:$(cat "$number")
    rm -f "$number"
    unset WAYLAND_DISPLAY LAMPBLACK_SCREEN LAMPBLACK_SCALE LAMPBLACK_COMMAND_KEY SDL_VIDEODRIVER
    home=$(mktemp -d)
}

# until_true SECONDS COMMAND...: tries until it succeeds.
until_true() {
    local tries=$(($1 * 20))
    shift
    while ! "$@" >/dev/null 2>&1; do
        tries=$((tries - 1))
        [ $tries -gt 0 ] || return 1
        sleep 0.05
    done
}

# start PROGRAM TITLE-PATTERN [VARIABLE=value ...]: runs it with a home of its own and waits for its window.
start() {
    local program=$1 title=$2
    shift 2
    [ -x "$program" ] || fail "$program is not built"
    env HOME="$home" XDG_CONFIG_HOME="$home/.config" "$@" "$program" >"$log" 2>&1 &
    app=$!
    until_true 20 find_window "$title" || fail "no window with the title '$title' appeared"
    window=$(xdotool search --onlyvisible --name "$title" | head -1)
    sleep 0.5
}

find_window() { kill -0 "$app" && [ -n "$(xdotool search --onlyvisible --name "$1")" ]; }

# The user. Positions are window pixels, which are screen pixels at scale 1.
move() { xdotool mousemove --window "$window" "$1" "$2"; sleep 0.05; }
click() { move "$1" "$2"; xdotool click 1; sleep 0.1; }
drag() {
    move "$1" "$2"
    xdotool mousedown 1
    sleep 0.05
    move $((($1 + $3) / 2)) $((($2 + $4) / 2))
    move "$3" "$4"
    xdotool mouseup 1
    sleep 0.1
}
keys() { xdotool key --delay 30 "$@"; sleep 0.1; }
type_text() { xdotool type --delay 30 "$1"; sleep 0.1; }

# What the user sees.
picture() { import -window "$window" "$pictures/$name.$1.png" 2>/dev/null; }
pixel() { import -window "$window" -crop "1x1+$1+$2" +repage -depth 8 txt:- | tail -1 | grep -o '#[0-9A-F]*' | cut -c1-7; }
different() { ! cmp -s <(convert "$1" -crop "$3" +repage rgb:-) <(convert "$2" -crop "$3" +repage rgb:-); }

expect_line() { until_true 5 grep -q -- "$1" "$log" || fail "expected a line '$1'"; }
expect_pixel() { until_true 5 sees "$1" "$2" "$3" || fail "pixel $1,$2 is $(pixel "$1" "$2"), not $3"; }
sees() { [ "$(pixel "$1" "$2")" = "$3" ]; }

# expect_exit STATUS: the program ends by itself.
expect_exit() {
    until_true 10 gone || fail "the program still runs"
    wait "$app"
    local status=$?
    app=
    [ $status -eq "$1" ] || fail "the program ended with status $status"
}
gone() { ! kill -0 "$app"; }

# Times that the program gave up the processor because it waited, all threads together.
waits() { cat /proc/"$app"/task/*/status | awk '/^voluntary_ctxt_switches/ { sum += $2 } END { print sum }'; }
processor_ticks() { awk '{ print $14 + $15 }' /proc/"$app"/stat; }

finish() {
    say "$name passed"
    end 0
}
