#!/usr/bin/env bash
# Measures the paths on which a person waits and shows each beside its limit (bench/Limits.h). Fails
# if one is not met. Takes about six minutes; wants a machine that does nothing else.
#   --instructions   counts instead, with callgrind, what reading and writing a full log takes beside
#                    their yardsticks: the same on every machine, however busy
source "$(dirname "$0")/common.sh"
source scripts/screen.sh

install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_RUN[@]}" xvfb
build release lapvane_bench lapvane_download_bench lapvane_window_bench lapvane_process_bench

# instructions NAME BENCHMARK OURS BARE: of two functions, both of which the benchmark runs as often
instructions() {
    local counts=() function
    for function in "$3" "$4"; do
        counts+=("$(valgrind --tool=callgrind --callgrind-out-file=/dev/null "--toggle-collect=$function" \
            build/release/bin/lapvane_bench "--benchmark_filter=$2" --benchmark_min_time=0 2>&1 |
            sed -n 's/.*Collected : \([0-9]*\).*/\1/p')")
    done
    awk -v name="$1" -v ours="${counts[0]}" -v bare="${counts[1]}" 'BEGIN {
        printf "%-34s %9.2f times the instructions of its yardstick (%.0f and %.0f million)\n",
            name, ours / bare, ours / 2e6, bare / 2e6 }'
}
if [ "${1:-}" = --instructions ]; then
    install_packages valgrind
    instructions "full log: load" LoadTable '*bench::LoadLog*' '*BareLoad::BareLoad*'
    instructions "conversion of a full memory" ConversioneInMemoria '*ComponiLog*' '*ScritturaNuda::Scrivi*'
    exit
fi

echo
grep -m1 '^model name' /proc/cpuinfo | sed 's/.*: //' | tr -d '\n' || true
echo ", $(nproc) cores"
printf '%-34s %9s %9s %-13s %7s\n' path measured limit "" ratio
failed=0
# What Qt says about a machine without a desktop would stand between the rows.
export QT_LOGGING_RULES="*.warning=false" XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$(mktemp -d)}
# Figures that are set against each other are measured in turn, so that a machine that slows down for
# a while slows both.
measure() {
    timeout 300 "build/release/bin/$1" --table --benchmark_repetitions=5 \
        --benchmark_enable_random_interleaving=true --benchmark_min_time=0.1 || failed=1
}
for program in lapvane_window_bench lapvane_bench lapvane_download_bench lapvane_process_bench; do
    measure "$program"
done
# What a screen adds.
open_screen
export QT_QPA_PLATFORM=xcb
measure lapvane_download_bench
measure lapvane_process_bench
exit $failed
