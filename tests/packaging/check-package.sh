#!/bin/sh
# Checks the files a user's system receives, taken from the .deb itself.
#   check-package.sh build CPACK_CONFIG DIR   build the .deb into DIR and unpack it in DIR/root
#   check-package.sh desktop|metainfo|manual|lintian DIR
set -eu

step=$1
shift

case $step in
build)
    config=$1 dir=$2
    rm -rf "$dir"
    cpack -G DEB --config "$config" -B "$dir" >"$dir.log" 2>&1 || { cat "$dir.log"; exit 1; }
    deb=$(ls "$dir"/tallyvox_*_amd64.deb)
    dpkg-deb -x "$deb" "$dir/root"
    root=$dir/root
    # The program finds its indexers beside it, and the bus starts the packaged program.
    for indexer in SearchKitIndexer SearchKitIndexer32; do
        test -x "$root/usr/bin/../libexec/tallyvox/$indexer" || {
            echo "no $indexer where /usr/bin/tallyvox looks for it"
            exit 1
        }
    done
    grep -qx 'Exec=/usr/bin/tallyvox' "$root/usr/share/dbus-1/services/com.okaluna.Tallyvox.service" || {
        echo "the D-Bus service does not start /usr/bin/tallyvox"
        exit 1
    }
    ;;
desktop)
    # Every file in the desktop-entry format: the entry and the file-manager menus.
    # Dolphin's service menus are KDE's dialect of it (Type=Service with MimeType and
    # Actions, the MIME type all/allfiles, no Name): only those findings are let pass.
    status=0
    for file in $(find "$1/root" -name '*.desktop' | sort); do
        echo "$file"
        findings=$(desktop-file-validate "$file" 2>&1) || true
        if grep -qx 'Type=Service' "$file"; then
            findings=$(printf '%s\n' "$findings" | grep -v \
                -e 'but the type is "Service"' -e 'required key "Name"' \
                -e '"all" is an unregistered media type' || true)
        fi
        if [ -n "$findings" ]; then
            echo "$findings"
            status=1
        fi
    done
    test -f "$1/root/usr/share/applications/com.okaluna.Tallyvox.desktop"
    exit $status
    ;;
metainfo)
    metainfo=$1/root/usr/share/metainfo/com.okaluna.Tallyvox.metainfo.xml
    # --strict: a warning fails too, only pedantic hints pass.
    appstreamcli validate --strict --no-net "$metainfo"
    # The validator takes a list in one <mediatype> for one odd type; software centres do not.
    if grep -n '<mediatype>[^<]*;' "$metainfo"; then
        echo "one <mediatype> element per type"
        exit 1
    fi
    # Reserved names (RFC 2606) stand for addresses that do not exist.
    if grep -n -E '[a-z0-9.-]+\.(example|invalid|test|localhost)([/:<"]|$)' "$metainfo"; then
        echo "an address on a placeholder domain"
        exit 1
    fi
    ;;
manual)
    warnings=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 \
        man --warnings -E UTF-8 -l -Tutf8 -Z "$1/root/usr/share/man/man1/tallyvox.1.gz" 2>&1 >/dev/null)
    if [ -n "$warnings" ]; then
        echo "$warnings"
        exit 1
    fi
    ;;
lintian)
    # No error and no warning; the remaining informational tags are explained in
    # docs/packaging.md.
    found=$(lintian --fail-on error --tag-display-limit 0 "$1"/tallyvox_*_amd64.deb) || {
        echo "$found"
        exit 1
    }
    echo "$found"
    warnings=$(echo "$found" | grep '^W: ' || true)
    [ -z "$warnings" ] || { echo "warnings:"; echo "$warnings"; exit 1; }
    ;;
*)
    echo "unknown step $step"
    exit 2
    ;;
esac
