#!/bin/sh
# Runs a command on a private Xvfb that picks a free display number itself and says
# which when it is ready (-displayfd). xvfb-run -a chooses the number from lock files,
# and a server started just after another one stopped could land on a display still
# being torn down.
#   tests/with-xvfb.sh COMMAND [ARG...]
set -u
dir=$(mktemp -d "${TMPDIR:-/tmp}/xvfb.XXXXXX")
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$dir/display" 2>"$dir/log" &
server=$!
tries=0
while [ ! -s "$dir/display" ]; do
    tries=$((tries + 1))
    if [ "$tries" -gt 200 ] || ! kill -0 "$server" 2>/dev/null; then
        echo "Xvfb did not start:" >&2
        cat "$dir/log" >&2
        kill "$server" 2>/dev/null
        rm -rf "$dir"
        exit 1
    fi
    sleep 0.05
done
DISPLAY=:$(tr -d '\n' <"$dir/display")
export DISPLAY
# Ready means a client gets in, not only that the server says so.
if command -v xdotool >/dev/null; then
    tries=0
    until xdotool getdisplaygeometry >/dev/null 2>&1 || [ "$tries" -gt 100 ]; do
        tries=$((tries + 1))
        sleep 0.05
    done
fi
"$@"
status=$?
kill "$server" 2>/dev/null
wait "$server" 2>/dev/null
rm -rf "$dir"
exit "$status"
