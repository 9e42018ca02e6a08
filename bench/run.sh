#!/bin/sh
# Benchmarks of the indexer, each ratio measured in this run on the same file:
#   bench/run.sh BUILD_DIR
# Needs hyperfine, python3 and GNU time (/usr/bin/time). Takes a few minutes and about
# 600 MB in a temporary folder, removed at the end.
set -eu

BUILD=${1:?usage: bench/run.sh BUILD_DIR}
HERE=$(cd "$(dirname "$0")" && pwd)
cmake --build "$BUILD" --target SearchKitIndexer tallyvox_bench_wordtable tallyvox_bench_render >/dev/null
INDEXER=$(cd "$BUILD" && pwd)/libexec/tallyvox/SearchKitIndexer
ROUNDTRIP=$(cd "$BUILD" && pwd)/bench/tallyvox_bench_wordtable
RENDER=$(cd "$BUILD" && pwd)/bench/tallyvox_bench_render
WORK=$(mktemp -d "${TMPDIR:-/tmp}/tallyvox-bench.XXXXXX")
trap 'rm -rf "$WORK"' EXIT
SIZE=100000000

# Real English as Debian ships it: package copyright files, compressed changelogs and
# documentation under /usr/share/doc, and the manual pages (roff sources), repeated when
# they add up to less than 100 MB.
real_text() {
    {
        find /usr/share/doc -name copyright -type f -exec cat {} + 2>/dev/null
        find /usr/share/doc -name '*.gz' -type f -exec zcat -f {} + 2>/dev/null
        find /usr/share/man -name '*.gz' -type f -exec zcat -f {} + 2>/dev/null
    } >"$WORK/real-once.txt"
    : >"$WORK/real.txt"
    while [ "$(stat -c %s "$WORK/real.txt")" -lt "$SIZE" ]; do
        cat "$WORK/real-once.txt" >>"$WORK/real.txt"
    done
    truncate -s "$SIZE" "$WORK/real.txt"
    rm "$WORK/real-once.txt"
}

# Wall-clock seconds of a command, the best of hyperfine's runs after a warm-up. Other work
# on the machine slows the two-threaded indexer more than the one-threaded tools, so the
# CPU seconds (user + system, mean) of the last command timed are kept in $WORK/cpu.
seconds() {
    hyperfine --warmup 1 --runs "${RUNS:-5}" --export-json "$WORK/h.json" --style none "$@" \
        >/dev/null 2>&1
    python3 -c 'import json,sys
r = json.load(open(sys.argv[1]))["results"][0]
print("%.3f" % min(r["times"]))
open(sys.argv[2], "w").write("%.3f" % (r["user"] + r["system"]))' "$WORK/h.json" "$WORK/cpu"
}

peak_mb() {
    /usr/bin/time -f %M "$@" 2>&1 >/dev/null | tail -1 | awk '{ printf "%.0f", $1 / 1024 }'
}

ratio() {
    python3 -c 'import sys; print("%.2f" % (float(sys.argv[1]) / float(sys.argv[2])))' "$1" "$2"
}

# measure NAME FILE [GOALS]: GOALS prints the targets set for English text beside the ratios.
measure() {
    name=$1
    file=$2
    goal_wc=""
    goal_pipe=""
    if [ "${3:-}" = goals ]; then
        goal_wc="   (goal: at most 1.5x)"
        goal_pipe="   (goal: at least 10x)"
    fi
    words=$(wc -w <"$file")
    printf '\n== %s: %s MB, %s words (wc -w) ==\n' "$name" "$(($(stat -c %s "$file") / 1000000))" "$words"
    wc_s=$(seconds -N "wc -w $file")
    wc_cpu=$(cat "$WORK/cpu")
    idx_s=$(seconds -N "env TMPDIR=$WORK $INDEXER $file")
    idx_cpu=$(cat "$WORK/cpu")
    pipe_s=$(RUNS=3 seconds "LC_ALL=C tr -cs '[:alpha:]' '\n' <$file | sort | uniq -c | sort -rn >/dev/null")
    mem=$(peak_mb env TMPDIR="$WORK" "$INDEXER" "$file")
    distinct=$(python3 -c 'import plistlib,sys; print(len(plistlib.load(open(sys.argv[1],"rb"))))' "$WORK/index-1964.dat")
    printf 'indexer            %6.3f s   (CPU %s s)   peak %s MB   %s distinct words\n' "$idx_s" "$idx_cpu" "$mem" "$distinct"
    printf 'wc -w              %6.3f s   (CPU %s s)   indexer / wc -w = %sx%s\n' "$wc_s" "$wc_cpu" "$(ratio "$idx_s" "$wc_s")" "$goal_wc"
    printf 'tr|sort|uniq -c    %6.3f s   pipeline / indexer = %sx%s\n' "$pipe_s" "$(ratio "$pipe_s" "$idx_s")" "$goal_pipe"
}

echo "Tallyvox indexer benchmarks, $(date -u +%Y-%m-%d), $(nproc) cores, load $(cut -d' ' -f1-3 /proc/loadavg)"
real_text
measure "real English text (/usr/share/doc and /usr/share/man)" "$WORK/real.txt" goals
python3 "$HERE/generate-text.py" english $((SIZE / 1000000)) | head -c "$SIZE" >"$WORK/english.txt"
measure "generated English-like text" "$WORK/english.txt" goals
python3 "$HERE/generate-text.py" mixed $((SIZE / 1000000)) | head -c "$SIZE" >"$WORK/mixed.txt"
measure "generated mixed scripts (a third non-ASCII; ICU's dictionaries bound it)" "$WORK/mixed.txt"
rm -f "$WORK/real.txt" "$WORK/english.txt" "$WORK/mixed.txt"

printf '\n== result file at 1,000,000 words ==\n'
python3 "$HERE/generate-text.py" distinct 1000000 >"$WORK/distinct.txt"
idx_s=$(seconds -N "env TMPDIR=$WORK $INDEXER $WORK/distinct.txt")
mem=$(peak_mb env TMPDIR="$WORK" "$INDEXER" "$WORK/distinct.txt")
printf 'indexer on 1,000,000 distinct words (count + write): %s s, peak %s MB, result %s MB\n' \
    "$idx_s" "$mem" "$(($(stat -c %s "$WORK/index-1964.dat") / 1000000))"
"$ROUNDTRIP" 1000000 "$WORK" 100000

printf '\n== a word list of 350,000 distinct words, the application side (goal: under 0.5 s) ==\n'
"$RENDER" "$(dirname "$INDEXER")" 350000
