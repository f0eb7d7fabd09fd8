#!/bin/sh
# Runs the benchmarks of a build made with the preset "release": bench/run.sh [BUILD-DIRECTORY]
#
# The sample logs (3 GB) are kept in BURNWICK_BENCH_DIR, by default ~/.cache/burnwick-bench. Everything is
# measured BURNWICK_BENCH_REPETITIONS times, by default 9. Fails when a target is missed.
set -eu

build=${1:-build/release}
place=${BURNWICK_BENCH_DIR:-${XDG_CACHE_HOME:-$HOME/.cache}/burnwick-bench}
report=$build/src/burnwick-report

if [ -r /proc/loadavg ]; then
    read -r load _ </proc/loadavg
    case $load in
        0.[0-4]*) ;;
        *) echo "Load average $load: other programs are at work, which spoils the figures" ;;
    esac
fi

mkdir -p "$place"
"$build/bench/burnwick-bench-logs" sessions 1000 "$place/sessions"
"$build/bench/burnwick-bench-logs" long-lines 700 "$place/long-lines"

set -- "$place/sessions" "$place/long-lines" "${BURNWICK_BENCH_REPETITIONS:-9}"
if [ -x "$report" ]; then
    set -- "$@" "$report"
else
    echo "$report is not built: its figures are left out"
fi
missed=0
"$build/bench/burnwick-bench" "$@" || missed=1
"$build/bench/burnwick-bench-forecast" || missed=1
"$build/bench/burnwick-bench-limits" || missed=1
"$build/bench/burnwick-bench-views" "$place" || missed=1
"$build/bench/burnwick-bench-desktop" "$place" "$build/src/burnwick" \
    "$build/bench/burnwick-bench-empty-window" "${BURNWICK_BENCH_REPETITIONS:-9}" || missed=1
exit $missed
