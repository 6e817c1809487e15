#!/usr/bin/env bash
# Builds the logic for Windows with mingw and runs its tests under wine, those of the serial port at a
# far end that waits on this machine. The windows are not built: no Qt for mingw is to be had as a package.
source "$(dirname "$0")/common.sh"

install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_WINDOWS[@]}"
source scripts/wine.sh
build windows lapvane_tests
build release lapvane_far_end
port=$PWD/build/ports/COM12
build/release/bin/lapvane_far_end "$port" &
far_end=$!
trap 'kill "$far_end"; wine_end' EXIT
wine_prefix
wine_port 12 "$port"
export LAPVANE_FAR_END=12
timeout 600 "$WINE" build/windows/bin/lapvane_tests.exe 2>/dev/null | tr -d '\r' | tail -n 12
exit "${PIPESTATUS[0]}"
