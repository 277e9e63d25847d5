#!/usr/bin/env bash
# Every option that a program's help names stands in its man page, and the other way round.
# man_pages.sh FOLDER PROGRAM…
set -euo pipefail
folder=$1
shift
failed=0
for program in "$@"; do
  name=$(basename "$program")
  page=$folder/$name.1
  help=$("$program" --help | grep -oE -- '--[a-z][a-z-]+' | sort -u)
  described=$(sed 's/\\-/-/g' "$page" | grep -oE -- '--[a-z][a-z-]+' | sort -u)
  [ "$(wc -l <<<"$help")" -ge 5 ] || { echo "$name --help names next to nothing"; failed=1; }
  if ! diff <(printf '%s\n' "$help") <(printf '%s\n' "$described"); then
    echo "$name: the help (<) and $page (>) differ"
    failed=1
  fi
done
exit $failed
