#!/usr/bin/env bash
# Makes the README's animated picture anew: docs/animation.sh [TITLER [OUT.webp]]. Needs img2webp (Debian: webp).
set -euo pipefail
here=$(dirname "${BASH_SOURCE[0]}")
titler=${1:-$here/../build/release/bin/titler}
out=${2:-$here/images/titler.webp}
frames=$(mktemp -d)
trap 'rm -rf "$frames"' EXIT
"$titler" --selftest-animation "$frames" --size 1280x820
img2webp -loop 0 -d 80 -lossy -q 80 -m 6 "$frames"/*.png -o "$out"
