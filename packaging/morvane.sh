#!/bin/sh
# The statistics engine, in a program directory of the user's own.
exec "$(dirname "$(readlink -f "$0")")/../libexec/vantrel3/start" morvane.exe "$@"
