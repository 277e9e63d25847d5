#!/usr/bin/env bash
# The site is built without a warning, and none of its links leads nowhere. site.sh SOURCE OUTPUT
set -euo pipefail
"$1/docs/build" "$2"
cd "$2/html"
[ "$(find . -name 'classCKv*.html' | wc -l)" -ge 50 ] || { echo "there is next to no reference"; exit 1; }
awk -v site=1 -f "$1/tests/docs/links.awk" ./*.html
