#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
#
# enter.sh HOST: starts a system bus and, as the user, a display and session.sh within a session bus. Runs as root of
# the Debian with the desktop, in namespaces whose end is the end of all processes.
set -eu

host=$1
here=$(dirname "$0")
. "$here/screen.sh"
. "$here/hosts/$host.sh"

ip link set lo up
# Shells ask logind for a seat where this exists.
rm -rf /run/systemd/seats /run/dbus/pid /run/user/1000 /tmp/.X11-unix /tmp/.X*-lock
mkdir -p /run/dbus /run/user/1000 /tmp/.X11-unix
chmod 1777 /tmp/.X11-unix
chown 1000:1000 /run/user/1000
chmod 700 /run/user/1000
dbus-daemon --system --fork
chown -R 1000:1000 "$here/results"

as_user=(setpriv --reuid=1000 --regid=1000 --clear-groups env -i HOME=/home/user USER=user LANG=C.UTF-8 TZ=UTC
    PATH=/usr/local/bin:/usr/bin:/bin:/usr/games SHELL=/bin/sh XDG_RUNTIME_DIR=/run/user/1000 "XDG_CURRENT_DESKTOP=$desktop"
    LIBGL_ALWAYS_SOFTWARE=1)
[ "${display:-x11}" = x11 ] || exec "${as_user[@]}" XDG_SESSION_TYPE=wayland dbus-run-session -- "$here/session.sh" "$host"
exec {number}< <(exec "${as_user[@]}" Xvfb -displayfd 1 -screen 0 1280x800x24 -nolisten tcp 2>/dev/null)
read -r -u "$number" display
exec "${as_user[@]}" "DISPLAY=:$display" XDG_SESSION_TYPE=x11 dbus-run-session -- "$here/session.sh" "$host"
