#!/bin/sh
# Times SearchKitIndexer on documents against reference tools.
#   bench/documents.sh BUILD_DIR FILE...
# For a PDF the reference is `pdftotext FILE - | wc -w` (poppler-utils); for other
# documents the time alone is printed (the goal: under 1 s for a 10 MB office document).
# Best of three runs, warm cache.
set -eu
build=${1:?usage: documents.sh BUILD_DIR FILE...}
shift
indexer="$build/libexec/tallyvox/SearchKitIndexer"
[ -x "$indexer" ] || { echo "no $indexer: build it first" >&2; exit 1; }
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

best() { # best wall-clock seconds of three runs of "$@"
    b=""
    for _ in 1 2 3; do
        s=$(date +%s.%N)
        "$@" >/dev/null 2>&1 || true
        e=$(date +%s.%N)
        t=$(echo "$e - $s" | bc)
        if [ -z "$b" ] || [ "$(echo "$t < $b" | bc)" = 1 ]; then b=$t; fi
    done
    echo "$b"
}

for file in "$@"; do
    ours=$(TMPDIR="$scratch" best "$indexer" "$file")
    case "$file" in
    *.pdf | *.PDF)
        ref=$(best sh -c 'pdftotext "$1" - | wc -w' sh "$file")
        printf '%s\tSearchKitIndexer %.3f s\tpdftotext+wc %.3f s\tratio %.2f\n' \
            "$file" "$ours" "$ref" "$(echo "$ours / $ref" | bc -l)"
        ;;
    *)
        printf '%s\t%s bytes\tSearchKitIndexer %.3f s\n' "$file" "$(wc -c <"$file")" "$ours"
        ;;
    esac
done
