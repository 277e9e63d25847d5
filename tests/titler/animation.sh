#!/usr/bin/env bash
# animation.sh TITLER README: the program draws its animation, which moves, and the README begins with one that
# loads quickly.
set -euo pipefail
titler=$1 readme=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { printf 'FAILED: %s\n' "$*" >&2; exit 1; }

"$titler" --selftest-animation "$work" --size 1280x820
different=$(md5sum "$work"/*.png | cut -d ' ' -f 1 | sort -u | wc -l)
[ "$different" -ge 100 ] || fail "only $different pictures are different"

picture=$(grep -m 1 -oE 'docs/images/[a-z]+\.webp' "$readme") || fail "the README has no animated picture"
file=$(dirname "$readme")/$picture
grep -qa ANIM "$file" || fail "$picture does not move"
size=$(stat -c %s "$file")
[ "$size" -lt 2000000 ] || fail "$picture has $size bytes"
