#!/usr/bin/env bash
# Shows which lines of the logic the tests run: a row for each folder and their sum; the lines that no
# test runs, file by file, stand in build/coverage/uncovered.txt. Takes some minutes.
source "$(dirname "$0")/common.sh"

install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_TEST[@]}" "${PACKAGES_COVERAGE[@]}"
build coverage lapvane_tests lapvane_window_tests lapvane_data lapvane-instrument
# What was counted by tests that ran earlier would count once more.
# A precompiled header has no lines of ours.
find build/coverage \( -name '*.gcda' -o -name 'cmake_pch*.gcno' \) -delete
ctest --preset coverage -j2 --timeout 120 | tail -n 3

logic='src/(analysis|device|logs|platform|project|reports|sensors|shell)/[^/]*$'
windows='.*/(frm|dlg|Disegno)[A-Z][^/]*$'
# What gcov says about the compiler check of CMake is not about us.
gcovr --root . --object-directory build/coverage --filter "$logic" --filter 'instrument/' \
    --exclude "$windows" --exclude 'instrument/main.cpp' --exclude-throw-branches \
    --json build/coverage/lines.json -j 2 >/dev/null
python3 scripts/coverage.py build/coverage/lines.json build/coverage/uncovered.txt
