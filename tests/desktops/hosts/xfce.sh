# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
packages=(xfce4-panel xfwm4 xfconf xfce4-notifyd xdg-desktop-portal-gtk)
desktop=XFCE
panel=1280x30+0+0
alerts=500x300+780+0

start_host() {
    local settings=$HOME/.config/xfce4/xfconf/xfce-perchannel-xml
    mkdir -p "$settings"
    # Without this the panel asks whether to begin with the default.
    cp /etc/xdg/xfce4/panel/default.xml "$settings/xfce4-panel.xml"
    xfwm4 &
    xfce4-panel &
}
