#!/bin/sh
# Fails when a test of the last ctest run in BUILD_DIR skipped anything for a reason that
# tests/expected-skips.txt does not allow: CI installs and starts everything the tests
# need, so any other skip there means a test silently checked less.
#   tests/check-skips.sh BUILD_DIR
set -eu
build=${1:?usage: check-skips.sh BUILD_DIR}
here=$(cd "$(dirname "$0")" && pwd)
log="$build/Testing/Temporary/LastTest.log"
[ -f "$log" ] || { echo "check-skips: no test log in $build" >&2; exit 1; }
skips=$(grep -E '^SKIP   : ' "$log" || true)
unexpected=$(printf '%s\n' "$skips" | grep -v -E -f "$here/expected-skips.txt" | grep . || true)
count=$(printf '%s\n' "$skips" | grep -c . || true)
if [ -n "$unexpected" ]; then
    echo "check-skips: tests skipped what this machine is set up to run:" >&2
    printf '%s\n' "$unexpected" >&2
    exit 1
fi
echo "check-skips: $count skips, all expected"
