#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
#
# session.sh HOST: starts that host of status items, then the demonstration, as the user of a Debian that has both;
# looks at the pictures of the screen and clicks with the display's pointer. Writes a line for each thing that was
# looked for into results/cells ("item yes"), and the pictures. Called by enter.sh within a session bus.
set -u

here=$(dirname "$0")
results=$here/results
. "$here/screen.sh"
. "$here/hosts/$1.sh"

# cell NAME COMMAND...: waits until the command succeeds, and notes whether it did.
cell() {
    local name=$1 seen=yes
    shift
    wait_for 15 "$@" || seen=no
    [ $seen = yes ] || ! is_unseen_here "$name" || seen=unseen
    echo "$name $seen" | tee -a "$results/cells"
}

# Claude Code's status line names the limits of the account.
use() {
    local resets=$((EPOCHSECONDS + 2 * 3600 + 330))
    echo "{\"rate_limits\":{\"five_hour\":{\"used_percentage\":$1,\"resets_at\":$resets}}}" |
        HOME=$(echo "$TMPDIR"/*) burnwick-report --statusline >/dev/null
}

item_is() { shot "$results/now.png" && place_of "$1" "$panel" "$results/now.png" >"$results/place"; }
# The whole screen, and the panel around the item.
keep_item() {
    local x
    shot "$results/item.png"
    read -r x _ <"$results/place"
    x=$((x < 210 ? 0 : x > 1070 ? 860 : x - 210))
    convert "$results/item.png" -crop "$panel" +repage -crop "420x100+$x+0" +repage "$results/panel.png"
}
no_item() { ! item_is "$green" && ! item_is "$orange" && ! item_is "$red"; }
opens() {
    local x y
    # Its place may have changed, by a host's own sign of notifications.
    item_is "$red" || return
    read -r x y <"$results/place"
    press "$x" "$y"
    wait_for 3 has_focus
}
# A notification may stay for less time than reading a picture takes, or until the user moves.
film() {
    local number
    for number in {1..20}; do
        point $((600 + number)) 500
        shot "$results/film-$number.png"
        sleep 0.5
    done
}
alert_shown() {
    local number last='' seen=1
    for number in {1..20}; do
        [ -z "$last" ] || ! cmp --silent "$last" "$results/film-$number.png" || continue
        last=$results/film-$number.png
        text_in "$last" | grep -q "used 95% of your" || continue
        cp "$last" "$results/alert.png"
        # The first picture may be one of its fading in.
        [ "$seen" = 1 ] || return 0
        seen=0
    done
    return "$seen"
}
window_closed() { close_window; ! has_window; }
# In percent, of the window.
brightness() {
    shot "$results/$1.png" &&
        convert "$results/$1.png" -crop "$(window_place)" +repage -alpha off -colorspace Gray -format '%[fx:int(100*mean)]' info:
}
is_dark() { [ "$(brightness dark)" -lt 30 ]; }
is_light() { [ "$(brightness light)" -gt 70 ]; }

give_up() {
    shot "$results/given-up.png"
    echo "session: $1" >&2
    exit 1
}

export TMPDIR=$HOME/demo
mkdir -p "$TMPDIR"
start_host >"$results/host.log" 2>&1
wait_for 60 has_host || give_up "no host of status items"
wait_for 15 no_item || give_up "the panel has the colours of the item"

"${program_environment[@]}" burnwick-demo --program /usr/bin/burnwick >"$results/program.log" 2>&1 &
wait_for 30 has_window || give_up "no window"
cell registered has_item
wait_for 5 window_closed || give_up "the window does not close"
cell item item_is "$orange"
keep_item
wait_for 20 is_quiet
use 95
film
cell change item_is "$red"
cell alert alert_shown
rm -f "$results"/film-*
cell click opens
# Both are changes.
set_theme dark
cell dark is_dark
set_theme light
cell light is_light
