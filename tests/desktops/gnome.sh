# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
#
# The screen of a headless GNOME Shell: its own picture, and a pointer made within it.

# start_gnome_shell EXTENSION
start_gnome_shell() {
    gsettings set org.gnome.shell welcome-dialog-last-shown-version 99
    gsettings set org.gnome.shell enabled-extensions "['$1']"
    gnome-shell --headless --wayland --no-x11 --virtual-monitor 1280x800 --unsafe-mode &
    export WAYLAND_DISPLAY=wayland-0 QT_QPA_PLATFORM=wayland
    dbus-update-activation-environment --all
    # It begins with the overview.
    wait_for 30 evaluates '!Main.layoutManager._startingUp && Main.overview.visible' &&
        wait_for 10 evaluates 'Main.overview.hide(), !Main.overview.visible'
    # Such as that nobody can lock a headless screen.
    evaluate 'Main.messageTray.getSources().forEach(source => source.destroy()), true'
}

# evaluate JAVASCRIPT: prints the value as JSON.
evaluate() {
    gdbus call --session --dest org.gnome.Shell --object-path /org/gnome/Shell --method org.gnome.Shell.Eval "$1" |
        sed -n "s/^(true, '\(.*\)')$/\1/p" | grep ''
}
evaluates() { [ "$(evaluate "$1")" = true ]; }

shot() {
    gdbus call --session --dest org.gnome.Shell.Screenshot --object-path /org/gnome/Shell/Screenshot \
        --method org.gnome.Shell.Screenshot.Screenshot false false "$1" >/dev/null
}
point() {
    evaluate "const { Clutter } = imports.gi;
        global.pointer ??= Clutter.get_default_backend().get_default_seat().create_virtual_device(Clutter.InputDeviceType.POINTER_DEVICE);
        global.pointer.notify_absolute_motion(0, $1, $2); true" >/dev/null
}
click() {
    local state
    for state in PRESSED RELEASED; do
        evaluate "global.pointer.notify_button(0, imports.gi.Clutter.BUTTON_PRIMARY, imports.gi.Clutter.ButtonState.$state); true" \
            >/dev/null
    done
}
press() { point "$1" "$2" && click; }

# While the user does not move, a notification stays, and GNOME Shell 48 only lists one that came meanwhile.
is_quiet() { point 600 500 && evaluates 'Main.messageTray._notification === null' && point 601 500; }

own_window="global.get_window_actors().map(actor => actor.meta_window).filter(window => window.title === 'Burnwick')"
has_window() { evaluates "$own_window.length > 0"; }
has_focus() { evaluates "global.display.focus_window?.title === 'Burnwick'"; }
close_window() { evaluate "$own_window.forEach(window => window.delete(global.get_current_time())); true" >/dev/null; }
window_place() {
    evaluate "const place = ${own_window}[0].get_frame_rect(); place.width + 'x' + place.height + '+' + place.x + '+' + place.y" | tr -d '"'
}
