#!/bin/sh
# Runs the program for help2man, which takes further usage lines only in GNU's
# "  or:  PROGRAM ..." form: the help's aligned usage lines are given that form.
#   help-text.sh PROGRAM --help|--version
set -eu
"$1" "$2" | sed 's/^       tallyvox /  or:  tallyvox /'
