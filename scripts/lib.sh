# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=bash
# What the scripts share: the repository's root, and the packages they need.
set -euo pipefail
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export ROOT

say() { printf '== %s\n' "$*"; }

fail() {
  printf '%s: %s\n' "$0" "$*" >&2
  exit 1
}

has() { command -v "$1" >/dev/null; }

# need GROUP…: installs what is missing of the groups of packages.txt. Asks the package index
# once, and only when something is missing.
need() {
  local group kind packages package wanted=() missing=() root=()
  while read -r kind packages; do
    for group in "$@"; do
      # shellcheck disable=SC2206 # several words
      [ "$kind" != "$group" ] || wanted+=($packages)
    done
  done < <(grep -v '^#' "$ROOT/scripts/packages.txt")
  if ! has dpkg-query; then
    say "no dpkg here that could tell what is missing; needed is what Debian has in: ${wanted[*]}"
    return
  fi
  for package in "${wanted[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q ' installed$' ||
      missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  has apt-get || fail "these packages are missing, and there is no apt-get: ${missing[*]}"
  if [ "$(id -u)" -ne 0 ]; then
    has sudo || fail "these packages are missing, and without sudo only root can install them:" \
      "${missing[*]}"
    root=(sudo)
  fi
  say "installing ${missing[*]}"
  "${root[@]}" apt-get update -q
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -q --no-install-recommends "${missing[@]}"
}

# use_ccache: what was compiled once is not compiled again: not in another clone, not in another
# build directory, and not in the locale that rpmbuild sets. Where ccache cannot write its cache it
# compiles nothing either: it is left out there, in a build directory that has it already too.
use_ccache() {
  has ccache || return 0
  local probe=$ROOT/build/ccache-probe
  echo 'int probe;' >"$probe.c"
  if ! ccache cc -c "$probe.c" -o "$probe.o" 2>"$probe.log"; then
    say "without ccache: $(head -n 1 "$probe.log")"
    export CCACHE_DISABLE=1
    return
  fi
  export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
  export CCACHE_BASEDIR=$ROOT CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=locale
}

# build PRESET [TARGET…]: configures a preset of CMakePresets.json and builds it, or a part of it.
build() {
  say "building ($1)"
  use_ccache
  cmake --preset "$1" -S "$ROOT" >"$ROOT/build/configure-$1.log" 2>&1 ||
    { cat "$ROOT/build/configure-$1.log"; return 1; }
  (cd "$ROOT" && cmake --build --preset "$1" ${2+--target "${@:2}"})
}

# build_and_test PRESET: builds a preset and runs the whole suite on it.
build_and_test() {
  build "$1"
  say "testing ($1)"
  (cd "$ROOT" && ctest --preset "$1")
}

# cache_directory: where systems and results are kept for other clones too; below build/ where the
# user's own cache cannot be written.
cache_directory() {
  local directory=${XDG_CACHE_HOME:-$HOME/.cache}/libtav_db_api
  mkdir -p "$directory" 2>/dev/null && [ -w "$directory" ] || directory=$ROOT/build/cache
  mkdir -p "$directory"
  printf '%s\n' "$directory"
}

# as_newcomer DIRECTORY COMMAND…: runs a command in a directory as a user who owns it and may use
# sudo, as on a new machine. Makes that user: for scripts/in-fresh-debian.
as_newcomer() {
  local place=$1
  shift
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -q
  apt-get install -y -q --no-install-recommends sudo
  id newcomer >/dev/null 2>&1 || useradd --create-home --shell /bin/bash newcomer
  echo 'newcomer ALL=(ALL) NOPASSWD: ALL' >/etc/sudoers.d/newcomer
  chown -R newcomer: "$place"
  sudo -u newcomer -H --preserve-env=DEBIAN_FRONTEND,LC_ALL,PATH \
    bash -c 'cd "$1" && shift && exec "$@"' bash "$place" "$@"
}

case $ROOT in
  *[\"\\:\;\#,\|]* | *$'\n'*)
    fail "CMake, Ninja or the linker cannot build in $ROOT: a path may have no \" \\ : ; # , | and" \
      "no line break" ;;
esac
mkdir -p "$ROOT/build"
cd "$ROOT"
