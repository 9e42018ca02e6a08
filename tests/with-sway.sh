#!/bin/sh
# Runs a command in a private headless Wayland session: sway on wlroots' headless backend
# (no GPU, no input devices, no Xwayland), with a runtime folder of its own. The command
# gets WAYLAND_DISPLAY (the socket's full path) and no DISPLAY. When no compositor starts,
# the command runs without WAYLAND_DISPLAY and TALLYVOX_NO_WAYLAND says why, so that it
# can skip.
#   tests/with-sway.sh COMMAND [ARG...]
set -u
dir=$(mktemp -d "${TMPDIR:-/tmp}/sway.XXXXXX")
chmod 755 "$dir"
runtime=$dir/runtime
mkdir -m 700 "$runtime"
printf 'xwayland disable\n' >"$dir/config"
unset DISPLAY WAYLAND_DISPLAY
# sway refuses to run as root: there it runs as nobody, which owns its runtime folder.
as_user=""
if [ "$(id -u)" -eq 0 ]; then
    chown 65534 "$runtime"
    as_user="setpriv --reuid=65534 --regid=65534 --clear-groups"
fi
server=""
if command -v sway >/dev/null; then
    $as_user env HOME="$dir" XDG_RUNTIME_DIR="$runtime" WLR_BACKENDS=headless \
        WLR_LIBINPUT_NO_DEVICES=1 WLR_RENDERER=pixman \
        sway --config "$dir/config" >"$dir/log" 2>&1 &
    server=$!
    tries=0
    while [ -z "$(find "$runtime" -name 'wayland-*' ! -name '*.lock' 2>/dev/null)" ]; do
        tries=$((tries + 1))
        # Up to 30 s: on a machine busy with a parallel build sway has taken over 10 s.
        if [ "$tries" -gt 600 ] || ! kill -0 "$server" 2>/dev/null; then
            break
        fi
        sleep 0.05
    done
fi
socket=$(find "$runtime" -name 'wayland-*' ! -name '*.lock' 2>/dev/null | head -n 1)
if [ -n "$socket" ]; then
    WAYLAND_DISPLAY=$socket
    export WAYLAND_DISPLAY
    # The clients' own runtime folder, which Qt wants to be theirs.
    XDG_RUNTIME_DIR=$dir/client
    mkdir -m 700 "$XDG_RUNTIME_DIR"
    export XDG_RUNTIME_DIR
else
    if command -v sway >/dev/null; then
        TALLYVOX_NO_WAYLAND="sway did not start: $(tail -n 3 "$dir/log" | tr '\n' ' ')"
    else
        TALLYVOX_NO_WAYLAND="sway is not installed"
    fi
    export TALLYVOX_NO_WAYLAND
fi
"$@"
status=$?
if [ -n "$server" ]; then
    kill "$server" 2>/dev/null
    wait "$server" 2>/dev/null
fi
rm -rf "$dir"
exit "$status"
