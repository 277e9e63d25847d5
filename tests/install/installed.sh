#!/usr/bin/env bash
# installed.sh CASE SOURCE BUILD TREE: installs BUILD to TREE, or checks what stands there as a stranger would.
set -euo pipefail
case_=$1 source=$2 build=$3 tree=$4
here=$source/tests/install
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() { printf 'FAILED: %s\n' "$*" >&2; exit 1; }
# The library's folder has another name on each system.
libdir=$(dirname "$(find "$tree" -name libKvCore.a 2>/dev/null | head -n 1)")
export PKG_CONFIG_PATH=$libdir/pkgconfig

configure() { # FOLDER [OPTIONS]
  cmake -G Ninja -S "$1" -B "$work/build" -DCMAKE_PREFIX_PATH="$tree" -DCMAKE_BUILD_TYPE=Debug "${@:2}" >"$work/log" 2>&1
}
build_and_run() { # FOLDER
  configure "$1" || { cat "$work/log"; fail "$1 is not configured"; }
  cmake --build "$work/build" || fail "$1 is not built"
  "$work/build/stranger"
}

case $case_ in
tree)
  rm -rf "$tree" "$tree.first"
  cmake --install "$build" --prefix "$tree.first" >/dev/null
  mv "$tree.first" "$tree"
  for path in include/KvGuiAdvCtrls/KvTypes.h bin/kvgroup share/man/man1/kvgroup.1; do
    [ -e "$tree/$path" ] || fail "$path is missing"
  done
  # What is built for a debugger names its sources.
  only=$(grep -q '^CMAKE_BUILD_TYPE:.*=Debug' "$build/CMakeCache.txt" && echo -I || true)
  left=$(grep -rlF $only -e "$source" -e "$build" -e "$tree" "$tree" || true)
  [ -z "$left" ] || fail "paths of the build in: $left"
  ;;
programs)
  for path in applications/titler.desktop icons/hicolor/scalable/apps/titler.svg metainfo/titler.metainfo.xml \
    mime/packages/titler.xml man/man1/titler.1 kvguiadvctrls/skin/skin.ini \
    kvguiadvctrls/skin/light/skin.ini kvguiadvctrls/lang/de.ini; do
    [ -e "$tree/share/$path" ] || fail "share/$path is missing"
  done
  readlink "$libdir/libKvGuiAdvCtrls.so" >/dev/null || fail "the library has no version"
  "$tree/bin/kvgroup" --help >/dev/null
  [ "$("$tree/bin/titler" --version)" = "titler $(pkg-config --modversion kvguiadvctrls)" ] || fail "titler has another version"
  "$tree/bin/titler" --help --language de | grep 'Diese Hilfe' >/dev/null || fail "titler knows no German"
  "$tree/bin/titler" --screenshot "$work/title.png"
  [ -s "$work/title.png" ] || fail "titler drew nothing"
  ;;
designer)
  # It finds the library beside it, wherever the tree stands.
  ldd "$libdir/qt6/plugins/designer/libKvGuiAdvCtrlsDesigner.so" | grep "libKvGuiAdvCtrls.so.* => $libdir/" >/dev/null ||
    fail "the plugin lacks its library"
  ;;
core)
  # A machine without Qt: whoever looks for it is told that there is none.
  configure "$here/core" -DCMAKE_DISABLE_FIND_PACKAGE_Qt6=ON || { cat "$work/log"; fail "Core is not found"; }
  cmake --build "$work/build"
  "$work/build/stranger"
  # Asked for the controls there it says what is missing.
  rm -rf "$work/build"
  if configure "$here/widgets" -DCMAKE_DISABLE_FIND_PACKAGE_Qt6=ON; then fail "Widgets is found without Qt"; fi
  tr -s '\n ' ' ' <"$work/log" | grep -E 'component Widgets: it (needs Qt|was built without)' >/dev/null || { cat "$work/log"; fail "no reason"; }
  pkg-config --cflags --libs kvguiadvctrls-core >"$work/flags"
  "${CXX:-g++}" -std=c++17 "$here/core/main.cpp" -o "$work/stranger" @"$work/flags"
  "$work/stranger"
  # Built alone it lays down no header that wants a toolkit.
  cmake -S "$source" -B "$work/alone" -G Ninja -DKV_CORE_ONLY=ON -DKV_BUILD_PROGRAMS=OFF -DKV_BUILD_TESTS=OFF >"$work/log" ||
    { cat "$work/log"; fail "Core alone is not configured"; }
  mkdir -p "$work/alone/lib"
  cp "$libdir/libKvCore.a" "$work/alone/lib"
  cmake --install "$work/alone" --prefix "$work/tree" >"$work/log" || fail "Core alone wants more than was built"
  (cd "$work/tree/include/KvGuiAdvCtrls" && ls | sed 's/.*/#include <&>/') >"$work/all.cpp"
  grep KvTimecode "$work/all.cpp" >/dev/null || fail "Core alone has no headers"
  "${CXX:-g++}" -std=c++17 -fsyntax-only -I "$work/tree/include/KvGuiAdvCtrls" "$work/all.cpp"
  ;;
examples)
  configure "$tree/share/doc/kvguiadvctrls/examples" -DCMAKE_BUILD_TYPE= || { cat "$work/log"; fail "the examples are not configured"; }
  # All of them are compiled with the library; here one for each way in which they are built.
  cmake --build "$work/build" --target example_NamingRules example_Gradient example_Host || fail "the examples are not built"
  "$work/build/NamingRules" | grep -x 'harbour.mxf: harbour_A1.wav harbour_A2.wav' >/dev/null || fail "no group"
  ;;
library)
  # The preset builds no program, and what it builds is all that its installation wants.
  cmake -S "$source" --preset library -B "$work/library" -DKV_BUILD_DESIGNER=OFF >"$work/log" || { cat "$work/log"; fail "the preset is not configured"; }
  built=$(cmake --build "$work/library" --target help | grep -oE '^(titler|kvgroup|kv_screenshots|example_[A-Za-z]*):' || true)
  [ -z "$built" ] || fail "the preset builds $built"
  mkdir -p "$work/library/lib"
  cp -a "$build"/lib/libKvCore.a "$build"/lib/libKvGuiAdvCtrls.so* "$work/library/lib"
  cmake --install "$work/library" --prefix "$work/tree" >"$work/log" || fail "more is wanted than was built"
  [ ! -e "$work/tree/bin" ] || fail "there are programs"
  tree=$work/tree
  build_and_run "$here/widgets"
  ;;
cmake)
  build_and_run "$here/widgets"
  ;;
first_window)
  # The program of the documentation's first page, as a reader copies it.
  block() { awk -v kind="$1" '$0 == "```" kind { on = 1; next } /^```/ { on = 0 } on' "$source/docs/first-window.md"; }
  mkdir "$work/first"
  block cpp >"$work/first/main.cpp"
  block cmake >"$work/first/CMakeLists.txt"
  configure "$work/first" || { cat "$work/log"; fail "the first program is not configured"; }
  cmake --build "$work/build" || fail "the first program is not built"
  [ -x "$work/build/first" ] || fail "there is no program"
  ;;
pkgconfig)
  pkg-config --cflags --libs kvguiadvctrls >"$work/flags"
  warnings="-Wall -Wextra -Wnon-virtual-dtor -Werror" # the headers are no system's there
  "${CXX:-g++}" -std=c++17 -fPIC $warnings "$here/widgets/main.cpp" -o "$work/stranger" @"$work/flags" -Wl,-rpath,"$libdir"
  "$work/stranger"
  ;;
both)
  if configure "$here/both"; then fail "a program with both libraries is configured"; fi
  grep -q "IS_LINKED_EITHER_AS_Core_OR_AS_GuiAdvCtrls" "$work/log" || { cat "$work/log"; fail "no reason"; }
  ;;
*) fail "no case $case_" ;;
esac
