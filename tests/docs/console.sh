#!/usr/bin/env bash
# Runs the commands of a page's ```console blocks one after another in one empty folder and compares what they
# print with the page. A command stands behind "$ ", with its here-document up to END; what follows, up to the
# next one, is its output.
# console.sh PAGE PROGRAM…
set -uo pipefail
page=$1
shift
for program in "$@"; do PATH=$(cd "$(dirname "$program")" && pwd):$PATH; done
export LC_ALL=C.UTF-8
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
commands=0 failed=0 status=0

check() { # NUMBER COMMAND EXPECTED
  [ -n "$2" ] || return 0
  commands=$((commands + 1))
  local printed
  printed=$(cd "$work"; (exit $status); eval "$2" 2>&1)
  status=$?
  [ "$printed" = "$3" ] && return 0
  failed=1
  printf '%s:%s: $ %s\n' "$page" "$1" "$2"
  diff <(printf '%s\n' "$3") <(printf '%s\n' "$printed") | sed 's/^</page:    /; s/^>/program: /'
}

number=0 inside=0 at=0 command= expected= document=0
while IFS= read -r line || [ -n "$line" ]; do
  number=$((number + 1))
  case $inside$line in
  0'```console') inside=1 ;;
  1'```')
    check $at "$command" "${expected%$'\n'}"
    inside=0 command= expected=
    ;;
  1'$ '*)
    check $at "$command" "${expected%$'\n'}"
    at=$number command=${line#'$ '} expected=
    [[ $command != *"<<'END'" ]] || document=1
    ;;
  1*)
    if [ $document -eq 1 ]; then
      command+=$'\n'$line
      [ "$line" != END ] || document=0
    else
      expected+=$line$'\n'
    fi
    ;;
  esac
done <"$page"
[ $commands -gt 0 ] || { echo "$page has no commands"; exit 1; }
exit $failed
