#!/usr/bin/env bash
# Builds the packages of the build directory $1 and tries what is in them: each unpacked into an
# empty folder, statistics created, page there; and the starters against the files of their users.
set -euo pipefail

build=$1
version=$2

for tool in cpack dpkg-deb dpkg-shlibdeps; do
  command -v "$tool" >/dev/null || {
    echo "Skipped: $tool is missing."
    exit 77
  }
done

scratch=$(mktemp -d)
trap 'chmod -R u+w "$scratch"; rm -rf "$scratch"' EXIT
export HOME=$scratch/home QT_QPA_PLATFORM=offscreen
unset XDG_DATA_HOME DISPLAY WAYLAND_DISPLAY
mkdir "$HOME"
cd "$scratch"

failures=0
expect() { # expect WHAT COMMAND...
  local what=$1
  shift
  if ! "$@"; then
    echo "FAILED: $what"
    failures=$((failures + 1))
  fi
}
not() { ! "$@"; }
has_page() { grep -q 'href="player_' "$1/output/stats.html"; }
# Whether the editor comes as far as its fonts, behind its last plugin.
opens() {
  "$@" >editor.out 2>&1 &
  local editor=$! code=1
  for _ in {1..300}; do
    if grep -q "\.ttf$" "/proc/$editor/maps" 2>/dev/null; then code=0; break; fi
    kill -0 "$editor" 2>/dev/null || break
    sleep 0.1
  done
  kill "$editor" 2>/dev/null || true
  wait "$editor" || true
  return "$code"
}

cpack --config "$build/CPackConfig.cmake" -B packages >cpack.out 2>&1 || {
  cat cpack.out
  exit 1
}

archive_test() {
  mkdir "any where"
  tar -xzf packages/*.tar.gz -C "any where"
  local directory
  directory=$(echo "$scratch/any where"/*)
  expect "the engine runs in the unpacked folder" "$directory/morvane.exe" >engine.out
  expect "the unpacked folder has its page" has_page "$directory"
  expect "the editor opens in the unpacked folder" opens "$directory/vantrel3"
}

control_test() {
  local engine="packages/morvane_${version}_amd64.deb" editor="packages/vantrel3_${version}_amd64.deb"
  engine=${engine/amd64/$(dpkg --print-architecture)}
  editor=${editor/amd64/$(dpkg --print-architecture)}
  dpkg-deb -x "$engine" root
  expect "the engine needs nothing of Qt" not grep -qi qt <(dpkg-deb -f "$engine" Depends)
  expect "the engine's libraries are named" grep -q libsqlite3-0 <(dpkg-deb -f "$engine" Depends)
  expect "the engine comes without the editor" [ ! -e root/usr/bin/vantrel3 ]
  expect "the engine runs without the editor" root/usr/bin/morvane --directory alone >engine.out
  expect "the engine alone makes its page" has_page alone
  dpkg-deb -x "$editor" root
  expect "the editor needs its engine" \
    grep -qF "morvane (= $version)" <(dpkg-deb -f "$editor" Depends)
  expect "the man pages tell the version" \
    grep -qF "vantrel3 $version" <(zcat root/usr/share/man/man1/morvane.1.gz)
  local metainfo=(root/usr/share/metainfo/*.xml)
  expect "the metainfo tells the version" grep -qF "version=\"$version\"" "${metainfo[0]}"
  if command -v appstreamcli >/dev/null; then
    expect "the metainfo is valid" appstreamcli validate --no-net "${metainfo[0]}" >metainfo.out
  fi
  if command -v desktop-file-validate >/dev/null; then
    expect "the menu entry is valid" \
      desktop-file-validate root/usr/share/applications/vantrel3.desktop
  fi
  if command -v systemd-analyze >/dev/null; then
    mkdir units
    cp root/usr/share/doc/morvane/examples/morvane.{service,timer} units
    sed -i "s|=/usr/bin/morvane |=$PWD/root/usr/bin/morvane |" units/morvane.service
    systemd-analyze verify --man=no units/morvane.{service,timer} >units.out 2>&1 || true
    expect "the examples for systemd are understood" [ ! -s units.out ]
  fi
  if command -v lintian >/dev/null; then
    expect "lintian finds nothing" \
      lintian --allow-root --fail-on error,warning "$engine" "$editor" >lintian.out
  fi
}

starter_test() {
  local mine=$HOME/.local/share/vantrel3
  expect "the editor opens in a directory of the user's own" opens root/usr/bin/vantrel3
  expect "the settings are there" cmp root/usr/share/vantrel3/morvane.cfg "$mine/morvane.cfg"
  expect "the texts are there" cmp root/usr/share/vantrel3/quickstart.txt "$mine/quickstart.txt"

  # What the user changes, links, replaces or takes away; then a newer package.
  mkdir mine
  echo mine >>"$mine/morvane.cfg"
  echo mine >"$mine/templates/stats.htmlt"
  mv "$mine/templates/player.htmlt" mine/
  ln -s "$PWD/mine/player.htmlt" "$mine/templates/player.htmlt"
  ln -s nowhere "$mine/templates/link.htmlt"
  rm "$mine/templates/map.htmlt" "$mine/games.log"
  local name
  for name in stats player map game link; do
    echo newer >>"root/usr/share/vantrel3/templates/$name.htmlt"
  done
  echo newer >>root/usr/share/vantrel3/morvane.cfg
  echo >>root/usr/libexec/vantrel3/morvane.exe
  expect "an older directory is filled again" root/usr/bin/morvane --prepare
  expect "changed settings stay" grep -qx mine "$mine/morvane.cfg"
  expect "a changed template stays" grep -qx mine "$mine/templates/stats.htmlt"
  expect "a linked template stays" [ -L "$mine/templates/player.htmlt" ]
  expect "the file behind a link stays" not grep -qx newer mine/player.htmlt
  expect "a link to nothing stays" [ -L "$mine/templates/link.htmlt" ]
  expect "a missing template comes back" grep -qx newer "$mine/templates/map.htmlt"
  expect "an unchanged template is updated" grep -qx newer "$mine/templates/game.htmlt"
  expect "the sample stays away" [ ! -e "$mine/games.log" ]
  expect "the program is updated" \
    cmp root/usr/libexec/vantrel3/morvane.exe "$mine/morvane.exe"
  echo mine >>"$mine/templates/game.htmlt"
  echo newest >>root/usr/share/vantrel3/templates/game.htmlt
  expect "the directory is filled a third time" root/usr/bin/morvane --prepare
  expect "an updated template can be changed, too" grep -qx mine "$mine/templates/game.htmlt"

  # Many starts at once; each leaves whole files and none leaves another.
  local starts=()
  for _ in 1 2 3 4 5 6; do
    root/usr/bin/morvane --directory together --prepare &
    starts+=($!)
  done
  for name in "${starts[@]}"; do expect "a start among others works" wait "$name"; done
  expect "all files are there and no others" diff -r root/usr/share/vantrel3 together \
    --exclude=vantrel3 --exclude=morvane.exe --exclude=.shipped --exclude=link.htmlt

  # Disks that fail: a message, and nothing half.
  expect "a full disk is told of" \
    not bash -c 'ulimit -f 100; trap "" XFSZ; root/usr/bin/morvane --directory full' 2>full.err
  expect "the message names the directory" grep -qF "$PWD/full could not be filled" full.err
  expect "no half file is left" not compgen -G 'full/*.shipping'
  expect "a filled directory follows when there is room" \
    root/usr/bin/morvane --directory full --prepare
  expect "it is whole" cmp root/usr/share/vantrel3/games.log full/games.log
  echo file >file
  expect "a file in the way is told of" \
    not root/usr/bin/morvane --directory file/below 2>file.err
  expect "the message gives the reason" grep -q 'Not a directory' file.err
  mkdir -p locked/.shipped
  expect "a record that cannot be written is told of" \
    not root/usr/bin/morvane --directory locked 2>locked.err
  expect "the message says so" grep -q 'locked cannot be written to. .*Is a directory' locked.err
}

archive_test
control_test
starter_test
if [ "$failures" -gt 0 ]; then
  cat ./*.out ./*.err
  exit 1
fi
