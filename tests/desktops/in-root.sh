#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
#
# in-root.sh SCRIPTS PROGRAMS HOST RESULTS ROOT: in the Debian at ROOT, installs that host of status items, what session.sh
# needs to see it, and the package and the demonstration of the folder PROGRAMS; runs the session, and copies what
# it saw into RESULTS. SCRIPTS is the folder with these scripts. Called by packaging/in-new-debian.sh.
set -euo pipefail

scripts=$1 programs=$2 host=$3 results=$4 root=$5
. "$scripts/screen.sh"
. "$scripts/hosts/$host.sh"

# Runs the command in the Debian, in namespaces that end all that it started.
inside() {
    # shellcheck disable=SC2016 # for the inner shell
    unshare --mount --pid --net --fork --kill-child sh -c '
        mount -t proc proc "$0/proc" && mount --rbind /dev "$0/dev" &&
        exec chroot "$0" env -i HOME=/root LANG=C.UTF-8 PATH=/usr/sbin:/usr/bin:/sbin:/bin "$@"' "$root" "$@" </dev/null
}
install_packages() {
    chroot "$root" env -i HOME=/root LANG=C.UTF-8 PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive \
        apt-get -o APT::Sandbox::User=root install --yes --quiet=2 --no-install-recommends "$@" >/dev/null 2>"$results/apt.log" ||
        { cat "$results/apt.log" >&2 && return 1; }
}

if [ ! -e "$root/desktops" ]; then
    install_packages dbus iproute2 libglib2.0-bin imagemagick tesseract-ocr tesseract-ocr-eng fonts-dejavu-core fonts-inter \
        adwaita-icon-theme librsvg2-common xvfb xdotool x11-utils wmctrl gsettings-desktop-schemas dconf-gsettings-backend \
        xdg-desktop-portal "${packages[@]}"
    chroot "$root" useradd --create-home --uid 1000 user
    mkdir "$root/desktops"
fi
cp -r "$scripts"/*.sh "$scripts/hosts" "$root/desktops"
rm -rf "$root/desktops/results" "$root/home/user"
mkdir "$root/desktops/results" "$root/home/user"
chroot "$root" chown 1000:1000 /desktops/results /home/user
cp "$programs"/burnwick_*.deb "$root/burnwick.deb"
# A user gets the packages that it recommends too.
install_packages --install-recommends --reinstall --allow-downgrades /burnwick.deb
install "$programs/burnwick-demo" "$root/usr/local/bin/burnwick-demo"

status=0
inside timeout 300 /desktops/enter.sh "$host" >"$results/session.log" 2>&1 || status=$?
# The host's version, without the packaging's.
chroot "$root" dpkg-query -W -f='${source:Upstream-Version}\n' "${packages[0]}" >"$results/version"
cp "$root"/desktops/results/* "$results"
exit "$status"
