#!/usr/bin/env bash
# Fails on a C++ file that clang-format would change; with --fix formats it. The major version is pinned,
# because each lays out a few things in its own way.
source "$(dirname "$0")/common.sh"

install_packages "${PACKAGES_FORMAT[@]}"
how=(--dry-run -Werror)
if [ "${1:-}" = --fix ]; then
    how=(-i)
fi
files=()
while IFS= read -r -d '' file; do
    if [ -f "$file" ]; then files+=("$file"); fi
done < <(git ls-files -z --cached --others --exclude-standard '*.cpp' '*.h')
printf '%s\0' "${files[@]}" | xargs -0 -n 20 -P "$(nproc)" clang-format-14 "${how[@]}"
if [ "${1:-}" != --fix ]; then echo "${#files[@]} files are laid out as clang-format would."; fi
