#!/bin/sh
# Installs the Debian packages the build, the tests, the checks and the benchmarks need,
# and any named as arguments, only when one of them is missing, so repeated `make` calls
# stay quick.
set -eu

packages="
build-essential cmake ninja-build pkg-config
qt6-base-dev qt6-base-dev-tools qt6-svg-dev qt6-image-formats-plugins libqt6svg6
qt6-tools-dev qt6-l10n-tools qt6-translations-l10n
libicu-dev libplist-dev libuchardet-dev libglib2.0-dev unicode-data libhunspell-dev hunspell-en-us
libpoppler-cpp-dev libxml2-dev libarchive-dev
clang libclang-rt-14-dev
xvfb xauth xclip xdotool dbus dbus-x11 xdg-utils desktop-file-utils appstream
qt6-wayland wl-clipboard sway at-spi2-core python3-pyatspi
dpkg-dev file help2man man-db lintian
imagemagick poppler-utils fonts-dejavu-core python3 hyperfine time bc clang-format clang-tidy
"
# Packages one target needs beyond these (make package-check: mmdebstrap).
packages="$packages $*"

missing=""
for p in $packages; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "ok installed"; then
        missing="$missing $p"
    fi
done
[ -z "$missing" ] && exit 0

if [ "$(id -u)" -eq 0 ]; then
    sudo=""
else
    sudo="sudo"
fi
echo "Installing:$missing"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends $missing
