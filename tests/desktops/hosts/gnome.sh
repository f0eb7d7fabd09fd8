# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
packages=(gnome-shell gjs xdg-desktop-portal-gnome xdg-desktop-portal-gtk)
desktop=GNOME
display=wayland
panel=1280x32+0+0
alerts=500x300+390+30

. "${BASH_SOURCE[0]%/*}/../gnome.sh"

# The extension of the package, which draws the title itself.
start_host() { start_gnome_shell burnwick@com.burnwick; }
has_name() {
    gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
        --method org.freedesktop.DBus.NameHasOwner "$1" | grep -q true
}
has_host() { has_name com.burnwick.Burnwick.ShellExtension; }
has_item() { has_name com.burnwick.Burnwick.StatusTitle; }
