#!/usr/bin/env bash
# Runs clang-tidy with the checks of .clang-tidy over everything that the release preset compiles, over
# the files whose path matches the given pattern, or, with --since COMMIT, over those that have changed
# since this branch left that commit. Fails on any finding.
source "$(dirname "$0")/common.sh"

install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_TIDY[@]}" "${PACKAGES_HOUSE[@]}"
pattern="(?=(src|instrument|tools|bench|tests)/).*${1:-}"
if [ "${1:-}" = --since ]; then
    base=$(git merge-base "${2:-}" HEAD 2>/dev/null) || {
        echo "--since wants a commit, not \"${2:-}\"." >&2
        exit 1
    }
    mapfile -t changed < <(
        git diff --name-only --diff-filter=d "$base" -- '*.cpp' '*.h'
        git ls-files --others --exclude-standard '*.cpp' '*.h'
    )
    # A header is looked at with a source that includes it.
    sources=$(python3 scripts/house.py --sources "${changed[@]}")
    if [ -z "$sources" ]; then
        echo "No source has changed since ${2}."
        exit 0
    fi
    pattern="($(sed 's/\./\\./g' <<<"$sources" | paste -sd '|'))\$"
fi
# What moc and the text table make has to be there. Clang cannot read a header that GCC precompiled.
build tidy lapvane_voci lapvane_ui_autogen tour_autogen

log=build/tidy/tidy.log
# The compile commands are GCC's, and clang does not know every warning of GCC by name.
status=0
run-clang-tidy -quiet -j "$(nproc)" -p build/tidy -extra-arg=-Wno-unknown-warning-option \
    "^$PWD/$pattern" >"$log" 2>&1 || status=$?
# A finding in a header comes once for each file that includes it.
if sed 's/\x1b\[[0-9;]*m//g' "$log" | grep -E '^/[^ ]+: (warning|error): ' | sort -u; then
    exit 1
fi
if [ "$status" -ne 0 ]; then
    tail -n 20 "$log"
    exit "$status"
fi
files=$(grep -c '^clang-tidy' "$log" || true)
if [ "$files" -eq 0 ] && [ "${1:-}" = --since ]; then
    echo "No source that is compiled here has changed since ${2}."
    exit 0
fi
if [ "$files" -eq 0 ]; then
    echo "No file matches \"$*\"." >&2
    exit 1
fi
echo "clang-tidy found nothing in $files files."
