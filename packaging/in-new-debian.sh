#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
#
# in-new-debian.sh RELEASE PROGRAM [ARGUMENT...]: makes a new Debian system of that release in a folder, runs
# PROGRAM with the arguments and, as the last one, the folder, and removes the system again. The program runs as
# the system's root, outside of it; its files are readable to every user. Packages come from the mirror that this
# machine's apt uses.
#
# With BURNWICK_ROOT the system is kept in that folder, and used again by later calls.
#
# Without root this needs user namespaces and a range of user ids (/etc/subuid); a machine that lacks them is
# refused with one line.
set -euo pipefail

release=$1
shift

root=${BURNWICK_ROOT:-}
[ -z "$root" ] || [ ! -d "$root" ] || exec "$@" "$root"

if [ "$(id -u)" -ne 0 ] && ! mmdebstrap --unshare-helper true 2>/dev/null; then
    echo "in-new-debian: another Debian needs root here, because user namespaces or ids in /etc/subuid are not available." >&2
    exit 1
fi

. /etc/os-release
sources=()
if [ "$release" = "${VERSION_CODENAME:-}" ]; then
    # With the security updates that this machine gets.
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources; do
        [ ! -s "$file" ] || sources+=("$file")
    done
else
    mirror=$(apt-get indextargets --format '$(SITE)' 'Created-By: Packages' 'Origin: Debian' 'Label: Debian' | head -n 1)
    if [ -z "$mirror" ]; then
        echo "in-new-debian: apt has no Debian mirror configured, or 'apt-get update' was never run." >&2
        exit 1
    fi
    sources=("$mirror")
fi

printf -v hook '%q ' "$@"
format=directory
[ -n "$root" ] || format=null
exec mmdebstrap --quiet --variant=apt "--format=$format" --customize-hook="$hook\"\$1\"" "$release" "${root:-/dev/null}" \
    "${sources[@]}"
