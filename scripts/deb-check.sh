#!/usr/bin/env bash
# The package as two persons live with it, in a bare Debian 12 of its own (build/deb-tree, made once):
# installed with what it depends on, started by both, a project saved by one, an upgrade that changes data,
# removed and purged. Needs root, the network, some 1.5 GB and three minutes. Leaves a picture of each
# start in build/deb-pictures and fails on the first thing that is not as it should be.
# DEB_TREE names another folder for the bare system.
source "$(dirname "$0")/common.sh"
source scripts/screen.sh

[ "$(id -u)" -eq 0 ] || { echo "Only root can do this: it makes a system in a folder." >&2 && exit 1; }
install_packages "${PACKAGES_DEB[@]}" "${PACKAGES_DEB_CHECK[@]}"
file=${1:-$(ls -t "$PACKAGES"/lapvane_*.deb | head -n 1)}
BASE=${DEB_TREE:-$PWD/build/deb-tree}
TREE=$BASE-tried
PICTURES=$PWD/build/deb-pictures
MAIN='^(.*- )?Lapvane$'
export WIDTH_LEAST=600  # the splash is smaller

told() { printf '%s  %s\n' "$(date +%T)" "$*"; }
in_tree() { chroot "$TREE" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "$@"; }
must() { "$@" || { echo "Not so: $*" >&2 && exit 1; }; }
must_not() { if "$@"; then echo "It should not be so: $*" >&2 && exit 1; fi; }
own() { [ "$1" = root ] && echo "$TREE/root/.local/share/Lapvane" || echo "$TREE/home/$1/.local/share/Lapvane"; }
# contents FOLDER: every name in it and what it holds.
contents() { (cd "$1" && find . \( -type f -exec md5sum {} + \) -o -printf '%p %l\n' | sort); }

make_tree() {
    [ -e "$BASE/etc/debian_version" ] || debootstrap --variant=minbase bookworm "$BASE" >/dev/null
    rm -rf "$TREE" "$PICTURES"
    mkdir -p "$PICTURES"
    cp -a "$BASE" "$TREE"
    mkdir -p "$TREE/tmp/.X11-unix"
    mount -t proc proc "$TREE/proc"
    SCREEN_ENDS+=("umount '$TREE/proc'")
    mount --bind /dev/pts "$TREE/dev/pts"
    SCREEN_ENDS+=("umount '$TREE/dev/pts'")
    mount --bind /tmp/.X11-unix "$TREE/tmp/.X11-unix"
    SCREEN_ENDS+=("umount '$TREE/tmp/.X11-unix'")
    in_tree apt-get update -qq
    # What the screen shows when something is not so.
    SCREEN_ENDS+=("import -window root '$PICTURES/last.png'")
    for person in anna bruno; do in_tree useradd -m -s /bin/sh $person; done
}

# begin PERSON: starts the program as that person, from the menu entry's command; sets PROGRAM, WINDOW.
begin() {
    local command
    command=$(sed -n 's/^Exec=//p' "$TREE/usr/share/applications/lapvane.desktop")
    local home=/home/$1
    [ "$1" = root ] && home=/root
    in_tree install -d -m 700 -o "$1" "/tmp/run-$1"
    chroot --userspec="$1:$1" --groups="$1" "$TREE" env -i -C "$home" HOME="$home" USER="$1" DISPLAY="$DISPLAY" \
        XDG_RUNTIME_DIR="/tmp/run-$1" PATH=/usr/bin:/bin LANG=C.UTF-8 $command &
    PROGRAM=$!
    SCREEN_PIDS+=($PROGRAM)
    WINDOW=$(window_comes "$MAIN")
    xdotool windowactivate --sync "$WINDOW"
}

# finish PICTURE: takes it and ends the program as its menu does.
finish() {
    import -window root "$PICTURES/$1.png"
    xdotool windowactivate --sync "$WINDOW" key ctrl+q
    for _ in $(seq 50); do
        kill -0 $PROGRAM 2>/dev/null || return 0
        sleep 0.1
    done
    echo "The program did not end: see $PICTURES/$1.png" >&2
    return 1
}

# answer PATH: gives it to the file dialog that comes.
answer() {
    local dialog
    dialog=$(WIDTH_LEAST=100 window_comes '^(Save|Open) project')
    xdotool windowactivate --sync "$dialog"
    sleep 0.5
    xdotool key ctrl+a type --delay 20 "$1"
    xdotool key Return
}

# save_project PATH: makes a project, saves and opens it, with the keys of the program; only what was opened is
# a recent one.
save_project() {
    xdotool key ctrl+n
    WINDOW=$(window_comes ' - Lapvane$')
    xdotool key ctrl+shift+s
    answer "$1"
    window_comes "^$(basename "$1" .pro) - Lapvane\$" >/dev/null
    xdotool windowactivate --sync "$WINDOW" key ctrl+o
    answer "$1"
    sleep 1
}

# choose_italian: in the window of the languages; the choice belongs to the person, and to the next start.
choose_italian() {
    local dialog
    xdotool key alt+l
    dialog=$(WIDTH_LEAST=100 window_comes '^Language$')
    xdotool windowactivate --sync "$dialog" key alt+i
    sleep 0.5
    xdotool key Return
    sleep 0.5
}
language() { head -c 1 "$(own "$1")/LANGUAGES.DAT"; }

# Another version of the package, in which a sensor and a circuit are other ones.
make_upgrade() {
    local root=$BASE-upgrade
    rm -rf "$root"
    dpkg-deb -R "$file" "$root"
    sed -i 's/^Version: .*/Version: 99-1/' "$root/DEBIAN/control"
    for name in "sensors/NTC olio M10.sns" "sensors/NTC acqua M10.sns" tracks/Valdoro.trk; do
        printf '\r\n' >>"$root/usr/share/lapvane/$name"
    done
    (cd "$root" && find usr -type f -print0 | xargs -0 md5sum) >"$root/DEBIAN/md5sums"
    dpkg-deb --root-owner-group -Znone --build "$root" "$TREE/tmp/upgrade.deb" >/dev/null
    rm -rf "$root"
}

first_starts() {
    told "first start of each, a project of the one"
    begin anna
    save_project /home/anna/gara.pro
    finish anna
    begin bruno
    choose_italian
    finish bruno
    must test "$(language anna)$(language bruno)" = 10
    must grep -q gara.pro "$(own anna)/RecentFiles.ini"
    must_not grep -q gara.pro "$(own bruno)/RecentFiles.ini"
    for person in anna bruno; do
        must cmp -s "$TREE/usr/share/lapvane/sensors/NTC olio M10.sns" "$(own $person)/sensors/NTC olio M10.sns"
        must test -z "$(find "$(own $person)" ! -user "$(in_tree id -u $person)")"
        # Nothing but the folder of its own, and the project where it was told to.
        must test "$(ls "$TREE/home/$person")" = "$([ $person = anna ] && echo gara.pro)"
    done
    told "a start of the administrator"
    begin root
    finish root
    must test -s "$(own root)/RecentFiles.ini"
    must test -z "$(in_tree dpkg --verify lapvane)"
    must test -z "$(find "$TREE/usr/lib/lapvane" "$TREE/usr/share/lapvane" -newer "$TREE/home/anna/gara.pro" -cnewer "$TREE/home/anna/gara.pro")"
}

upgrade() {
    told "upgrade"
    local before
    printf 'mine\r\n' >>"$(own anna)/sensors/NTC acqua M10.sns"
    rm "$(own anna)/tracks/Valdoro.trk"
    before=$(md5sum <"$(own anna)/sensors/NTC acqua M10.sns")
    make_upgrade
    in_tree apt-get install -y -qq /tmp/upgrade.deb >/dev/null
    begin anna
    finish anna-upgraded
    begin bruno
    finish bruno-upgraded
    for person in anna bruno; do
        must cmp -s "$TREE/usr/share/lapvane/sensors/NTC olio M10.sns" "$(own $person)/sensors/NTC olio M10.sns"
    done
    must test "$before" = "$(md5sum <"$(own anna)/sensors/NTC acqua M10.sns")"
    must_not test -e "$(own anna)/tracks/Valdoro.trk"
    must cmp -s "$TREE/usr/share/lapvane/tracks/Valdoro.trk" "$(own bruno)/tracks/Valdoro.trk"
    must grep -q gara.pro "$(own anna)/RecentFiles.ini"
}

removal() {
    told "removed, purged"
    local homes
    homes=$(contents "$TREE/home")
    in_tree apt-get remove -y -qq lapvane >/dev/null
    must_not test -e "$TREE/usr/lib/lapvane"
    in_tree dpkg -i /tmp/upgrade.deb >/dev/null
    in_tree apt-get purge -y -qq lapvane >/dev/null
    rm -f "$TREE"/tmp/*.deb
    must test -z "$(find "$TREE" -xdev \( -path "$TREE/home" -o -path "$TREE/root" -o -path "$TREE/proc" -o \
        -path "$TREE/var/log" \) -prune -o -iname '*lapvane*' -print)"
    must_not in_tree dpkg-query -W lapvane 2>/dev/null
    must diff <(echo "$homes") <(contents "$TREE/home")
}

open_screen
openbox >/dev/null 2>&1 &
SCREEN_PIDS+=($!)
told "a bare system"
make_tree
told "apt install"
cp "$file" "$TREE/tmp/lapvane.deb"
in_tree apt-get install -y -qq --no-install-recommends /tmp/lapvane.deb >/dev/null 2>"$BASE-apt.log" ||
    { cat "$BASE-apt.log" >&2 && exit 1; }
must test -z "$(in_tree sh -c 'ldd /usr/lib/lapvane/lapvane* 2>/dev/null | grep "not found"')"
first_starts
upgrade
removal
told "The package holds: $file; pictures in $PICTURES"
