#!/usr/bin/env bash
# Fails on a C++ file that clang-format would change; with --fix formats it. The major version is pinned,
# because each lays out a few things in its own way.
source "$(dirname "$0")/common.sh"

install_packages "${PACKAGES_FORMAT[@]}" "${PACKAGES_HOUSE[@]}"
how=(--dry-run -Werror)
if [ "${1:-}" = --fix ]; then
    how=(-i)
fi
files=$(python3 scripts/house.py --files)
xargs -d '\n' -n 20 -P "$(nproc)" clang-format-14 "${how[@]}" <<<"$files"
if [ "${1:-}" != --fix ]; then echo "$(wc -l <<<"$files") files are laid out as clang-format would."; fi
