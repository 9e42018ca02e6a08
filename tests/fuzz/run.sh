#!/bin/sh
# Builds the fuzz targets (a clang build of the project with -DTALLYVOX_FUZZ=ON) and runs
# each for SECONDS on its seed corpus; fails on the first crash, leak, timeout or sanitizer
# report. New inputs go to a scratch corpus beside the build, so the committed seeds stay
# small.
#   tests/fuzz/run.sh SECONDS [BUILD_DIR]     (FUZZ_TARGETS="rtf html" runs only those)
set -eu
seconds=${1:?usage: run.sh SECONDS [BUILD_DIR]}
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
out=${2:-$root/fuzz-build}
targets=${FUZZ_TARGETS:-rtf html xml container worddoc numberformat words base64 wordtable settings wordlist lemmalist dictionary}

# -O1 keeps the instrumented code quick without hiding bugs behind inlining.
cmake -S "$root" -B "$out" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-g -O1" \
    -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ -DTALLYVOX_FUZZ=ON >/dev/null
cmake --build "$out" --target fuzz_targets -j "${JOBS:-$(nproc)}"

for name in $targets; do
    work="$out/corpus/$name"
    mkdir -p "$work"
    echo "== ${name}_fuzzer for ${seconds}s"
    # libFuzzer reports every new input; keep that in a log and show its summary, or
    # the whole tail when it found something.
    log="$out/${name}.log"
    if ! "$out/fuzz/${name}_fuzzer" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
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
