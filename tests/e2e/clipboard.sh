#!/usr/bin/env bash
# A colour goes from one process to another through the clipboard, and only the left Ctrl key does it.
source "$(dirname "${BASH_SOURCE[0]}")/display.sh"
host=$1

start giver "$host" giver 80123456
start taker "$host" taker FF00FF00
expect "giver" "$work/giver.log" ready
expect "taker" "$work/taker.log" ready

focus giver >/dev/null
xdotool key Control_L+c
focus taker >/dev/null
xdotool keydown 105 key v keyup 105 # by key code: by name the tool presses both Ctrl keys
xdotool key Control_L+v
expect "paste" "$work/taker.log" "1 2 80123456"
[ "$(grep -c '^1 0' "$work/taker.log")" = 1 ] || fail "the right Ctrl key pasted too"
echo "one colour pasted, by the left Ctrl key"
