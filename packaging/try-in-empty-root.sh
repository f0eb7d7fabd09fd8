#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
#
# try-in-empty-root.sh PACKAGE.deb PICTURE.png [RELEASE]: installs the package, with the dependencies that it
# names and nothing else, into a new Debian system of that release, by default this machine's, and starts it
# there: without a session bus, a keyring or logs. Waits for its window on a virtual display, takes a picture of
# it, and ends the program.
set -euo pipefail

# Within the new system's namespaces, called by mmdebstrap.
try_in() {
    local root=$1 program
    cp "$BURNWICK_PACKAGE" "$root/burnwick.deb"
    chroot "$root" apt-get install --yes --quiet=2 --no-install-recommends /burnwick.deb >/dev/null
    chroot "$root" burnwick-report --title
    # A trial asks nothing of the vendor; nobody answers at the discard port.
    mkdir -p "$root/root/.config/burnwick"
    echo '{"apiBaseURL": "http://127.0.0.1:9", "statusBaseURL": "http://127.0.0.1:9"}' \
        >"$root/root/.config/burnwick/burnwick.json"
    env -i HOME=/root DISPLAY="$DISPLAY" PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 \
        chroot "$root" burnwick &
    program=$!
    local deadline=$((SECONDS + 30))
    until xwininfo -root -tree | grep -q '"Burnwick'; do
        if [ "$SECONDS" -ge "$deadline" ] || ! kill -0 "$program"; then
            echo "try-in-empty-root: no window" >&2
            kill "$program" || true
            return 1
        fi
        sleep 0.1
    done
    # The window is there before it is painted.
    until [ "$(import -window root -format %k info:)" -gt 16 ] || [ "$SECONDS" -ge "$deadline" ]; do
        sleep 0.1
    done
    import -window root "$BURNWICK_PICTURE"
    xwininfo -root -tree | grep '"Burnwick'
    kill -TERM "$program"
    wait "$program"
}

if [ "${1:-}" = --in ]; then
    try_in "$2"
    exit
fi

# Without root it all runs as another user, whom home directories are often closed to.
place=$(mktemp --directory)
chmod 1777 "$place"
cp "$1" "$place/burnwick.deb"
cp "$0" "$place/try"
chmod a+rx "$place"/*
export BURNWICK_PACKAGE=$place/burnwick.deb BURNWICK_PICTURE=$place/picture.png

# Its socket is an abstract one too, which is seen from any root. It lets in every local user.
exec {display}< <(exec Xvfb -displayfd 1 -screen 0 1280x800x24 -nolisten tcp -ac 2>/dev/null)
server=$!
trap 'kill "$server"; rm -rf "$place"' EXIT
read -r number <&"$display"
export DISPLAY=:$number
unset XAUTHORITY

release=${3:-$(. /etc/os-release && echo "$VERSION_CODENAME")}
"$(dirname "$0")/in-new-debian.sh" "$release" "$place/try" --in
cp "$BURNWICK_PICTURE" "$2"
