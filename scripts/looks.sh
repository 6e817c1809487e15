#!/usr/bin/env bash
# Pictures of every window with each size of letters, scale and screen that the program is for, in
# both languages; fails on words that are cut, on controls outside of what holds them, on a window
# that its screen has no room for. "quick" takes four corners of all that, "FOLDER" keeps the
# pictures elsewhere than in build/looks.
source "$(dirname "$0")/common.sh"

quick=no
if [ "${1:-}" = quick ]; then
    quick=yes
    shift
fi
out=$(realpath -m "${1:-build/looks}")

install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_RUN[@]}"
use_picture_font
build release tour lapvane-instrument lapvane_data
rm -rf "$out"
mkdir -p "$out"

# points scale columns rows language look
combinations() {
    if [ $quick = yes ]; then
        echo "9 1 1024 768 en light"
        echo "12 1 1366 768 it light"
        echo "14 2 2732 1536 it dark"
        echo "10 1 1366 768 it pit"
        return
    fi
    local points scale screen columns rows least language look=light
    for points in 9 10 11 12 14; do
        least=1024
        [ $points -gt 11 ] && least=1366
        for scale in 1 1.25 1.5 2; do
            for screen in 1024x768 1366x768 1280x960 1920x1080 1536x1152 2048x1536 2560x1440 2732x1536 3840x2160; do
                columns=${screen%x*} rows=${screen#*x}
                awk "BEGIN { exit !($columns / $scale >= $least && $rows / $scale >= 768) }" || continue
                for language in it en; do
                    echo "$points $scale $columns $rows $language $look"
                    [ $look = light ] && look=dark || look=light
                done
            done
        done
    done
    for language in it en; do
        echo "10 1 1366 768 $language pit"
        echo "10 1 1920 1080 $language pit"
    done
}

# One tour on a screen that is none. Pixels are the screen's; the scale is told as desktops tell it.
look() {
    local points=$1 scale=$2 columns=$3 rows=$4 language=$5 look=$6
    local name="$points-pt-x$scale-${columns}x$rows-$language-$look"
    mkdir -p "$out/$name"
    local words=()
    [ "$look" = light ] || words=("$look")
    local status=0 try
    # The tour's clock runs eight times as fast: where the machine stood still, the instrument seems
    # to be away. That says nothing of the windows.
    for try in 1 2 3; do
        status=0
        rm -rf "${out:?}/$name"
        play || status=1
        grep -q '^The tour failed' "$out/$name.txt" || break
    done
    find "$out/$name" -mindepth 1 ! -name '*.png' -delete
    # The stops that went well are told with their seconds.
    sed -E -e '/^.* +[0-9.]+ s$/d' -e '/^[0-9]+ stops$/d' -e "s/^/$name: /" "$out/$name.txt"
    [ $status -ne 0 ] || echo "$name: all there"
    return $status
}

# Of the combination that look has in its variables.
play() {
    QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=$scale timeout 120 build/release/bin/tour \
        "$out/$name" "$language" quick font "$points" screen "${columns}x$rows" ${words[@]+"${words[@]}"} \
        >"$out/$name.txt" 2>&1
}

export quick out
export -f look play
combinations | xargs -P "${LOOKS_JOBS:-2}" -I{} bash -c 'look {}' || {
    echo "There are faults; the pictures: $out" >&2
    exit 1
}
echo "All windows fit; the pictures: $out"
