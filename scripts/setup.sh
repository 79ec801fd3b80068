#!/usr/bin/env bash
# Installs the Debian packages that the build, the tests and the program need and, called with
# "checks", also those of check.sh. Called with "browser" it installs besides what the tests of the
# pages in Chromium need, with "desktop" what those of the editor on a real X server need, with "fuzz"
# the compiler of tests/fuzz, with "bench" what bench/run.sh measures against; where that cannot be had
# it says so, and they are left out. Run by run.sh, test.sh, check.sh and bench/run.sh; does nothing
# when everything is there.
set -euo pipefail

packages=(
  # build
  g++ cmake ninja-build pkgconf
  qt6-base-dev qt6-svg-dev qt6-qpa-plugins libglib2.0-dev
  libkainjow-mustache-dev libmuparser-dev libsqlitecpp-dev zlib1g-dev libxxhash-dev
  nlohmann-json3-dev
  # tests
  libgtest-dev libgmock-dev tidy dpkg-dev file
  # used by the program when it runs: fonts, browser and viewer start, printing
  fonts-liberation fonts-dejavu-core fonts-dejavu-extra xdg-utils cups-client
)
# What the tests in tests/desktop and scripts/screenshots.py work with.
desktop=(xvfb openbox xdotool xclip x11-utils x11-xserver-utils imagemagick python3)

# The peers of bench/run.sh, and what it watches windows with.
bench=(goaccess cmake-qt-gui doxygen-gui libsimpleini-dev libxcb-damage0-dev xvfb python3)

# Whether the script was called with a word.
asked=" $* "
wants() { [[ $asked = *" $1 "* ]]; }

if wants checks; then
  packages+=(git clang-format clang-tidy cppcheck shellcheck codespell python3 mandoc
    lintian appstream desktop-file-utils)
fi

# Installs those of the packages named that are missing.
install() {
  local missing=() as_root=() package state
  for package in "$@"; do
    state=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$state" = installed ] || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
      echo "These packages are missing and only root can install them: ${missing[*]}" >&2
      return 1
    }
    as_root=(sudo)
  fi
  echo "Installing ${missing[*]}"
  "${as_root[@]}" apt-get update -qq &&
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
      apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# Chromium, and the modules of tests/browser in build/browser. Node.js may be there without a package.
install_browser() {
  local wanted=(chromium) lock=tests/browser/package-lock.json folder=build/browser
  command -v node >/dev/null || wanted+=(nodejs)
  command -v npm >/dev/null || wanted+=(npm)
  install "${wanted[@]}" || return 1
  cmp -s "$lock" "$folder/installed.json" && return 0
  mkdir -p "$folder"
  cp tests/browser/package.json "$lock" "$folder/"
  npm ci --prefix "$folder" --ignore-scripts --no-audit --no-fund --silent || return 1
  cp "$lock" "$folder/installed.json"
}

install "${packages[@]}"
if wants desktop; then
  install "${desktop[@]}" || echo "The tests of the editor on an X server are left out."
fi
if wants fuzz; then
  install clang libclang-rt-14-dev || echo "The targets of tests/fuzz are only replayed."
fi
if wants bench; then
  install "${bench[@]}" || echo "Rows of the benchmarks without a peer are left out."
fi
if wants browser; then
  cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
  install_browser || echo "The tests of the pages in Chromium are left out."
fi
