# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
packages=(plasma-workspace plasma-desktop kwin-x11 xdg-desktop-portal-kde breeze)
desktop=KDE
panel=1280x50+0+750
alerts=500x500+780+250

start_host() {
    # Version 6, or else 5.
    local daemon
    daemon=$(command -v kded6 kded5 | head -n 1)
    export KDE_FULL_SESSION=true KDE_SESSION_VERSION=${daemon: -1} QT_QUICK_BACKEND=software
    dbus-update-activation-environment --all
    kwin_x11 &
    "$(ls /usr/libexec/kactivitymanagerd /usr/lib/*/libexec/kactivitymanagerd 2>/dev/null)" &
    "$daemon" &
    plasmashell &
}
set_theme() { plasma-apply-colorscheme "$([ "$1" = dark ] && echo BreezeDark || echo BreezeLight)"; }
