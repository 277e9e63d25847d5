#!/usr/bin/env bash
# A killed titler loses at most ten seconds of work: the next start offers it, and the user's file is only
# written when the user saves.
source "$(dirname "${BASH_SOURCE[0]}")/display.sh"
titler=$1
export XDG_DATA_HOME=$work/data

project=$work/fade.ktitle
cat >"$project" <<'EOF2'
{ "version": 1, "video": { "frameRate": "25" }, "title": { "text": "Fade", "scale": 100 } }
EOF2
cp "$project" "$work/before"

# scale NUMBER: sets the title's scale by keyboard.
scale() {
  xdotool key alt+a
  xdotool key ctrl+a
  xdotool type "$1"
  xdotool key Return
}
is_kept() { cat "$work"/data/titler/recovery/*.unsaved | tr -d ' \n' | grep "\"scale\":$1[,}]" >/dev/null; }
kill_titler() {
  kill -KILL "${children[-1]}"
  wait "${children[-1]}" 2>/dev/null || true
  unset 'children[-1]'
}

start titler "$titler" "$project" --workspace animate
focus "fade.ktitle[*]? – titler" >/dev/null
scale 123
wait_until "the first change is kept" is_kept 123
scale 145
sleep 10 # what may be lost
kill_titler
is_kept 145 || fail "more than ten seconds of work are lost"
cmp "$project" "$work/before" || fail "the user's file was written"

# Another one runs meanwhile; what it has not saved is its own.
start other "$titler" --workspace animate
focus "Unsaved work" >/dev/null
xdotool key alt+l
focus "Untitled[*]? – titler" >/dev/null
scale 77
wait_until "the other's change is kept" is_kept 77
other=${children[-1]}

start titler "$titler" --workspace animate
focus "Unsaved work" >/dev/null
xdotool key Return # restores
focus "fade.ktitle[*]? – titler" >/dev/null
cmp "$project" "$work/before" || fail "restoring wrote the user's file"
xdotool key ctrl+s
is_saved() { tr -d ' \n' <"$project" | grep '"scale":145[,}]' >/dev/null; }
wait_until "saving" is_saved
is_one_left() { [ "$(ls "$work"/data/titler/recovery/*.unsaved | wc -l)" = 1 ]; }
wait_until "only the other's is left" is_one_left
xdotool key ctrl+q
has_ended() { ! kill -0 "$1" 2>/dev/null; }
wait_until "the end" has_ended "${children[-1]}"
is_kept 77 || fail "the other's work is gone"
kill "$other"
echo "killed, restored, saved"
