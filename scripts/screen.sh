# A screen that nobody looks at, for scripts that must see windows come. Sourced behind common.sh.

SCREEN_PIDS=()
SCREEN_ENDS=()  # commands that close_screen runs

# Opens a screen of 1280 x 800 and sets DISPLAY. Every user of the machine may draw on it.
open_screen() {
    local number
    number=$(mktemp)
    Xvfb -displayfd 3 -ac -nolisten tcp -screen 0 1280x800x24 3>"$number" 2>/dev/null &
    SCREEN_PIDS+=($!)
    trap close_screen EXIT
    for _ in $(seq 100); do
        [ -s "$number" ] && break
        sleep 0.1
    done
    DISPLAY=:$(cat "$number")
    rm -f "$number"
    export DISPLAY
    [ "$DISPLAY" != : ] || { echo "No screen opened" >&2 && return 1; }
}

close_screen() {
    local last
    for ((last = ${#SCREEN_ENDS[@]} - 1; last >= 0; --last)); do eval "${SCREEN_ENDS[last]}" || true; done
    { kill "${SCREEN_PIDS[@]}"; } 2>/dev/null || true
    wait 2>/dev/null || true
}

# window_comes PATTERN [SECONDS]: waits for a window whose title matches and that can be seen; prints its
# number. The splash, which bears the program's name as the main window does, is smaller than that.
window_comes() {
    local id width end=$((SECONDS + ${2:-20}))
    while [ $SECONDS -lt $end ]; do
        for id in $(xdotool search --onlyvisible --name "$1" 2>/dev/null); do
            width=$(xdotool getwindowgeometry --shell "$id" 2>/dev/null | sed -n 's/^WIDTH=//p')
            [ "${width:-0}" -lt "${WIDTH_LEAST:-0}" ] || { echo "$id" && return 0; }
        done
        sleep 0.2
    done
    echo "No window \"$1\" came" >&2
    return 1
}
