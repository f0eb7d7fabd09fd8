# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
packages=(mate-panel marco mate-notification-daemon mate-settings-daemon mate-themes xdg-desktop-portal-gtk)
desktop=MATE
panel=1280x28+0+0
alerts=500x300+780+0

start_host() {
    mate-settings-daemon &
    marco &
    mate-panel &
}
