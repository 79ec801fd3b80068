#!/usr/bin/env bash
# Sets up, builds, stages the program directory build/vantrel3/ and starts the editor there.
# Without a display the engine runs once on the staged settings instead.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")"

scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target stage
program_directory=$PWD/build/vantrel3

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  cd "$program_directory" # where the editor's dialogs take relative folders from
  exec ./vantrel3
fi
echo "There is no display to open the editor on: creating the statistics once instead."
"$program_directory/morvane.exe"
echo "The pages are in $program_directory/output; start with stats.html."
