# shellcheck shell=bash disable=SC2154
# The editor's rows of bench/run.sh, which reads this file and gives it `row`, `skip`, `build`, `of`,
# `ratio` and `fixed`, the folders `root`, `build` and `here`, and `runs`.
#   row_start  the editor's start against a bare window, cmake-gui and doxywizard
#   row_settings  loading and saving settings against SimpleIni, QSettings and plain files
#   row_stretch  a save's longest stretch without an event handled

# has TARGET: whether the packages that a program of bench/ needs were there when it was configured.
has() { grep -q "^build bench/$1:" "$build/build.ninja"; }

# middle INDEX MEASUREMENTS: the median of a figure of some measurements, one on each line.
middle() {
  awk -v i="$1" '{ print $i }' <<<"$2" | sort -n | awk '{ all[NR] = $1 }
    END { print all[int((NR + 1) / 2)] }'
}

# started COMMAND...: one start on the X server of this row, with a home of its own.
started() {
  HOME=$here XDG_RUNTIME_DIR=$here QT_QPA_PLATFORM=xcb "$build/bench/window_start" "$@" \
    2>/dev/null
}

# against_start NAME AIM STARTS: a row of the editor's starts, in `own`, against those of a peer.
against_start() {
  local figures=() i
  for i in 1 2 3; do figures+=("$(ratio "$(middle "$i" "$own")" "$(middle "$i" "$3")")"); done
  row "start of the editor until its window shows: clock, processor time, memory" "$1" \
    "${figures[0]}, ${figures[1]}, ${figures[2]}" "$2"
}

row_start() {
  local what="start of the editor" own='' peers=() peer i server screen
  build vantrel3 bare_window
  if ! command -v Xvfb >/dev/null || ! has window_start; then
    skip "$what" "a bare window"
    return
  fi
  build window_start
  exec {screen}<> <(:)
  Xvfb -displayfd "$screen" -noreset -screen 0 1280x1024x24 -nolisten tcp 2>/dev/null &
  server=$!
  read -r -t 60 -u "$screen" i
  exec {screen}>&-
  export DISPLAY=:$i
  mkdir -p "$here/editor"
  cp "$build/app/vantrel3" "$root/share/morvane.cfg" "$here/editor/"
  local -A starts=()
  for peer in "$build/bench/bare_window" cmake-gui doxywizard; do
    if command -v "$peer" >/dev/null; then peers+=("$peer"); else skip "$what" "$peer"; fi
  done
  for ((i = 0; i < runs; ++i)); do
    own+=$(started "$here/editor/vantrel3")$'\n'
    for peer in "${peers[@]}"; do starts[$peer]+=$(started "$peer")$'\n'; done
  done
  kill "$server"
  for peer in "${peers[@]}"; do
    if [ "$peer" = "$build/bench/bare_window" ]; then
      against_start "a bare Qt window with eight tabs" "at most 1.2" "${starts[$peer]%$'\n'}"
    else
      against_start "$peer" "below 1" "${starts[$peer]%$'\n'}"
    fi
  done
}

row_settings() {
  build bare_window
  has settings_bench || { skip "settings: load and save" SimpleIni; return; }
  build settings_bench
  mkdir -p "$here/settings"
  "$build/bench/settings_bench" "$here/settings" "$root/share/morvane.cfg"
}

row_stretch() {
  build save_bench
  mkdir -p "$here/save"
  HOME=$here XDG_RUNTIME_DIR=$here QT_QPA_PLATFORM=offscreen \
    "$build/bench/save_bench" "$here/save" "$root/share/morvane.cfg"
}
