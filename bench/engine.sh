#!/usr/bin/env bash
# engine.sh BUILD [MEGABYTES]: measures the engine of a build folder on generated logs against
# `grep -c ' Kill: '` and `wc -l` on the same bytes; shows that cost is linear and memory small, and
# times a site of many players and games. Best of five for each; every figure is a ratio to a peer
# of the same run or names what it counts. Needs about six times MEGABYTES (200) of free disk space.
set -euo pipefail

build=$(realpath "$1")
megabytes=${2:-200}
here=$(mktemp -d)
trap 'rm -rf "$here"' EXIT
runs=5

# best COMMAND...: the shortest time of several runs, in seconds.
best() {
  local least=
  for ((i = 0; i < runs; ++i)); do
    local taken
    # Not to /dev/null: grep stops at the first match when nobody reads its count.
    taken=$( { TIMEFORMAT=%R; time "$@" >"$here/said" 2>&1; } 2>&1 )
    if [ -z "$least" ] || awk "BEGIN{exit !($taken < $least)}"; then least=$taken; fi
  done
  echo "$least"
}

ratio() { awk "BEGIN{printf \"%.2f\", $1 / $2}"; }

# settings LOG PAGES: a program directory that reads LOG and writes only `stats`, or all pages.
settings() {
  rm -rf "$here/run"
  mkdir "$here/run"
  cp "$build/morvane/morvane.exe" "$here/run/"
  cp -r "$(dirname "$0")/../share/templates" "$here/run/"
  sed "s|^logpath0=.*|logpath0=$1|; s|^use_\(.*\)_log=.*|use_\1_log=0|" \
    "$(dirname "$0")/../share/morvane.cfg" >"$here/run/morvane.cfg"
  if [ "$2" = stats ]; then
    sed -i 's/^\(main\)_templates_number=.*/\1_templates_number=1/
            s/^\(map\|game\)_templates_number=.*/\1_templates_number=0/
            s/^\(gamelist\|gamelist_loop\|lastgame\|player\)_template=.*/\1_template=/' \
      "$here/run/morvane.cfg"
  fi
}

# log MEGABYTES: writes a log of this size, generated evenings repeated.
log() {
  "$build/bench/generate_log" 7 40 "$here/evenings"
  local size=$(($1 * 1000000))
  while [ "$(stat -c %s "$here/log" 2>/dev/null || echo 0)" -lt "$size" ]; do
    cat "$here/evenings" >>"$here/log"
  done
}

memory() { /usr/bin/env python3 - "$@" <<'PYTHON'
import resource, subprocess, sys
subprocess.run(sys.argv[1:], stdout=subprocess.DEVNULL)
print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss // 1024)
PYTHON
}

log "$megabytes"
settings "$here/log" stats
engine=$(best "$here/run/morvane.exe")
grep=$(best grep -c ' Kill: ' "$here/log")
lines=$(best wc -l "$here/log")
echo "$megabytes MB on $(nproc) cores: engine $engine s, grep -c $grep s, wc -l $lines s"
echo "speed of the engine to grep -c: $(ratio "$grep" "$engine"), to wc -l: $(ratio "$lines" "$engine")"

runs=2
for size in $((megabytes / 20)) $((megabytes / 2)) $((megabytes * 5)); do
  rm -f "$here/log"
  log "$size"
  taken=$(best "$here/run/morvane.exe")
  echo "$size MB: $(ratio "$taken * 1000" "$size") ms and" \
    "$(ratio "$(memory "$here/run/morvane.exe")" 1) MB of memory in all, $taken s"
done

rm -f "$here/log"
"$build/bench/generate_log" crowd 5000 20000 "$here/log"
settings "$here/log" all
runs=1
echo "5,000 players and 20,000 games, every page: $(best "$here/run/morvane.exe") s," \
  "$(find "$here/run/output" -type f | wc -l) files; unchanged again: $(best "$here/run/morvane.exe") s"
