#!/usr/bin/env bash
# hardening.sh PROGRAM...: reads off each program that it was built hardened.
set -euo pipefail

failed=0
# expect PROGRAM WHAT PATTERN, on standard input: some line holds the pattern.
expect() {
  grep -qE -- "$3" && return
  echo "$1: $2 is missing"
  failed=1
}

for program in "$@"; do
  expect "$program" "position-independent code" 'Type: +DYN' < <(readelf -hW "$program")
  expect "$program" "full RELRO" 'GNU_RELRO' < <(readelf -lW "$program")
  expect "$program" "immediate binding" 'FLAGS.* NOW|BIND_NOW' < <(readelf -dW "$program")
  expect "$program" "a stack that cannot be executed" 'GNU_STACK .* RW ' < <(readelf -lW "$program")
  expect "$program" "the stack protector" ' __stack_chk_fail' < <(readelf --dyn-syms -W "$program")
  expect "$program" "fortified calls of the C library" ' __[a-z]+_chk(@|$| )' \
    < <(readelf --dyn-syms -W "$program" | grep -v stack_chk)
  expect "$program" "checks of the C++ library" '__glibcxx_assert_fail' \
    < <(readelf --dyn-syms -W "$program")
  if [ "$(uname -m)" = x86_64 ]; then
    # The C library's start-up code has a few of these in every program.
    expect "$program" "control flow protection" '[0-9]{3}' \
      < <(objdump -d --no-show-raw-insn -j .text "$program" | grep -c endbr64)
    # shellcheck disable=SC2016 # the dollar is the disassembler's
    expect "$program" "stack clash protection" 'or[ql] +\$0x0,(0x[0-9a-f]+)?\(%rsp' \
      < <(objdump -d --no-show-raw-insn -j .text "$program")
  fi
done
exit "$failed"
