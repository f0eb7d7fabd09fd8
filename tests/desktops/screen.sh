# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
#
# What session.sh sees and does on a screen; the functions here are those of an X11 display and of a host of status
# items, which another display and another host define anew.

# The colours of the item's dot: below 41 %, below 81 % and above.
green='51 199 89'
orange='252 189 46'
red='255 69 59'

# Where a host shows notifications.
alerts=1280x800+0+0
# What a host puts before the command of the program.
program_environment=(env)

# wait_for SECONDS COMMAND...
wait_for() {
    local deadline=$((EPOCHSECONDS + $1))
    shift
    until "$@" 2>/dev/null; do
        [ "$EPOCHSECONDS" -lt "$deadline" ] || return 1
        sleep 0.2
    done
}

watcher() {
    gdbus call --session --dest org.kde.StatusNotifierWatcher --object-path /StatusNotifierWatcher \
        --method org.freedesktop.DBus.Properties.Get org.kde.StatusNotifierWatcher "$1"
}
has_host() { watcher IsStatusNotifierHostRegistered | grep -q true; }
has_item() { watcher RegisteredStatusNotifierItems | grep -q StatusNotifierItem; }

# place_of COLOUR REGION PICTURE: prints the middle of the pixels of about that colour; fails for fewer than four.
place_of() {
    convert "$3" -crop "$2" -depth 8 txt:- | awk -v "color=$1" '
        BEGIN { split(color, wanted, " ") }
        match($0, /\([0-9.]+,[0-9.]+,[0-9.]+/) {
            split(substr($0, RSTART + 1, RLENGTH - 1), have, ",")
            for (i = 1; i <= 3; ++i) if (have[i] - wanted[i] > 30 || wanted[i] - have[i] > 30) next
            split($1, at, "[,:]"); x += at[1]; y += at[2]; ++count
        }
        END { if (count < 4) exit 1; printf "%d %d\n", x / count, y / count }' >"$3.place" || return 1
    local x y offset=${2#*+}
    read -r x y <"$3.place"
    echo $((x + ${offset%+*})) $((y + ${offset#*+}))
}

# The local threshold makes dark and light notifications alike.
text_in() {
    convert "$1" -crop "$alerts" +repage -alpha off -colorspace Gray -resize 300% -lat 40x40+5% png:- |
        tesseract - - --psm 6 2>/dev/null | tr -s ' \n' ' '
}

shot() { import -silent -window root "$1"; }
point() { xdotool mousemove "$1" "$2"; }
press() { point "$1" "$2" && sleep 0.3 && xdotool click 1; }
window() { xdotool search --onlyvisible --name '^Burnwick$' | tail -n 1; }
has_window() { [ -n "$(window)" ]; }
has_focus() { [ "$(xdotool getactivewindow getwindowname)" = Burnwick ]; }
close_window() { ! has_window || wmctrl -c Burnwick; }
window_place() {
    local X Y WIDTH HEIGHT WINDOW SCREEN
    eval "$(xdotool getwindowgeometry --shell "$(window)")"
    echo "${WIDTH}x$HEIGHT+$X+$Y"
}
# Whether it is known that the host does not show what a cell is about.
is_unseen_here() { false; }
# Whether no notification is shown that would keep the next one from it.
is_quiet() { :; }
# Read by the settings portal of GTK.
set_theme() { gsettings set org.gnome.desktop.interface color-scheme "prefer-$1"; }
