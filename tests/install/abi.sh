#!/usr/bin/env bash
# abi.sh SOURCE: a host that was built with the library of the last tag must run with this one. First it shows
# on small libraries that the comparison sees what it is for.
set -euo pipefail
source=$1
work=$(mktemp -d)
trap 'git -C "$source" worktree remove --force "$work/old" 2>/dev/null || true; rm -rf "$work"' EXIT
fail() { printf 'FAILED: %s\n' "$*" >&2; exit 1; }

# Two libraries are compared, since a stored description of one misses enumerations. What travels in messages is
# reached by no function; interfaces that hosts implement are described by nobody else's table.
compare() { # OLD NEW [OPTIONS]
  abidiff --no-added-syms --non-reachable-types "${@:3}" "$1" "$2"
}
whole=-femit-class-debug-always

build_small() { # NAME TEXT
  printf '%s\n' "$2" | "${CXX:-g++}" -g "$whole" -shared -fPIC -x c++ - -o "$work/$1.so"
}
first='enum Kind { One, Two }; struct Record { int a; Kind kind; }; int Count(Record* r) { return r->a; } int More(Kind) { return 1; }'
first+=' struct Told { int code; }; enum Code { Begin, End }; long Send(void* record) { return static_cast<Told*>(record)->code == End; }'
first+=' struct Host { virtual int Ask(); virtual int Answer(); }; int Call(Host* host) { return host->Answer(); }'
build_small first "$first"
build_small same "$first int Another() { return 2; }"
build_small gone "${first/int More(Kind) \{ return 1; \}/}"
build_small layout "${first/int a;/int a; int b;}"
build_small enum "${first/One, Two/One, Between, Two}"
build_small record "${first/int code;/double more; int code;}"
build_small code "${first/Begin, End/Begin, Continue, End}"
build_small interface "${first/virtual int Ask();/virtual int First(); virtual int Ask();}"
compare "$work/first.so" "$work/same.so" >/dev/null || fail "an addition is taken for a break"
for broken in gone layout enum record code interface; do
  ! compare "$work/first.so" "$work/$broken.so" >/dev/null || fail "the comparison does not see: $broken"
done

tag=$(git -C "$source" describe --tags --abbrev=0 2>/dev/null || true)
if [ -z "$tag" ]; then
  echo "There is no tag yet whose library this one could be compared with."
  exit 0
fi
git -C "$source" worktree add -q --detach "$work/old" "$tag"
for tree in "$work/old" "$source"; do
  cmake -G Ninja -S "$tree" -B "$work/build.$(basename "$tree")" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_CXX_FLAGS="$whole" -DKV_BUILD_TESTS=OFF >/dev/null
  cmake --build "$work/build.$(basename "$tree")" --target KvGuiAdvCtrls >/dev/null
done
old=$work/build.old/lib/libKvGuiAdvCtrls.so
new=$work/build.$(basename "$source")/lib/libKvGuiAdvCtrls.so
name_of() { readelf -d "$1" | sed -n 's/.*SONAME.*\[\(.*\)\]/\1/p'; }
if [ "$(name_of "$old")" != "$(name_of "$new")" ]; then
  echo "The binary interface has another number than in $tag; there is nothing to compare."
  exit 0
fi
compare "$old" "$new" --headers-dir1 "$work/old/include" --headers-dir2 "$source/include" ||
  fail "hosts built with $tag break: raise KV_ABI_VERSION in CMakeLists.txt"
echo "Hosts built with $tag run with this library."
