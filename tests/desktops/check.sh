#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
#
# check.sh RELEASE PROGRAMS PICTURES HOST...: runs the session of each of these hosts in a new Debian of that release with the
# package and the demonstration of the folder PROGRAMS, prints what was seen as a row of a table, and keeps pictures
# in the folder PICTURES. With BURNWICK_DESKTOP_ROOTS the systems are kept in that folder for the next time.
set -euo pipefail

release=$1 programs=$2 pictures=$3
shift 3
here=$(cd "$(dirname "$0")" && pwd)
columns=(registered item change alert click light dark)
status=0

for host in "$@"; do
    begin=$EPOCHSECONDS
    # Without root another user reads and writes these.
    place=$(mktemp --directory)
    mkdir -m 1777 "$place/results"
    cp -r "$here" "$place/scripts"
    cp -r "$programs" "$place/programs"
    chmod -R a+rX "$place"
    BURNWICK_ROOT=${BURNWICK_DESKTOP_ROOTS:+$BURNWICK_DESKTOP_ROOTS/$release-$host} \
        "$here/../../packaging/in-new-debian.sh" "$release" "$place/scripts/in-root.sh" "$place/scripts" "$place/programs" "$host" \
        "$place/results" || status=1
    printf '%-8s %-12s %-10s' "$release" "$host" "$(cat "$place/results/version" 2>/dev/null || true)"
    for column in "${columns[@]}"; do
        seen=$(sed -n "s/^$column //p" "$place/results/cells" 2>/dev/null || true)
        [ "${seen:-no}" != no ] || status=1
        printf ' %s' "$column: ${seen:-no};"
    done
    echo " $((EPOCHSECONDS - begin)) s"
    rm -rf "${pictures:?}/$release-$host"
    mkdir -p "$pictures"
    mv "$place/results" "$pictures/$release-$host"
    rm -rf "$place"
done
exit "$status"
