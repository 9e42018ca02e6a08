#!/bin/sh
# Records in bench/reference-lists.txt the digests of the lists that the code before the
# speed work writes for the benchmark inputs as they are on this machine (the real English
# text follows the packages installed):
#   bench/record-reference.sh BUILD_DIR [COMMIT]
# Builds COMMIT (default 76973b5) under BUILD_DIR/reference, and uses BUILD_DIR's text
# grower for the gigabyte inputs. Entries for other inputs are kept.
set -eu
BUILD=$(cd "${1:?usage: bench/record-reference.sh BUILD_DIR [COMMIT]}" && pwd)
COMMIT=${2:-76973b5}
HERE=$(cd "$(dirname "$0")" && pwd)
REF="$BUILD/reference"
rm -rf "$REF/src"
mkdir -p "$REF/src"
git -C "$HERE/.." archive "$COMMIT" | tar -x -C "$REF/src"
cmake -S "$REF/src" -B "$REF/build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DTALLYVOX_TESTS=OFF >/dev/null
cmake --build "$REF/build" --target tallyvox SearchKitIndexer SearchKitIndexer32 >/dev/null
cmake --build "$BUILD" --target tallyvox_bench_grow >/dev/null
BENCH_RECORD=1 BENCH_RUNS=1 BENCH_BIG_RUNS=1 BENCH_GROW="$BUILD/bench/tallyvox_bench_grow" \
    python3 "$HERE/bench.py" "$REF/build"
