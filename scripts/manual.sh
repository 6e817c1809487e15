#!/usr/bin/env bash
# Plays the tour in Italian and in English and makes the manual with the pictures that it took.
source "$(dirname "$0")/common.sh"

preset=${1:-release}
install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_RUN[@]}" "${PACKAGES_MANUAL[@]}"
use_picture_font
build "$preset" tour lapvane-instrument lapvane_data makemanual
rm -f build/"$preset"/tours/*.stamp
timeout 400 cmake --build --preset "$preset" --target manual
echo "The manual: $PWD/build/$preset/bin/manual/index.html"
