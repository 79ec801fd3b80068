#!/usr/bin/env bash
# run.sh EDITOR ENGINE SHARE LOG [TEST...]: works the editor on an X server of its own. Where a
# program that scripts/setup.sh desktop installs is missing, says so and ends with 77, which ctest
# takes for left out.
set -euo pipefail

for program in Xvfb openbox xdotool xclip xprop xwininfo xrandr xset import python3; do
  command -v "$program" >/dev/null || {
    echo "$program is not installed: the editor is not worked on an X server"
    exit 77
  }
done
exec python3 -B "$(dirname "${BASH_SOURCE[0]}")/desktop_test.py" "$@"
