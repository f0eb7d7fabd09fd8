#!/bin/sh
# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
#
# check-hardening.sh PROGRAM...: reads in each program whether it was built as cmake/Hardening.cmake says. Of
# stack probes there is no sure sign: only functions with large frames have them.
set -eu
export LC_ALL=C

failures=0

# expect WHAT TEXT PATTERN: the text has a line of that pattern.
expect() {
    if ! printf '%s\n' "$2" | grep -Eq -- "$3"; then
        echo "$program: no $1" >&2
        failures=$((failures + 1))
    fi
}

for program in "$@"; do
    header=$(readelf --file-header --wide "$program")
    segments=$(readelf --program-headers --wide "$program")
    dynamic=$(readelf --dynamic --wide "$program")
    symbols=$(readelf --dyn-syms --wide "$program")
    expect "position independence" "$header" 'Type: +DYN'
    expect "position independence" "$dynamic" 'FLAGS_1.*PIE'
    expect "relocations that are read-only" "$segments" 'GNU_RELRO'
    expect "binding at the start, hence full RELRO" "$dynamic" 'FLAGS_1.*NOW'
    expect "stack without execution" "$segments" 'GNU_STACK .* RW '
    expect "stack protector" "$symbols" '__stack_chk_fail'
    expect "fortified functions" "$symbols" '__[a-z]+_chk@'
    case $header in
    *X86-64*)
        # The start-up code of the C library has no mark, so that the file has none; its code does.
        code=$(objdump --disassemble --no-show-raw-insn "$program")
        expect "landing marks for indirect calls" "$code" 'endbr64'
        ;;
    esac
done
[ "$failures" -eq 0 ]
