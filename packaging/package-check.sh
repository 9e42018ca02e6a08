#!/bin/sh
# Installs the .deb into a fresh minimal Debian 12 system, runs it, purges it and checks
# that nothing of it is left. Needs root and mmdebstrap (make package-check).
#   package-check.sh DEB           on the host
#   package-check.sh --inside DEB  inside the new system (run by the host's call)
set -eu

here=$(cd "$(dirname "$0")" && pwd)

if [ "${1:-}" != "--inside" ]; then
    deb=$(realpath "$1")
    data="$here/../tests/readers/data"
    work=$(mktemp -d /tmp/tallyvox-package-check.XXXXXX)
    trap 'rm -rf "$work"' EXIT
    mkdir "$work/in"
    cp "$deb" "$0" "$data/source.txt" "$data/source.pdf" "$work/in/"
    echo "== a minimal Debian 12 system (mmdebstrap --variant=minbase bookworm)"
    # The hooks run with /proc, /sys and /dev mounted in the new system.
    mmdebstrap --quiet --variant=minbase \
        --customize-hook="mkdir \"\$1/check\" && cp -r $work/in/. \"\$1/check/\"" \
        --customize-hook="chroot \"\$1\" sh /check/package-check.sh --inside /check/$(basename "$deb")" \
        bookworm "$work/root" \
        "deb http://deb.debian.org/debian bookworm main" \
        "deb http://deb.debian.org/debian bookworm-updates main" \
        "deb http://deb.debian.org/debian-security bookworm-security main"
    echo "== package-check passed"
    exit 0
fi

deb=$2
fail() {
    echo "FAIL: $*"
    exit 1
}
# Every path of the system except the kernel's, the check's own and apt's caches and logs.
snapshot() {
    find / -xdev \( -path /check -o -path /tmp -o -path /var/cache -o -path /var/log \
        -o -path /var/lib/apt/lists \) -prune -o -print | sort
}
export DEBIAN_FRONTEND=noninteractive

snapshot >/check/before
echo "== apt-get install --no-install-recommends $deb"
apt-get install -y -qq --no-install-recommends "$deb" >/check/install.log 2>&1 ||
    { cat /check/install.log; fail "installing"; }
grep -c '^Setting up ' /check/install.log | sed 's/^/packages set up: /'
dpkg-query -L tallyvox | sort >/check/files

echo "== tallyvox --version"
tallyvox --version
version=$(dpkg-query -W -f='${Version}' tallyvox)
[ "$(tallyvox --version)" = "Tallyvox $version" ] || fail "the program and the package differ in version"

echo "== tallyvox --console source.txt source.pdf"
home=/check/home
mkdir -p "$home"
out=$(cd "$home" && env -u DISPLAY -u WAYLAND_DISPLAY HOME="$home" XDG_DATA_HOME="$home/data" \
    XDG_CONFIG_HOME="$home/config" TMPDIR="$home" LC_ALL=C.UTF-8 \
    tallyvox --console /check/source.txt /check/source.pdf) || fail "console mode: $out"
echo "$out"
lists="$home/data/Okaluna Software/Tallyvox"
[ "$(echo "$out" | grep '^open ')" = "open $lists/source.txt.txt
open $lists/source.pdf.txt" ] || fail "console mode did not hand over both word lists"
for line in 'the (4)' 'The (2)' 'brûlée (1)' 'Русский (1)' 'elephant (1)'; do
    grep -qxF "$line" "$lists/source.pdf.txt" || fail "no line '$line' in the PDF's word list"
done
cmp -s "$lists/source.txt.txt" "$lists/source.pdf.txt" || fail "the PDF's word list differs from the text's"
echo "word lists: $(wc -l <"$lists/source.pdf.txt") words each, PDF and text alike"

echo "== apt-get purge --autoremove tallyvox"
apt-get purge -y -qq --autoremove tallyvox >/check/purge.log 2>&1 ||
    { cat /check/purge.log; fail "purging"; }
grep -c '^Removing ' /check/purge.log | sed 's/^/packages removed: /'
left=$(while read -r path; do if [ -f "$path" ]; then echo "$path"; fi; done </check/files)
[ -z "$left" ] || fail "files of the package left: $left"
snapshot >/check/after
if ! diff /check/before /check/after >/check/diff; then
    cat /check/diff
    fail "the system differs from before the installation"
fi
echo "no file left: the system's file list is the same as before the installation"
