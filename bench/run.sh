#!/usr/bin/env bash
# run.sh [ROW...]: measures the programs and prints a table of ratios, each against a peer or a limit
# of the same run: the least of some runs, taken by turns. Rows are the functions row_NAME below; no
# name means all of them. Builds what it needs with the release preset, needs no display, leaves
# nothing behind, and skips with a word what a machine has no peer for.
#
# MEGABYTES (200) of log and SITE ("PLAYERS GAMES", 5000 20000) make it smaller for a try. Needs four
# times MEGABYTES of free disk space, and three times the site, which is 1.5 GB.
set -euo pipefail

root=$(realpath "$(dirname "${BASH_SOURCE[0]}")/..")
build=$root/build/release
megabytes=${MEGABYTES:-200}
read -r players games <<<"${SITE:-5000 20000}"
runs=5
here=$(mktemp -d)
trap 'rm -rf "$here"' EXIT

main() {
  local rows=("$@")
  [ ${#rows[@]} -gt 0 ] || rows=(grep memory_of_logs goaccess site same_site one_game_more
    start settings stretch)
  build morvane generate_log
  printf '%s, %s cores, %s\n\n' "$(uname -sm)" "$(nproc)" "$(date +%F)"
  printf '| What | Against | Measured | Aim |\n|---|---|---|---|\n'
  local name
  for name in "${rows[@]}"; do "row_$name"; done
}

# build TARGET...: builds targets with the release preset, silently where that goes well.
build() {
  local said=$here/build
  if ! { cmake -S "$root" --preset release && cmake --build "$build" --target "$@"; } \
    >"$said" 2>&1; then
    cat "$said" >&2
    exit 1
  fi
}

# row WHAT AGAINST MEASURED AIM: prints a row.
row() { printf '| %s | %s | %s | %s |\n' "$@"; }

# skip WHAT PEER: says that a row is left out.
skip() { row "$1" "$2" "left out: not installed" "-"; }

# measure COMMAND...: prints seconds on the clock, seconds of the processor and megabytes of memory.
# The command writes into a pipe that is read: grep stops at the first match where nobody reads.
measure() {
  python3 - "$@" <<'PYTHON'
import os, subprocess, sys, time
start = time.monotonic()
process = subprocess.Popen(sys.argv[1:], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
while process.stdout.read(65536): pass
_, status, usage = os.wait4(process.pid, 0)
if status != 0: sys.exit("failed: " + " ".join(sys.argv[1:]))
print(time.monotonic() - start, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024)
PYTHON
}

# least OLD NEW: of two measurements each figure's least; OLD may be empty.
least() { awk '{ for (i = 1; i <= NF; ++i) if (NR == 1 || $i < m[i]) m[i] = $i }
  END { print m[1], m[2], m[3] }' <<<"$1"$'\n'"${2:-$1}"; }

# of FIGURE(1 clock, 2 processor, 3 memory) MEASUREMENT
of() { awk -v i="$1" '{ print $i }' <<<"$2"; }

ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }
fixed() { awk -v a="$1" -v d="$2" 'BEGIN { printf "%.*f", d, a }'; }

# program NAME LOG: makes the program directory NAME that reads LOG.
program() {
  mkdir -p "$here/$1"
  cp "$build/morvane/morvane.exe" "$here/$1/"
  cp -r "$root/share/templates" "$here/$1/"
  sed "s|^logpath0=.*|logpath0=$2|; s|^use_\(.*\)_log=.*|use_\1_log=0|" \
    "$root/share/morvane.cfg" >"$here/$1/morvane.cfg"
}

# evenings MEGABYTES FILE: writes a log of this size, generated evenings again and again.
evenings() {
  "$build/bench/generate_log" 7 40 "$here/evenings"
  while [ "$(stat -c %s "$2" 2>/dev/null || echo 0)" -lt $(($1 * 1000000)) ]; do
    cat "$here/evenings" >>"$2"
  done
}

# one_page: makes the program directory `page`, which writes one page of the log of MEGABYTES.
one_page() {
  [ ! -d "$here/page" ] || return 0
  evenings "$megabytes" "$here/log"
  program page "$here/log"
  sed -i 's/^\(main\)_templates_number=.*/\1_templates_number=1/
          s/^\(map\|game\)_templates_number=.*/\1_templates_number=0/
          s/^\(gamelist\|gamelist_loop\|lastgame\|player\)_template=.*/\1_template=/' \
    "$here/page/morvane.cfg"
}

# by_turns: measures the commands in the arrays `one` and `other` by turns, into `first` and `second`.
by_turns() {
  local i
  first='' second=''
  for ((i = 0; i < runs; ++i)); do
    first=$(least "$(measure "${one[@]}")" "$first")
    second=$(least "$(measure "${other[@]}")" "$second")
  done
}

row_grep() {
  one_page
  one=("$here/page/morvane.exe") other=(grep -c ' Kill: ' "$here/log")
  by_turns
  row "engine, $megabytes MB of logs, one page: speed on the clock" "\`grep -c ' Kill: '\`" \
    "$(ratio "$(of 1 "$second")" "$(of 1 "$first")") ($(fixed "$(of 1 "$first")" 2) s)" "1"
  row "the same: processor time" "the same" \
    "$(ratio "$(of 2 "$first")" "$(of 2 "$second")")" "at most 1.5"
}

row_memory_of_logs() {
  one_page
  local half whole
  head -c $((megabytes * 500000)) "$here/log" >"$here/half.log"
  cp -r "$here/page" "$here/half"
  sed -i "s|^logpath0=.*|logpath0=$here/half.log|" "$here/half/morvane.cfg"
  half=$(measure "$here/half/morvane.exe")
  whole=$(measure "$here/page/morvane.exe")
  row "memory for $megabytes MB of logs" "half of them" \
    "$(ratio "$(of 3 "$whole")" "$(of 3 "$half")") ($(fixed "$(of 3 "$whole")" 0) MB)" "1"
}

# A log of a web server of MEGABYTES: always the same.
web_log() {
  awk -v size=$((megabytes * 1000000)) 'BEGIN {
    srand(7)
    while (written < size) {
      second = int(rand() * 86400)
      line = sprintf("10.%d.%d.%d - - [%02d/Mar/2026:%02d:%02d:%02d +0000] \"GET /page_%d.html " \
        "HTTP/1.1\" 200 %d \"-\" \"Mozilla/5.0 (X11; Linux x86_64) Firefox/115.0\"",
        rand() * 256, rand() * 256, rand() * 256, 1 + rand() * 28, second / 3600,
        second / 60 % 60, second % 60, rand() * 5000, rand() * 50000)
      written += length(line) + 1
      print line
    } }' >"$here/access.log"
}

row_goaccess() {
  local what="engine, $megabytes MB of logs" peer="goaccess on a web log of that size" theirs
  command -v goaccess >/dev/null || { skip "$what" "$peer"; return; }
  one_page
  web_log
  theirs=$(measure goaccess "$here/access.log" --log-format=COMBINED --no-progress \
    -o "$here/report.html")
  first=$(measure "$here/page/morvane.exe")
  first=$(least "$(measure "$here/page/morvane.exe")" "$first")
  rm "$here/access.log"
  row "$what: speed on the clock" "$peer" "$(ratio "$(of 1 "$theirs")" "$(of 1 "$first")")" \
    "above 50"
}

# whole_site: makes the program directory `site` with all its pages, measured in `whole`.
whole_site() {
  [ ! -d "$here/site" ] || return 0
  "$build/bench/generate_log" crowd "$players" "$games" "$here/crowd"
  program site "$here/crowd"
  sed -i 's/^use_db=.*/use_db=1/' "$here/site/morvane.cfg"
  whole=$(measure "$here/site/morvane.exe")
}

row_site() {
  local copied limit
  whole_site
  sync
  copied=$(measure cp -r "$here/site/output" "$here/copy")
  rm -rf "$here/copy"
  limit=$(awk -v a="$(of 1 "$copied")" 'BEGIN { printf "%.1f", (a * 1.5 > 6 ? a * 1.5 : 6) }')
  row "site of $players players and $games games, $(find "$here/site/output" -type f | wc -l) files" \
    "\`cp -r\` of the same files ($(fixed "$(of 1 "$copied")" 1) s)" \
    "$(ratio "$(of 1 "$whole")" "$(of 1 "$copied")") ($(fixed "$(of 1 "$whole")" 1) s)" \
    "at most 1.5, or 6 s where that is more: $limit s"
  row "memory of that run" "120 MB" "$(ratio "$(of 3 "$whole")" 120) ($(fixed "$(of 3 "$whole")" 0) MB)" \
    "at most 1"
}

# again WHAT: times one more run over the site.
again() {
  local taken
  taken=$(measure "$here/site/morvane.exe")
  row "$1" "1 s" \
    "$(fixed "$(of 1 "$taken")" 2) ($(fixed "$(of 2 "$taken")" 2) s of processor time)" "at most 1"
}

row_same_site() {
  whole_site
  again "the same with nothing changed"
}

row_one_game_more() {
  whole_site
  "$build/bench/generate_log" crowd "$players" 1 "$here/game"
  cat "$here/game" >>"$here/crowd"
  again "the same with one game more"
}

# shellcheck source=/dev/null
. "$root/bench/editor.sh"

main "$@"
