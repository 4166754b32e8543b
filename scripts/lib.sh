# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=bash
# What the scripts share: the repository's root, and the packages they need.
set -euo pipefail
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export ROOT

say() { printf '== %s\n' "$*"; }

# need GROUP…: installs what is missing of the groups of packages.txt. Asks the package index
# once, and only when something is missing.
need() {
  local group kind packages missing=()
  while read -r kind packages; do
    for group in "$@"; do
      [ "$kind" = "$group" ] || continue
      local package
      for package in $packages; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q ' installed$' ||
          missing+=("$package")
      done
    done
  done < <(grep -v '^#' "$ROOT/scripts/packages.txt")
  [ ${#missing[@]} -eq 0 ] && return
  say "installing ${missing[*]}"
  local root=()
  [ "$(id -u)" -eq 0 ] || root=(sudo)
  "${root[@]}" apt-get update -q
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -q --no-install-recommends "${missing[@]}"
}

# use_ccache: what was compiled once is not compiled again: not in another clone, not in another
# build directory, and not in the locale that rpmbuild sets.
use_ccache() {
  command -v ccache >/dev/null || return 0
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

mkdir -p "$ROOT/build"
cd "$ROOT"
