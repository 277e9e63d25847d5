#!/usr/bin/env bash
# access.sh TITLER CONTROL: a control of the gallery as a screen reader finds it, on buses of its own.
source "$(dirname "${BASH_SOURCE[0]}")/display.sh"
export GSETTINGS_BACKEND=memory # else the switch for screen readers is kept from run to run
unset AT_SPI_BUS_ADDRESS

# A process group of its own: without its leader the buses would stay behind.
setsid dbus-run-session -- /usr/bin/python3 -B "$(dirname "${BASH_SOURCE[0]}")/access.py" "$@" \
  >"$work/access.out" 2>&1 &
children+=(-$!)
wait $! || { cat "$work/access.out" >&2; fail "$2"; }
echo "found and worked: $2"
