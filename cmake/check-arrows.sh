#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
#
# Compares the includes of every folder below src with the folders that its CMakeLists.txt names behind USES: each
# include has to be named, each name to be needed, and no folder may be reached again from itself.
set -euo pipefail
cd "$(dirname "$0")/../src"

named() { # "FOLDER USED" for each name behind USES, and for what programs use
    find . -mindepth 2 -name CMakeLists.txt -printf '%P\n' | while IFS= read -r list; do
        sed -n 's/^ *USES //p' "$list" | tr -d ')' | tr ' ' '\n' | sed "/^$/d; s|^|${list%/CMakeLists.txt} |"
    done | sort -u
}

included() { # "FOLDER USED" for each include of another folder's header
    grep -r --include='*.h' --include='*.cpp' --include='*.mm' '^#include ".*/' . |
        sed -E 's|^\./(.*)/[^/:]*:#include "(.*)/[^/"]*".*|\1 \2|' | awk '$1 != $2' | sort -u
}

status=0
wrong=$(comm -13 <(named) <(included))
idle=$(comm -23 <(named) <(included))
[ -z "$wrong" ] || { status=1 && sed 's/^/Included but not named behind USES: /' <<<"$wrong" >&2; }
[ -z "$idle" ] || { status=1 && sed 's/^/Named behind USES but not included: /' <<<"$idle" >&2; }
named | tsort >/dev/null || status=1
exit "$status"
