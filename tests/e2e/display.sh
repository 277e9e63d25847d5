# Sourced: a display of our own with a window manager, and helpers to drive windows on it.
# Everything started here ends with the script.

set -euo pipefail
work=$(mktemp -d)
children=()
cleanup() {
  [ ${#children[@]} -eq 0 ] || kill "${children[@]}" 2>/dev/null || true
  wait 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT

fail() {
  printf 'FAILED: %s\n' "$*" >&2
  xwininfo -root -tree >"$work/windows.log" 2>&1 || true
  for log in "$work"/*.log; do
    printf -- '--- %s\n' "$(basename "$log")" >&2
    tail -n 30 "$log" >&2
  done
  exit 1
}

# try_until TIMES COMMAND…: ten times a second.
try_until() {
  local try
  for ((try = 0; try < $1; ++try)); do
    if "${@:2}" >/dev/null 2>&1; then return 0; fi
    sleep 0.1
  done
  return 1
}
# wait_until WHAT COMMAND…: up to 20 seconds.
wait_until() { try_until 200 "${@:2}" || fail "timed out: $1"; }

export HOME=$work/home XDG_CONFIG_HOME=$work/config XDG_CACHE_HOME=$work/cache XDG_RUNTIME_DIR=$work/runtime
mkdir -p "$HOME" "$XDG_CONFIG_HOME" "$XDG_CACHE_HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"
unset DBUS_SESSION_BUS_ADDRESS WAYLAND_DISPLAY QT_QPA_PLATFORM
export LC_ALL=C.UTF-8

# A server that resets itself when its last client leaves turns away the one that comes meanwhile.
Xvfb -displayfd 3 -screen 0 "${screen:-1600x1000}x24" -nolisten tcp -noreset 3>"$work/display" >"$work/xvfb.log" 2>&1 &
children+=($!)
has_number() { [ "$(wc -l <"$work/display")" = 1 ]; } # the whole line: half a number is another display
wait_until "Xvfb" has_number
DISPLAY=:$(cat "$work/display")
export DISPLAY
wait_until "display $DISPLAY" xprop -root
# Its mark on the root window comes before it manages windows; a window mapped in between is never shown.
openbox --startup "touch $work/managed" >"$work/openbox.log" 2>&1 &
children+=($!)
wait_until "openbox" test -e "$work/managed"
wait_until "openbox's mark" sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"'

# start NAME COMMAND…: its output goes to $work/NAME.log.
start() {
  local name=$1
  shift
  "$@" >"$work/$name.log" 2>&1 &
  children+=($!)
}

# focus TITLE: brings a window to the front and waits until it has the keyboard.
focus() {
  local window
  # A search fails when some other window goes meanwhile.
  has_window() { window=$(xdotool search --onlyvisible --name "^$1\$" | head -n 1); [ -n "$window" ]; }
  wait_until "window $1" has_window "$1"
  xdotool windowactivate "$window"
  has_focus() { [ "$(xdotool getwindowfocus)" = "$window" ]; }
  wait_until "focus of $1" has_focus
  printf '%s\n' "$window"
}

# expect WHAT FILE LINE: waits for a line.
expect() { wait_until "$1: $3" grep -qxF -- "$3" "$2"; }
