#!/usr/bin/env bash
# The window tests under each font of tests/fonts: those that desktops have as their default. What a
# window looks like may follow from a font's metrics, whether it works may not.
source "$(dirname "$0")/common.sh"

install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_TEST[@]}" "${PACKAGES_FONTS[@]}"
build release lapvane_window_tests lapvane_data

for conf in "$PWD"/tests/fonts/*.conf; do
    family=$(sed -n 's:.*<string>\(.*\)</string>.*:\1:p' "$conf")
    found=$(FONTCONFIG_FILE=$conf fc-match -f '%{family[0]}' sans)
    if [ -z "$family" ] || [ "$found" != "$family" ]; then
        echo "$conf: \"$found\" in place of \"$family\"" >&2
        exit 1
    fi
    echo "$family:"
    FONTCONFIG_FILE=$conf QT_QPA_PLATFORM=offscreen \
        build/release/bin/lapvane_window_tests --gtest_brief=1
done
