#!/usr/bin/env bash
# A window with its own caption under a real window manager: dragged, resized, maximised, minimised, closed;
# its popups and keys. Places are compared with one another, since window managers place windows as they like.
source "$(dirname "${BASH_SOURCE[0]}")/display.sh"
host=$1

begin() { # begin NAME LAST-ITEM ARGUMENT…
  log=$work/$1.log
  last=$2
  start "$1" "$host" "${@:3}"
  expect "$1" "$log" ready
  window=$(focus host)
  wait_until "its parts" grep -q '^told' "$log"
}
geometry() { # X Y WIDTH HEIGHT
  xdotool getwindowgeometry --shell "$window" | sed -n 's/^\(X\|Y\|WIDTH\|HEIGHT\)=//p' | xargs
}
geometry_is() { [ "$(geometry)" = "$1" ]; }
# changed_by WHAT BEFORE DX DY DW DH: waits for that difference.
changed_by() {
  local x y w h
  read -r x y w h <<<"$2"
  wait_until "$1" geometry_is "$((x + $3)) $((y + $4)) $((w + $5)) $((h + $6))"
}
mark() { lines=$(wc -l <"$log"); }
# after WHAT LINE: waits for a line since the mark.
has_line() { tail -n +$((lines + 1)) "$log" | grep -xF -- "$1" >/dev/null; }
after() { wait_until "$1: $2" has_line "$2"; }

part() { grep "^part $1 " "$log" | tail -n 1 | cut -d' ' -f3-; }
over() { # over PART: its centre
  local x y w h
  read -r x y w h <<<"$(part "$1")"
  xdotool mousemove --window "$window" $((x + w / 2)) $((y + h / 2))
}
click() { over "$1" && xdotool click 1; }
over_caption() { # a free place behind the items
  local x y w h
  read -r x y w h <<<"$(part "$last")"
  xdotool mousemove --window "$window" $((x + w + 40)) 12
}
double_click_caption() { over_caption && xdotool click --repeat 2 --delay 60 1; }
travel() { xdotool mousemove_relative -- "$1" "$2"; }

# --- Dragged by the caption: in leaps by hand, in small steps by the window manager.
begin title Beta
before=$(geometry)
over_caption
xdotool mousedown 1
travel 60 40
changed_by "a leap" "$before" 60 40 0 0
travel 25 -10
changed_by "another" "$before" 85 30 0 0
xdotool mouseup 1

before=$(geometry)
over_caption
xdotool mousedown 1
for ((step = 0; step < 40; ++step)); do travel 1 0; done
travel 100 0
followed() { # the first steps may be lost to the handing over
  local x y w h x2 y2
  read -r x y w h <<<"$before"
  read -r x2 y2 w h <<<"$(geometry)"
  [ $((x2 - x)) -ge 138 ] && [ $((x2 - x)) -le 140 ] && [ "$y2" = "$y" ]
}
wait_until "small steps" followed
xdotool mouseup 1

# The release went to the window manager; the strip does not wait for it.
mark
xdotool mousemove --window "$window" 350 250
after "hover" "inside"
click Beta
after "tab" "tab 1 Beta"

# --- Buttons, double click.
normal=$(geometry)
normal_size=$(cut -d' ' -f3- <<<"$normal")
maximised() { [ "$(geometry | cut -d' ' -f3-)" = "1600 1000" ]; }
for way in double_click_caption "click 10002"; do
  mark
  $way
  after "$way" "state 3"
  wait_until "$way: whole screen" maximised
  after "$way: laid out" "told 1600 1000"
  mark
  $way
  after "$way" "state 1"
  wait_until "$way: as before" geometry_is "$normal"
  after "$way: laid out" "told $normal_size"
done
mark
click 10003
after "minimise" "state 2"
xdotool windowactivate "$window"
after "back from the task bar" "state 1"
has_focus() { [ "$(xdotool getwindowfocus)" = "$window" ]; }
wait_until "focus" has_focus

mark
over 10001
xdotool mousedown 1
travel -150 100
xdotool mouseup 1
click Alpha
after "tab" "tab 1 Alpha"
geometry_is "$normal" || fail "a press on a button dragged the window"
has_line "close refused" && fail "a press that left the button closed the window"
click 10001
after "close" "close refused"

# --- A maximised window is restored under the pointer.
mark
double_click_caption
wait_until "maximised" maximised
after "laid out" "told 1600 1000"
over_caption
xdotool mousedown 1
travel 0 60
restored() { [ "$(geometry | cut -d' ' -f3-)" = "$normal_size" ]; }
wait_until "restored by dragging" restored
before=$(geometry)
travel 30 20
changed_by "and goes on" "$before" 30 20 0 0
xdotool mouseup 1

# --- Edges: inside the frame, and across the caption bar.
# What the pointer travels before the window manager has taken it over is lost, so the drag waits for that with steps to
# and fro, of which the last one may count or not.
follows() { # follows BEFORE
  local now
  travel 1 1
  now=$(geometry)
  travel -1 -1
  [ "$now" != "$1" ]
}
geometry_is_nearly() { # to a pixel
  local is want=($1) i
  is=($(geometry))
  for i in 0 1 2 3; do [ $((is[i] - want[i])) -ge -1 ] && [ $((is[i] - want[i])) -le 1 ] || return 1; done
}
press() { xdotool mousemove --window "$window" "$1" "$2" mousedown 1; }
resize() { # resize WHAT X Y DX DY -> DX DY DW DH
  local before x y w h
  before=$(geometry)
  read -r x y w h <<<"$before"
  press "$2" "$3"
  # On a busy machine it can miss a press while it still lets go of the edge before.
  try_until 20 follows "$before" || { xdotool mouseup 1; press "$2" "$3"; }
  wait_until "$1 taken" follows "$before"
  travel "$4" "$5"
  wait_until "$1" geometry_is_nearly "$((x + $6)) $((y + $7)) $((w + $8)) $((h + $9))"
  mark
  xdotool mouseup 1
  xdotool mousemove --window "$window" 350 250
  after "$1: the window manager has let go" inside
}
read -r _ _ width height <<<"$(geometry)"
resize "right edge" $((width - 3)) 250 40 0 0 0 40 0
resize "left edge" 2 250 -30 0 -30 0 30 0
resize "bottom corner" 3 $((height - 3)) 20 30 20 0 -20 30
resize "top edge" 330 1 0 -20 0 -20 0 20
laid_out() { tail -n 20 "$log" | grep '^told' | tail -n 1 | grep -x "told $(geometry | cut -d' ' -f3-)" >/dev/null; }
wait_until "laid out" laid_out

# --- Alt+F1 opens the list of applications.
list_is_open() { xwininfo -root -children | grep '"Switch Application (Alt+F1)": ("caption_host' >/dev/null; }
mark
xdotool key alt+F1
wait_until "list of applications" list_is_open
xdotool key Down Return
after "switch" "activated 2"

mark
click 10001
after "close" "closed"
gone() { ! xdotool getwindowgeometry "$window"; }
wait_until "the window is gone" gone

# --- The menu bar: a popup opens below its item, by the mouse and by its letter.
begin menu Edit --menubar
opens_below() {
  local x y w h
  read -r x y w h <<<"$(part "$1")"
  after "popup of $1" "popup $x $((y + h + 1))"
}
mark
click File
opens_below File
xdotool key Down Return
after "command" "command 101"
mark
xdotool key alt+e
opens_below Edit
xdotool key t
after "command by letter" "command 104"
echo "dragged, resized, maximised, minimised, closed; switched and chosen"
