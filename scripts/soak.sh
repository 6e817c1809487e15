#!/usr/bin/env bash
# Shows that the program is reliable: exchanges with an instrument that misbehaves, downloads that
# break off, commands beside ports that never answer, saves that are killed. Everything behind "short" (under a minute) or nothing (a few
# minutes) goes to the program build/release/bin/soak: --first N, --count N ...
source "$(dirname "$0")/common.sh"

size=()
if [ "${1:-}" = short ]; then
    shift
    size=(--count 100 --real 8 --laps 3 --silent 2 --kills 20)
fi
install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_RUN[@]}"
build release soak >/dev/null
QT_QPA_PLATFORM=offscreen timeout 1800 build/release/bin/soak "${size[@]}" "$@"
