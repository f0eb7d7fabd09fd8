# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
packages=(waybar sway mako-notifier grim jq wlrctl xdg-desktop-portal-gtk)
desktop=sway
display=sway
panel=1280x30+0+0

start_host() {
    export WLR_BACKENDS=headless WLR_LIBINPUT_NO_DEVICES=1 WLR_RENDERER=pixman
    mkdir -p "$HOME/.config/waybar"
    echo '{"height": 30, "modules-right": ["tray", "clock"]}' >"$HOME/.config/waybar/config"
    cat >"$HOME/.config/sway.conf" <<'CONFIG'
output HEADLESS-1 resolution 1280x800
exec dbus-update-activation-environment --all
exec waybar
exec mako
exec env >$XDG_RUNTIME_DIR/environment
CONFIG
    sway --config "$HOME/.config/sway.conf" &
    wait_for 10 grep -q SWAYSOCK "$XDG_RUNTIME_DIR/environment" || return
    export "$(grep ^SWAYSOCK= "$XDG_RUNTIME_DIR/environment")" "$(grep ^WAYLAND_DISPLAY= "$XDG_RUNTIME_DIR/environment")"
}

window() { swaymsg -t get_tree | jq -c '.. | objects | select(.name? == "Burnwick")'; }
shot() { grim "$1"; }
# The pointer moves by steps and begins anywhere.
press() {
    wlrctl pointer move -5000 -5000
    wlrctl pointer move "$1" "$2"
    wlrctl pointer click left
}
has_focus() { [ "$(window | jq .focused)" = true ]; }
close_window() { ! has_window || swaymsg '[title="^Burnwick$"] kill'; }
window_place() { window | jq -r '.rect | "\(.width)x\(.height)+\(.x)+\(.y)"'; }
