#!/usr/bin/env bash
# A stop is dragged with a real mouse: the run has one begin and one end, also outside the window, and a popup
# ends it.
source "$(dirname "${BASH_SOURCE[0]}")/display.sh"
host=$1

start host "$host" host
expect "host" "$work/host.log" ready
window=$(focus host)
log=$work/host.log
begins() { [ "$(grep -c '^1 0' "$log")" = "$1" ]; }
ends() { [ "$(grep -c '^1 2' "$log")" = "$1" ]; }

# The second default stop, at 0.3 of the bar.
xdotool mousemove --window "$window" $((10 + 4 + 391 * 3 / 10)) 75 mousedown 1
expect "select" "$log" "2 0 FFFFFF00"
xdotool mousemove --window "$window" 250 75
expect "begin" "$log" "1 0 FFFFFF00"
xdotool mousemove --window "$window" 300 300
expect "continue" "$log" "1 1 FFFFFF00"
xdotool mouseup 1
expect "end" "$log" "1 2 FFFFFF00"
begins 1 && ends 1 || fail "not one run"

windows() { xwininfo -root -children | grep -c gradient_host; }
before=$(windows)
menu_is_open() { [ "$(windows)" -gt "$before" ]; }
menu_is_closed() { [ "$(windows)" = "$before" ]; }

# A second drag ends while the left button is still down: the right one opens the menu.
xdotool mousemove --window "$window" 300 75 mousedown 1 mousemove --window "$window" 320 75
wait_until "second begin" begins 2
xdotool mousedown 3
wait_until "menu in the drag" menu_is_open
ends 2 || fail "the menu did not end the drag"
xdotool mouseup 3 mouseup 1 key Escape
wait_until "menu closed" menu_is_closed

# The context menu opens over the control and reverses the stops by its mnemonic.
xdotool mousemove --window "$window" 100 40 click 3
wait_until "menu" menu_is_open
xdotool key v
wait_until "reverse" ends 3
echo "dragged, and reversed from the menu"
