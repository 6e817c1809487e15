#!/usr/bin/env bash
# Runs every fuzz target for a number of seconds (10 if none is given). With "merge" it keeps of each corpus what
# covers something that no smaller file does, what was found while running too.
source "$(dirname "$0")/common.sh"

seconds=${1:-10}
install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_FUZZ[@]}"
build fuzz
for target in build/fuzz/bin/fuzz_*; do
    [ -x "$target" ] || continue
    name=$(basename "$target")
    corpus=build/fuzz/corpus/$name
    mkdir -p "$corpus"
    if [ "$seconds" = merge ]; then
        kept=$(mktemp -d)
        "$target" -merge=1 -rss_limit_mb=2048 "$kept" "tests/fuzz/corpus/$name" "$corpus" 2>"build/fuzz/$name.log"
        echo "$name: $(ls "tests/fuzz/corpus/$name" | wc -l) files before, $(ls "$kept" | wc -l) now"
        rm -rf "tests/fuzz/corpus/$name"
        mv "$kept" "tests/fuzz/corpus/$name"
        continue
    fi
    sources=("$corpus")
    [ -d "tests/fuzz/corpus/$name" ] && sources+=("tests/fuzz/corpus/$name")
    echo "$name: $seconds s"
    if ! "$target" -max_total_time="$seconds" -rss_limit_mb=2048 -timeout=10 \
        -artifact_prefix="build/fuzz/$name-" "${sources[@]}" >"build/fuzz/$name.log" 2>&1; then
        tail -n 40 "build/fuzz/$name.log"
        echo "$name found a fault"
        exit 1
    fi
    tail -n 1 "build/fuzz/$name.log"
done
