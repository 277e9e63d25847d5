#!/usr/bin/env bash
# A stop is dragged with a real mouse: the run has one begin and one end, also outside the window, and a popup
# ends it.
source "$(dirname "${BASH_SOURCE[0]}")/display.sh"
host=$1

start host "$host" host
expect "host" "$work/host.log" ready
window=$(focus host)
log=$work/host.log

# The second default stop, at 0.3 of the bar.
xdotool mousemove --window "$window" $((10 + 4 + 391 * 3 / 10)) 75 mousedown 1
expect "select" "$log" "2 0 FFFFFF00"
xdotool mousemove --window "$window" 250 75
expect "begin" "$log" "1 0 FFFFFF00"
xdotool mousemove --window "$window" 300 300
expect "continue" "$log" "1 1 FFFFFF00"
xdotool mouseup 1
expect "end" "$log" "1 2 FFFFFF00"
[ "$(grep -c '^1 0' "$log")" = 1 ] && [ "$(grep -c '^1 2' "$log")" = 1 ] || fail "not one run"

# The context menu opens over the control and reverses the stops by its mnemonic.
windows() { xwininfo -root -children | grep -c gradient_host; }
before=$(windows)
xdotool mousemove --window "$window" 100 40 click 3
menu_is_open() { [ "$(windows)" -gt "$before" ]; }
wait_until "menu" menu_is_open
xdotool key v
reversed() { [ "$(grep -c '^1 2' "$log")" = 2 ]; }
wait_until "reverse" reversed
echo "dragged, and reversed from the menu"
