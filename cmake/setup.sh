# Sourced by ./run and ./test: installs what is missing, configures and builds.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

packages_build=(g++ cmake ninja-build qt6-base-dev qt6-svg-dev libpng-dev libicu-dev)
packages_run=(fonts-dejavu-core)
packages_docs=(doxygen)
packages_bench=(libbenchmark-dev libpcre2-dev libcairo2-dev fonts-unifont)
packages_package=(dpkg-dev lintian qt6-tools-dev)
packages_windows=(cmake ninja-build g++-mingw-w64-x86-64-posix wine64 googletest)
packages_test=(pkg-config doxygen libgtest-dev xvfb openbox xdotool x11-utils at-spi2-core dbus-daemon python3-gi qt6-tools-dev)

say() { printf '%s\n' "$*" >&2; }

is_installed() {
  [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# Installs the packages of the list that are missing; touches nothing when none is.
need() {
  command -v dpkg-query >/dev/null || return 0 # another system: the build says what it lacks
  local missing=() package
  for package in "$@"; do
    is_installed "$package" || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if command -v sudo >/dev/null && sudo -n true 2>/dev/null; then
      as_root=(sudo)
    else
      say "These packages are missing; install them and call this again:"
      say "  sudo apt-get install ${missing[*]}"
      exit 1
    fi
  fi
  say "Installing: ${missing[*]}"
  "${as_root[@]}" apt-get update -qq >&2
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
}

# build PRESET TARGET [CMake options]: quiet unless it fails. The tests are configured where their packages are.
build() {
  local preset=$1 target=$2 tests=OFF
  shift 2
  if ! command -v dpkg-query >/dev/null || is_installed libgtest-dev; then tests=ON; fi
  [ "$preset" != package ] || tests=OFF
  local log="build/$preset.log"
  mkdir -p build
  say "Building ($preset) …"
  if ! { cmake --preset "$preset" "-DKV_BUILD_TESTS=$tests" -DKV_BUILD_BENCH=OFF "$@" &&
    cmake --build --preset "$preset" --target "$target"; } >"$log" 2>&1; then
    tail -n 60 "$log" >&2
    say "The build failed; the whole log is $log"
    exit 1
  fi
}
