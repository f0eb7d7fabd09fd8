# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
packages=(lxqt-panel lxqt-notificationd lxqt-themes openbox xdg-desktop-portal-gtk)
desktop=LXQt
panel=1280x40+0+760
alerts=500x500+780+250

start_host() {
    # As startlxqt does it.
    export XDG_CONFIG_DIRS=/etc/xdg:/usr/share
    openbox &
    lxqt-notificationd &
    lxqt-panel &
}
