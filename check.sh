#!/usr/bin/env bash
# Sets up and looks over sources, scripts and documents without running them. Names of checks
# restrict it to these, for instance ./check.sh format links.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")"

files() { git ls-files -z --cached --others --exclude-standard -- "$@"; }
each() { xargs -0 -r "$@"; }

check_format() { files '*.cpp' '*.h' | each clang-format --dry-run -Werror; }

# tidy CHECKS FILES...: those of .clang-tidy but for CHECKS, each written with a "-" in front. The
# compile commands come from the release preset. What clang-tidy says on standard error is how many
# warnings of system headers it left out.
tidy() {
  local but=$1
  shift
  cmake --preset release >/dev/null
  files "$@" | each -P "$(nproc)" -n 1 clang-tidy --quiet -p build/release --checks="$but" \
    2>build/tidy.err || {
    grep -v -E 'warnings? (generated|treated)|^Suppressed|^Use -header-filter' build/tidy.err
    return 1
  }
}

check_tidy() { tidy '-clang-analyzer-*' '*.cpp' ':!tests' ':!bench'; }

# The benches need what scripts/setup.sh bench installs.
check_tidy_tests() { tidy '-clang-analyzer-*' 'tests/*.cpp' 'bench/*.cpp'; }

# What the analyzer finds along the paths through functions; it takes longer than all the rest. Tests
# are left out, as tests/.clang-tidy says.
check_analyze() {
  tidy '-bugprone-*,-cert-*,-misc-*,-modernize-*,-performance-*,-readability-*' '*.cpp' ':!tests'
}

# Tests leave their functions by macros that cppcheck takes for leaks; the sanitizers see to them.
check_cppcheck() {
  files '*.cpp' ':!tests' | each cppcheck --quiet --error-exitcode=1 --std=c++20 --language=c++ \
    -I . -DVANTREL3_MAKER_HOST='""' -DVANTREL3_ENGINE_HOST='""' --library=posix --library=qt \
    --enable=warning,performance,portability --inline-suppr -j "$(nproc)" \
    --suppress=missingInclude --suppressions-list=scripts/cppcheck.txt
}

# Scripts by their first line, whatever they are called.
check_shell() {
  files | each grep -lZE -m1 '^#!(/bin/sh|/usr/bin/env bash)$' | each shellcheck
}

check_spelling() {
  files ':!*.png' ':!*.svg' | each codespell --ignore-words scripts/spelling.txt
}

check_links() { files '*.md' | each scripts/check_links.py; }

# The day of the release comes in when the pages are made.
check_man() {
  local page clean=0
  for page in packaging/*.1.in; do
    sed 's/@VANTREL3_RELEASE_DATE@/2000-01-01/' "$page" | mandoc -T lint -W warning || clean=1
  done
  return "$clean"
}

all=(format shell spelling links man cppcheck tidy tidy_tests analyze)
if [ $# -eq 0 ]; then set -- "${all[@]}"; fi
scripts/setup.sh checks

failed=()
for name in "$@"; do
  declare -F "check_$name" >/dev/null || {
    echo "There is no check $name, only: ${all[*]}" >&2
    exit 2
  }
  echo "Checking: $name"
  "check_$name" || failed+=("$name")
done
if [ ${#failed[@]} -gt 0 ]; then
  echo "Not clean: ${failed[*]}" >&2
  exit 1
fi
echo "Clean: $*"
