#!/bin/sh
# The benchmarks of `make bench`: one table, every ratio measured in this run against
# `wc -w` on the same file (see bench/bench.py for the settings it reads).
#   bench/run.sh BUILD_DIR
# Needs python3 and GNU time (/usr/bin/time). The full run takes about a quarter of an hour
# and 6 GB of space under BUILD_DIR, removed at the end; BENCH_QUICK=1 leaves out the
# gigabyte rows. BENCH_DETAILS=1 adds the result file's round trip and the application's
# steps on a 350,000-word list, timed inside the processes.
set -eu

BUILD=${1:?usage: bench/run.sh BUILD_DIR}
HERE=$(cd "$(dirname "$0")" && pwd)
BUILD=$(cd "$BUILD" && pwd)
cmake --build "$BUILD" --target tallyvox SearchKitIndexer SearchKitIndexer32 tallyvox_bench_grow \
    >/dev/null
# The corpus figures' rows (corpus-range, corpus-keywords) have a script of their own; a
# BENCH_ROWS that names only them leaves the main table out.
main=yes
corpus=yes
if [ -n "${BENCH_ROWS:-}" ]; then
    rows=$(printf '%s\n' "$BENCH_ROWS" | tr ',' '\n' | grep . || true)
    printf '%s\n' "$rows" | grep -q -v '^corpus-' || main=no
    printf '%s\n' "$rows" | grep -q '^corpus-' || corpus=no
fi
[ "$main" = no ] || python3 "$HERE/bench.py" "$BUILD"
[ "$corpus" = no ] || { echo; python3 "$HERE/corpus-lists.py" "$BUILD"; }

if [ "${BENCH_DETAILS:-}" = 1 ]; then
    cmake --build "$BUILD" --target tallyvox_bench_wordtable tallyvox_bench_render >/dev/null
    WORK=$(mktemp -d "$BUILD/bench-details.XXXXXX")
    trap 'rm -rf "$WORK"' EXIT
    printf '\n== result file at 1,000,000 words ==\n'
    "$BUILD/bench/tallyvox_bench_wordtable" 1000000 "$WORK" 100000
    printf '\n== a word list of 350,000 distinct words, the application side ==\n'
    "$BUILD/bench/tallyvox_bench_render" "$BUILD/libexec/tallyvox" 350000
fi
