#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
#
# build-in.sh SOURCES.tar RESULTS COMMAND ROOT: unpacks the sources in the Debian system at ROOT, runs the shell
# command there as a new user of that system would, and copies the package and the demonstration that it built into
# RESULTS.
# Called by in-new-debian.sh.
set -euo pipefail

sources=$1 results=$2 command=$3 root=$4
mkdir "$root/root/burnwick"
tar --extract --file "$sources" --directory "$root/root/burnwick"
chroot "$root" env -i HOME=/root LANG=C.UTF-8 PATH=/usr/sbin:/usr/bin:/sbin:/bin \
    sh -c "cd /root/burnwick && $command" </dev/null
shopt -s nullglob
for file in "$root"/root/burnwick/build/run/*.deb "$root"/root/burnwick/build/run/demo/burnwick-dem[o]; do
    cp "$file" "$results/"
done
