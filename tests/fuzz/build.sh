#!/bin/sh
# Builds the fuzz targets with clang and libFuzzer into DIR (default: fuzz-build at the
# top of the repository), outside the CMake build: they need only the readers' libraries.
#   tests/fuzz/build.sh [DIR]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
out=${1:-$root/fuzz-build}
mkdir -p "$out/obj"
cxx=${CXX:-clang++}
flags="-std=c++20 -g -O1 -fno-omit-frame-pointer -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined"
includes="-I$root -I$here $(pkg-config --cflags libxml-2.0 libarchive icu-uc)"
libs="$(pkg-config --libs libxml-2.0 libarchive icu-uc)"

readers="ByteSource ContainerReader HtmlReader MarkupParser RtfReader XmlReader ZipArchive"
objs=""
for r in $readers; do
    obj="$out/obj/$r.o"
    if [ ! -e "$obj" ] || [ "$root/indexer/readers/$r.cpp" -nt "$obj" ]; then
        $cxx $flags $includes -c "$root/indexer/readers/$r.cpp" -o "$obj"
    fi
    objs="$objs $obj"
done
for target in rtf_fuzzer html_fuzzer container_fuzzer; do
    $cxx $flags $includes -fsanitize=fuzzer "$here/$target.cpp" $objs $libs -o "$out/$target"
done

# The application's own parsers need only Qt Core.
qt_flags="-fPIC -I$root $(pkg-config --cflags Qt6Core)"
qt_libs="$(pkg-config --libs Qt6Core)"
$cxx $flags $qt_flags -fsanitize=fuzzer "$here/base64_fuzzer.cpp" "$root/services/Base64.cpp" \
    $qt_libs -o "$out/base64_fuzzer"
$cxx $flags $qt_flags -fsanitize=fuzzer "$here/wordtable_fuzzer.cpp" \
    "$root/words/WordTableReader.cpp" $qt_libs -o "$out/wordtable_fuzzer"
echo "fuzz targets in $out"
