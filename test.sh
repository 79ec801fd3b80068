#!/usr/bin/env bash
# Sets up, builds and runs all tests. Needs no display.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")"

scripts/setup.sh browser desktop fuzz
cmake --preset release >/dev/null
cmake --build --preset release
ctest --preset release -j "$(nproc)" "$@"
