#!/bin/sh
# The editor, in a program directory of the user's own.
exec "$(dirname "$(readlink -f "$0")")/../libexec/vantrel3/start" vantrel3 "$@"
