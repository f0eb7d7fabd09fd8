#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
#
# check.sh RELEASE PROGRAMS PICTURES HOST...: runs the session of each of these hosts in a new Debian of that release,
# with the package and the demonstration of the folder PROGRAMS, prints what was seen as a row of a table, and keeps
# pictures in the folder PICTURES. Fails for what was not seen, unless that is known of the host. With
# BURNWICK_DESKTOP_ROOTS the systems are kept in that folder for the next time.
set -euo pipefail

release=$1 programs=$2 pictures=$3
shift 3
here=$(cd "$(dirname "$0")" && pwd)
columns=(registered item change alert click dark light)
row='| %-8s | %-18s | %-8s | %-10s | %-4s | %-6s | %-5s | %-5s | %-4s | %-5s | %7s |\n'
status=0

# shellcheck disable=SC2059 # the format is a constant
printf "$row" release host version "${columns[@]}" seconds
for host in "$@"; do
    begin=$EPOCHSECONDS
    # Without root another user reads and writes these.
    place=$(mktemp --directory)
    mkdir -m 1777 "$place/results"
    cp -r "$here" "$place/scripts"
    cp -r "$programs" "$place/programs"
    chmod -R a+rX "$place"
    BURNWICK_ROOT=${BURNWICK_DESKTOP_ROOTS:+$BURNWICK_DESKTOP_ROOTS/$release-$host} \
        "$here/../../packaging/in-new-debian.sh" "$release" "$place/scripts/in-root.sh" "$place/scripts" "$place/programs" \
        "$host" "$place/results" 2>"$place/results/errors.log" || status=1
    cells=()
    for column in "${columns[@]}"; do
        cells+=("$(sed -n "s/^$column //p" "$place/results/cells" 2>/dev/null || true)")
        case ${cells[-1]:=-} in yes | unseen) ;; *) status=1 ;; esac
    done
    # shellcheck disable=SC2059
    printf "$row" "$release" "$host" "$(cat "$place/results/version" 2>/dev/null || true)" "${cells[@]}" \
        "$((EPOCHSECONDS - begin))"
    grep -h '^session: ' "$place/results/session.log" 2>/dev/null >&2 || true
    rm -rf "${pictures:?}/$release-$host"
    mkdir -p "$pictures"
    mv "$place/results" "$pictures/$release-$host"
    rm -rf "$place"
done
exit "$status"
