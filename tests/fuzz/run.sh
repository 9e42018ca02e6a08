#!/bin/sh
# Builds the fuzz targets and runs each for SECONDS on its seed corpus; fails on the first
# crash, leak, timeout or sanitizer report. New inputs go to a scratch corpus beside the
# build, so the committed seeds stay small.
#   tests/fuzz/run.sh SECONDS [BUILD_DIR]
set -eu
seconds=${1:?usage: run.sh SECONDS [BUILD_DIR]}
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
out=${2:-$root/fuzz-build}
"$here/build.sh" "$out"
for name in rtf html container base64 wordtable; do
    work="$out/corpus/$name"
    mkdir -p "$work"
    echo "== ${name}_fuzzer for ${seconds}s"
    # libFuzzer reports every new input; keep that in a log and show its summary, or
    # the whole tail when it found something.
    log="$out/${name}.log"
    if ! "$out/${name}_fuzzer" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
        -max_len=262144 -print_final_stats=1 -artifact_prefix="$out/${name}-" \
        "$work" "$here/corpus/$name" >"$log" 2>&1; then
        tail -n 60 "$log"
        echo "${name}_fuzzer failed; its input is in $out/${name}-*"
        exit 1
    fi
    grep -E '^(Done|stat::number_of_executed_units|stat::peak_rss_mb)' "$log" || true
    echo "corpus: $(ls "$work" | wc -l) inputs"
done
echo "fuzzing passed"
