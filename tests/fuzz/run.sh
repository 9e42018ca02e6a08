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
    "$out/${name}_fuzzer" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
        -max_len=262144 -print_final_stats=1 -artifact_prefix="$out/${name}-" \
        "$work" "$here/corpus/$name"
done
echo "fuzzing passed"
