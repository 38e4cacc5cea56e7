# shellcheck shell=bash disable=SC2034
# Shared by the scripts of this folder, which source it. Leaves the shell in the repository's
# top folder, with `say`, `die`, `install_packages`, `configure` and `build` at hand.
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$top"
jobs=$(nproc 2>/dev/null || echo 2)

# What building and running needs, what more the tests use, and what only the checks need
# (Debian 12 names).
build_packages=(g++ cmake ninja-build ccache pkg-config qtbase5-dev qttools5-dev
  qttools5-dev-tools libqt5sql5-sqlite libqt5sql5-psql libarchive-dev libisal-dev libmongoc-dev
  libsodium-dev libssl-dev libsqlite3-dev libxlsxwriter-dev fonts-noto-cjk fonts-noto-color-emoji
  qttranslations5-l10n)
# Servers for the tests, and other programs that the tests compare ours with.
test_packages=(postgresql python3-gridfs python3-pymongo)
check_packages=(git clang-format-14 clang-tidy-14)
# Another compiler, which reads the public headers; where it cannot be had, that is skipped.
reader_packages=(clang-tools-14 libc++-14-dev)
# The compiler for Windows, and what its libraries are built with from source.
windows_packages=(g++-mingw-w64-x86-64-posix libz-mingw-w64-dev dpkg-dev nasm autoconf automake libtool
  bison flex perl tcl xz-utils)
# Where its programs run, in the tests.
wine_packages=(wine wine64 xvfb xauth fonts-noto-cjk)

say() { printf '==> %s\n' "$*"; }

die() {
  printf '%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

# usage: prints the comment block at the head of the calling script.
usage() { sed -n '2,/^[^#]/{/^#/s/^# \{0,1\}//p}' "$0"; }

as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    die "these packages are missing, and there is neither root nor sudo to install them: ${missing[*]}"
  fi
}

# install_packages NAME...: installs the Debian packages among them that are not there yet.
install_packages() {
  command -v dpkg-query >/dev/null || die "this is no Debian system; install by hand: $*"
  missing=()
  local name
  for name in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || missing+=("$name")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  say "Installing ${missing[*]}"
  as_root apt-get update -qq
  as_root env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# configure PRESET: cmake --preset, with a compiler cache when there is one.
configure() {
  local launcher=()
  if command -v ccache >/dev/null; then
    launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  fi
  say "Configuring build/$1"
  local log="build/configure-$1.log"
  mkdir -p build
  cmake --preset "$1" "${launcher[@]}" >"$log" 2>&1 || {
    cat "$log" >&2
    die "cmake could not configure the build"
  }
}

# configure_windows SDK: CMake remembers where it found the libraries; others are looked for anew.
configure_windows() {
  export KODMS_WINDOWS_SDK=$1
  local known=build/windows/sdk
  [ "$(cat "$known" 2>/dev/null)" = "$1" ] || rm -f build/windows/CMakeCache.txt
  configure windows
  printf '%s\n' "$1" >"$known"
}

# build PRESET [TARGET...]: everything, or the named targets.
build() {
  local preset=$1
  shift
  say "Building build/$preset${*:+ ($*)} with $jobs jobs"
  if [ $# -gt 0 ]; then
    cmake --build --preset "$preset" -j "$jobs" --target "$@"
  else
    cmake --build --preset "$preset" -j "$jobs"
  fi
}
