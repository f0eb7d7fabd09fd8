# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
packages=(plasma-workspace plasma-desktop kwin-wayland qtwayland5 xdg-desktop-portal-kde breeze)
desktop=KDE
panel=1280x50+0+750
alerts=500x500+780+250

# KWin's screen is a window on the X11 display, which gives it a pointer; its clients see only Wayland.
start_host() {
    local daemon clients=(env -u DISPLAY)
    daemon=$(command -v kded6 kded5 | head -n 1)
    export KDE_FULL_SESSION=true KDE_SESSION_VERSION=${daemon: -1} QT_QUICK_BACKEND=software
    export XDG_SESSION_TYPE=wayland QT_LOGGING_RULES='js.debug=true;kwin_scripting.debug=true'
    # A copy lacks the file's capability for real time, with which it does not start where that is not granted.
    cp /usr/bin/kwin_wayland "$HOME"
    KWIN_COMPOSE=Q "$HOME/kwin_wayland" --x11-display "$DISPLAY" --width 1280 --height 800 --no-lockscreen --socket wayland-0 &
    wait_for 10 test -S "$XDG_RUNTIME_DIR/wayland-0" || return
    export WAYLAND_DISPLAY=wayland-0
    "${clients[@]}" dbus-update-activation-environment --all
    "${clients[@]}" "$(ls /usr/libexec/kactivitymanagerd /usr/lib/*/libexec/kactivitymanagerd 2>/dev/null)" &
    "${clients[@]}" "$daemon" &
    "${clients[@]}" plasmashell &
    program_environment=("${clients[@]}")
}
set_theme() { plasma-apply-colorscheme "$([ "$1" = dark ] && echo BreezeDark || echo BreezeLight)"; }

# kwin EXPRESSION: prints the value of the expression about `own`, the program's window or undefined.
kwin() {
    local script=$XDG_RUNTIME_DIR/script-$RANDOM.js
    cat >"$script" <<SCRIPT
const own = (workspace.windowList ? workspace.windowList() : workspace.clientList()).find(each => each.caption === 'Burnwick');
print('$script ' + ($1));
SCRIPT
    gdbus call --session --dest org.kde.KWin --object-path /Scripting --method org.kde.kwin.Scripting.loadScript "$script" >/dev/null
    gdbus call --session --dest org.kde.KWin --object-path /Scripting --method org.kde.kwin.Scripting.start >/dev/null
    wait_for 2 grep -q "$script" "$results/host.log"
    sed -n "s|.*$script ||p" "$results/host.log"
}
has_window() { [ "$(kwin 'own !== undefined')" = true ]; }
has_focus() { [ "$(kwin 'own !== undefined && own.active')" = true ]; }
close_window() { kwin 'own && own.closeWindow()' >/dev/null; }
window_place() { kwin '(g => g.width + "x" + g.height + "+" + g.x + "+" + g.y)(own.frameGeometry)'; }
# Version 5.27 marks an alert as unread, but shows none after the first notification in this nested KWin.
is_unseen_here() { [ "$1" = alert ] && [ "$KDE_SESSION_VERSION" = 5 ]; }
