#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
#
# stub-library.sh NAME LIBRARY: prints a linker's stub for macOS with the names that the Linux library exports.
set -euo pipefail

table=--dynamic
[[ $2 == *.a ]] && table=--extern-only
symbols=$(nm $table --defined-only --format=posix "$2" | sed 's/@.*//' | awk '{ print "\x27_" $1 "\x27" }' |
    LC_ALL=C sort -u | paste -sd, -)
cat <<TBD
--- !tapi-tbd
tbd-version: 4
targets: [ arm64-macos ]
install-name: '@rpath/lib$1.dylib'
exports:
  - targets: [ arm64-macos ]
    symbols: [ $symbols ]
...
TBD
