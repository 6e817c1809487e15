#!/usr/bin/env bash
# Measures the paths on which a person waits and shows each beside its limit (bench/Limits.h). Fails
# if one is not met. Takes about five minutes; wants a machine that does nothing else.
source "$(dirname "$0")/common.sh"

install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_RUN[@]}"
build release lapvane_bench lapvane_download_bench lapvane_window_bench lapvane_process_bench

echo
grep -m1 '^model name' /proc/cpuinfo | sed 's/.*: //' | tr -d '\n' || true
echo ", $(nproc) cores"
printf '%-34s %9s %9s %-13s %7s\n' path measured limit "" ratio
failed=0
# What Qt says about a machine without a desktop would stand between the rows.
export QT_LOGGING_RULES="*.warning=false" XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$(mktemp -d)}
# Figures that are set against each other are measured in turn, so that a machine that slows down for
# a while slows both.
for program in lapvane_window_bench lapvane_bench lapvane_download_bench lapvane_process_bench; do
    timeout 300 "build/release/bin/$program" --table --benchmark_repetitions=5 \
        --benchmark_enable_random_interleaving=true --benchmark_min_time=0.1 || failed=1
done
exit $failed
