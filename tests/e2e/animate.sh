#!/usr/bin/env bash
# titler plays in real time, and the ease dialog edits the keys: with the keyboard, the mouse, OK, Cancel and
# undo. What it did is read from the saved project.
source "$(dirname "${BASH_SOURCE[0]}")/display.sh"
titler=$1

project=$work/fade.ktitle
cat >"$project" <<'EOF'
{
    "version": 1,
    "video": { "width": 640, "height": 360, "frameRate": "25", "scan": "progressive" },
    "duration": 5000,
    "title": {
        "text": "Fade",
        "animation": {
            "opacity": [
                { "frame": 0, "value": 0, "ease": { "kind": "smooth", "out": [0.42, 0], "in": [0.42, 0] } },
                { "frame": 4000, "value": 100 }
            ]
        }
    }
}
EOF

# save: the project as one line, without blanks; only after a change.
save() {
  local before
  before=$(stat -c %y "$project")
  xdotool key ctrl+s
  is_saved() { [ "$(stat -c %y "$project")" != "$before" ]; }
  wait_until "saving" is_saved
  saved=$(tr -d ' \n' <"$project")
}

start titler "$titler" "$project" --play
focus "fade.ktitle[*]? – titler" >/dev/null
sleep 2 # of real time
xdotool key space # pauses; a value is now the key of that frame
xdotool key alt+i
xdotool type 50
xdotool key Return
save
frame=$(grep -oE '"frame":[0-9]+' <<<"$saved" | grep -oE '[0-9]+$' | sort -n | sed -n 2p)
[ "$(grep -o '"frame"' <<<"$saved" | wc -l)" = 3 ] || fail "no key was added: $saved"
[ "$frame" -ge 25 ] && [ "$frame" -le 500 ] || fail "after some two seconds it stands at frame $frame"
xdotool key ctrl+z
save
unchanged=$saved
[ "$(grep -o '"frame"' <<<"$saved" | wc -l)" = 2 ] || fail "undo left the key: $saved"

# open_dialog: from the opacity's field over the strip to its button.
open_dialog() {
  xdotool key alt+i Tab Tab space
  dialog=$(focus "Parameter Curve Setup")
  eval "$(xdotool getwindowgeometry --shell "$dialog" | grep -E 'WIDTH|HEIGHT')"
}
# point X Y: a place in the plot, in thousandths from its left and bottom.
point() {
  local left=$((WIDTH * 7 / 411 + 50)) right=$((WIDTH * 348 / 411 - 20))
  local top=$((HEIGHT * 7 / 211 + 20)) bottom=$((HEIGHT * 187 / 211 - 20))
  xdotool mousemove --window "$dialog" $((left + (right - left) * $1 / 1000)) $((bottom - (bottom - top) * $2 / 1000))
}
# The title's window is found and the dialog is not: a search that fails finds neither.
is_closed() { [ "$(xdotool search --onlyvisible --name '^(Parameter Curve Setup$|fade.ktitle)' | wc -l)" = 1 ]; }

open_dialog
point 420 0
xdotool mousedown 1
point 300 250
point 250 500
xdotool mouseup 1
xdotool key Escape
wait_until "Cancel" is_closed
focus "fade.ktitle[*]? – titler" >/dev/null
open_dialog
point 420 0
xdotool mousedown 1
point 300 250
point 250 500
xdotool mouseup 1
xdotool key Return
wait_until "OK" is_closed
focus "fade.ktitle[*]? – titler" >/dev/null
save
grep -qE '"kind":"own"' <<<"$saved" || fail "the ease is not the user's own: $saved"
xdotool key ctrl+z
save
[ "$saved" = "$unchanged" ] || fail "undo did not bring the ease back: $saved"
echo "played to frame $frame, shaped an ease and took it back"
