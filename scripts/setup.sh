#!/usr/bin/env bash
# Installs the Debian packages that the build, the tests and the program need. Run by run.sh and
# test.sh; does nothing when everything is there.
set -euo pipefail

packages=(
  # build
  g++ cmake ninja-build pkgconf
  qt6-base-dev qt6-svg-dev qt6-qpa-plugins libglib2.0-dev
  libkainjow-mustache-dev libmuparser-dev libsqlite3-dev libxxhash-dev nlohmann-json3-dev
  # tests
  libgtest-dev libgmock-dev tidy
  # used by the program when it runs: fonts, browser and viewer start, printing
  fonts-liberation fonts-dejavu-core fonts-dejavu-extra xdg-utils cups-client
)

missing=()
for package in "${packages[@]}"; do
  state=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$state" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || {
    echo "These packages are missing and only root can install them: ${missing[*]}" >&2
    exit 1
  }
  as_root=(sudo)
fi
echo "Installing ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
