#!/usr/bin/env bash
# Builds the logic for Windows with mingw and runs its tests under wine. The windows are not built: no
# Qt for mingw is to be had as a package.
source "$(dirname "$0")/common.sh"

install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_WINDOWS[@]}"
export WINEDEBUG=-all WINEPREFIX=${WINEPREFIX:-$PWD/build/wine}
build windows lapvane_tests
wine=$(command -v wine64 || echo /usr/lib/wine/wine64)
timeout 600 "$wine" build/windows/bin/lapvane_tests.exe | tr -d '\r' | tail -n 12
exit "${PIPESTATUS[0]}"
