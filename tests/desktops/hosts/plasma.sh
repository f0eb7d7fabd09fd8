# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
packages=(plasma-workspace plasma-desktop kwin-x11 xdg-desktop-portal-kde breeze qml-module-org-kde-kirigami2)
desktop=KDE
panel=1280x50+0+750

start_host() {
    export KDE_FULL_SESSION=true QT_QUICK_BACKEND=software KDE_SESSION_VERSION=5
    dbus-update-activation-environment --all
    kwin_x11 &
    /usr/lib/x86_64-linux-gnu/libexec/kactivitymanagerd &
    kded5 &
    plasmashell &
}
set_theme() { plasma-apply-colorscheme "$([ "$1" = dark ] && echo BreezeDark || echo BreezeLight)"; }
