#!/usr/bin/env bash
# Unpacks finished packages, those named or the last .deb and .tar.gz in build/packages, and starts the
# programs in them as somebody who is not root: the main window must come, the program find its simulated
# instrument, lapvane-tool print laps. The .deb lies in a folder that belongs to root, and nothing may be
# written there; the .tar.gz in one of the person's, with blanks and accents in its name.
source "$(dirname "$0")/common.sh"
source scripts/screen.sh

install_packages "${PACKAGES_START[@]}"
place=$(mktemp -d /tmp/lapvane-start.XXXXXX)
SCREEN_ENDS+=("rm -rf '$place'")
open_screen
chmod 755 "$place"
who=(env)
[ "$(id -u)" -ne 0 ] || who=(setpriv --reuid 65534 --regid 65534 --clear-groups)

contents() { (cd "$1" && find . \( -type f -exec md5sum {} + \) -o -printf '%p %l\n' | sort); }
grant() { [ "$(id -u)" -ne 0 ] || chown -R 65534:65534 "$@"; }

# unpack FILE: sets bin, where the programs are called, and own, where the program writes.
unpack() {
    mkdir -p -m 700 "$home/run"
    chmod 755 "$home"
    case $1 in
        *.deb)
            dpkg -x "$1" "$home-root"
            bin=$home-root/usr/bin
            own=$home/.local/share/Lapvane
            ;;
        *)
            mkdir "$home/Gara di velocità"
            tar -xzf "$1" -C "$home/Gara di velocità"
            bin=$(echo "$home/Gara di velocità"/*)
            own=$bin
            ;;
    esac
    grant "$home"
}

# The lock of a terminal that another user's program left when it was killed, and that only root can take away.
forget_lock() {
    local lock
    lock=/var/lock/LCK..pts_$(basename "$(readlink "$1")")
    [ ! -e "$lock" ] || kill -0 "$(head -n 1 "$lock")" 2>/dev/null || rm -f "$lock"
}

# starts_in: the programs in bin do what they are for.
starts_in() {
    local instrument program window said=$home/said
    local person=("${who[@]}" env -i -C "$home" HOME="$home" XDG_RUNTIME_DIR="$home/run"
        PATH="$bin:/usr/bin:/bin" DISPLAY="$DISPLAY" LANG=C.UTF-8)
    "${person[@]}" "$bin/lapvane-instrument" --link "$own/ports/COM1" >"$said" &
    instrument=$!
    for _ in $(seq 50); do
        [ -L "$own/ports/COM1" ] && break
        sleep 0.1
    done
    forget_lock "$own/ports/COM1"
    "${person[@]}" "$bin/lapvane" &
    program=$!
    SCREEN_PIDS+=($instrument $program)
    window=$(WIDTH_LEAST=600 window_comes '^Lapvane$')
    # The journal of the instrument tells what it was asked.
    for _ in $(seq 200); do
        grep -q '^[0-9.]* s: ' "$said" && break
        sleep 0.1
    done
    grep -m 1 '^[0-9.]* s: ' "$said" || { echo "The program did not find the instrument" >&2 && return 1; }
    [ "$(head -c 1 "$own/RecentFiles.ini")" = 1 ]
    # The Qt of the folder, where it has one.
    [ ! -d "$bin/lib" ] || grep -q "$bin/lib/libQt6Core" "/proc/$program/maps"
    xdotool windowfocus "$window" key ctrl+q
    for _ in $(seq 50); do
        kill -0 $program 2>/dev/null || break
        sleep 0.1
    done
    wait $program  # it has ended, and well
    kill $instrument
    wait $instrument
    "${person[@]}" "$bin/lapvane-tool" laps "$own/sample/Esempio.csv" --csv >"$home/laps"
    [ "$(wc -l <"$home/laps")" -gt 10 ]
}

check() {
    local before=
    home=$place/$2
    unpack "$1"
    [ ! -d "$home-root" ] || before=$(contents "$home-root")
    starts_in
    [ -z "$before" ] || diff <(echo "$before") <(contents "$home-root")
    echo "It starts: $1"
}

[ $# -gt 0 ] || set -- $(ls -t "$PACKAGES"/lapvane_*.deb | head -n 1) $(ls -t "$PACKAGES"/lapvane-*.tar.gz 2>/dev/null | head -n 1)
number=0
for file in "$@"; do check "$(realpath "$file")" $((++number)); done
