# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
packages=(waybar sway mako-notifier jq xdg-desktop-portal-gtk)
desktop=sway
panel=1280x30+0+0
alerts=500x300+780+0

# Sway's screen is a window on the X11 display, which gives it a pointer; its clients see only Wayland.
start_host() {
    local environment=$XDG_RUNTIME_DIR/environment
    mkdir -p "$HOME/.config/waybar" "$HOME/.config/sway"
    echo '{"height": 30, "modules-right": ["tray", "clock"]}' >"$HOME/.config/waybar/config"
    cat >"$HOME/.config/sway/config" <<CONFIG
output X11-1 mode 1280x800
xwayland disable
exec env -u DISPLAY dbus-update-activation-environment --all
exec env -u DISPLAY waybar
exec env -u DISPLAY mako
exec env >$environment
CONFIG
    export XDG_SESSION_TYPE=wayland
    WLR_BACKENDS=x11 WLR_RENDERER=pixman sway &
    wait_for 10 grep -q SWAYSOCK "$environment" || return
    export "$(grep ^SWAYSOCK= "$environment")" "$(grep ^WAYLAND_DISPLAY= "$environment")"
    program_environment=(env -u DISPLAY)
}

window() { swaymsg -t get_tree | jq -c '.. | objects | select(.name? == "Burnwick")'; }
has_focus() { [ "$(window | jq .focused)" = true ]; }
close_window() { ! has_window || swaymsg --quiet '[title="^Burnwick$"] kill'; }
window_place() { window | jq -r '.rect | "\(.width)x\(.height)+\(.x)+\(.y)"'; }
