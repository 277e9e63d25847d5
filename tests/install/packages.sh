#!/usr/bin/env bash
# packages.sh FOLDER: the packages in it hold to Debian's rules, need one another as they should, and leave
# nothing behind once they were installed, used and purged. Installs into the system, so it wants root.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$1"
fail() { printf 'FAILED: %s\n' "$*" >&2; exit 1; }
depends() { dpkg-deb -f "$1"_*.deb Depends; }
HOME=$(mktemp -d) # what the programs write of their own accord would be seen
export HOME
listing() { # all files but those that belong to nobody: caches, and the packager's own notes
  find /usr /etc /opt "$HOME" -xdev \( ! -path '*/mime/*' -o -path '*/mime/packages/*' \) ! -name '*.cache' ! -path '*/__pycache__/*' | sort
}

library=$(basename libkvguiadvctrls[0-9]*.deb | cut -d_ -f1)
version=$(dpkg-deb -f "$library"_*.deb Version)
names=$(for file in *.deb; do dpkg-deb -f "$file" Package; done)
for name in $names; do
  [ "$name" = "$library" ] || depends "$name" | grep -F "$library (= $version)" >/dev/null || fail "$name does not need $library"
done
depends libkvguiadvctrls-dev | grep qt6-base-dev >/dev/null || fail "nobody can compile with the headers"
depends "$library" | grep libqt6widgets6 >/dev/null || fail "the library does not need the toolkit"
lintian --allow-root --fail-on error,warning ./*.deb

! dpkg-query -W $names >/dev/null 2>&1 || fail "the packages are installed already"
before=$(listing)
work=$(mktemp -d)
trap 'rm -rf "$work" "$HOME"; dpkg --purge $names >/dev/null 2>&1 || true' EXIT
dpkg -i ./*.deb >/dev/null
kvgroup --help >/dev/null
QT_QPA_PLATFORM=offscreen titler --settings "$work/settings.json" --screenshot "$work/title.png"
[ -s "$work/title.png" ] || fail "titler drew nothing"
# A stranger's program, both ways, with nothing but what the packages laid down.
widgets=$here/widgets
cmake -G Ninja -S "$widgets" -B "$work/build" >"$work/log" && cmake --build "$work/build" >>"$work/log" || { cat "$work/log"; fail "find_package"; }
"${CXX:-g++}" -std=c++17 -fPIC "$widgets/main.cpp" -o "$work/stranger" $(pkg-config --cflags --libs kvguiadvctrls)
QT_QPA_PLATFORM=offscreen "$work/build/stranger"
QT_QPA_PLATFORM=offscreen "$work/stranger"
dpkg -L "$library" | grep '\.so\.' >/dev/null || fail "there is no library in $library"
plugin=$(dpkg -L kvguiadvctrls-designer | grep '/qt6/plugins/designer/.*\.so$') || fail "there is no plugin"
! ldd "$plugin" | grep 'not found' >/dev/null || fail "the plugin lacks a library"
dpkg --purge $names >/dev/null
left=$(diff <(printf '%s\n' "$before") <(listing) || true)
[ -z "$left" ] || fail "left behind or taken away: $left"
echo "Packages: all is well."
