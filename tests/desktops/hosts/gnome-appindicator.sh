# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
packages=(gnome-shell gjs gnome-shell-extension-appindicator xdg-desktop-portal-gnome xdg-desktop-portal-gtk)
desktop=GNOME
display=wayland
panel=1280x32+0+0
alerts=500x300+390+30

. "${BASH_SOURCE[0]%/*}/../gnome.sh"

start_host() { start_gnome_shell ubuntu-appindicators@ubuntu.com; }
# A single click of this extension opens the menu.
press() { point "$1" "$2" && click && click; }
