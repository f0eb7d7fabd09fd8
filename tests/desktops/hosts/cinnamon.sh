# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
packages=(cinnamon xdg-desktop-portal-gtk)
desktop=X-Cinnamon
panel=1280x40+0+760

start_host() {
    dbus-update-activation-environment --all
    cinnamon --sync &
}
