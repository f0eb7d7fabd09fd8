# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
packages=(cinnamon xapp-sn-watcher xdg-desktop-portal-gtk)
desktop=X-Cinnamon
panel=1280x40+0+760
alerts=500x300+780+0

start_host() {
    dbus-update-activation-environment --all
    cinnamon --sync &
    /usr/libexec/xapps/sn-watcher/xapp-sn-watcher &
}
