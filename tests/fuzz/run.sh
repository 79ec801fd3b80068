#!/usr/bin/env bash
# Builds the targets with libFuzzer and both sanitizers, and gives each of them its corpus and a
# number of inputs made from it, the same in every run. Where Clang or its libFuzzer is missing the
# test is left out: exit code 77.
#   run.sh [RUNS]
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/../.."
runs=${1:-20000}

empty='extern "C" int LLVMFuzzerTestOneInput(const unsigned char*, unsigned long) { return 0; }'
if ! clang++ -x c++ -fsanitize=fuzzer,address,undefined - -o /dev/null <<<"$empty" 2>/dev/null; then
  echo "Left out: there is no clang++ with libFuzzer (scripts/setup.sh fuzz)"
  exit 77
fi
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
failed=0
for target in build/fuzz/tests/fuzz/*_fuzz; do
  name=$(basename "$target" _fuzz)
  mkdir "$folder/$name" # for what the target finds worth keeping, so that the corpus stays as it is
  if "$target" -seed=1 -runs="$runs" -max_len=600 -timeout=20 -artifact_prefix="$folder/" \
    "$folder/$name" "build/fuzz/tests/fuzz/corpus/$name" >"$folder/said" 2>&1; then
    echo "$name: $runs inputs"
  else
    failed=1
    echo "$name:"
    grep -v '^#' "$folder/said"
  fi
done
exit "$failed"
