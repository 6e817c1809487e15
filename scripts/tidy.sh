#!/usr/bin/env bash
# Runs clang-tidy with the checks of .clang-tidy over everything that the release preset compiles, or
# over the files whose path matches the given pattern. Fails on any finding.
source "$(dirname "$0")/common.sh"

install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_TIDY[@]}"
build release lapvane_ui  # what moc and rcc make has to be there

log=build/release/tidy.log
# The compile commands are GCC's, and clang does not know every warning of GCC by name.
status=0
run-clang-tidy -quiet -j "$(nproc)" -p build/release -extra-arg=-Wno-unknown-warning-option \
    "^$PWD/(?=(src|instrument|tools|bench|tests)/).*${1:-}" >"$log" 2>&1 || status=$?
# A finding in a header comes once for each file that includes it.
if sed 's/\x1b\[[0-9;]*m//g' "$log" | grep -E '^/[^ ]+: (warning|error): ' | sort -u; then
    exit 1
fi
if [ "$status" -ne 0 ]; then
    tail -n 20 "$log"
    exit "$status"
fi
files=$(grep -c '^clang-tidy' "$log" || true)
if [ "$files" -eq 0 ]; then
    echo "No file matches \"${1:-}\"." >&2
    exit 1
fi
echo "clang-tidy found nothing in $files files."
