#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# scripts.sh CHECK ROOT: tries the functions of scripts/lib.sh in a tree of its own, on a machine
# that has the programs of $place/bin alone.
# shellcheck disable=SC2016 # the programs expand their arguments themselves
set -euo pipefail
unset CCACHE_DISABLE CMAKE_CXX_COMPILER_LAUNCHER # what scripts/test has set
check=$1 root=$2
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
tree="$place/a b ä/it's"
mkdir -p "$tree/scripts" "$place/bin"
cp "$root/scripts/lib.sh" "$tree/scripts"
printf '%s\n' '# a comment' 'one here away' 'two gone' >"$tree/scripts/packages.txt"
for program in bash dirname env grep head mkdir; do
  ln -s "$(command -v "$program")" "$place/bin"
done

# program NAME: a program of the machine, the text of which is standard input.
program() {
  { echo '#!/usr/bin/env bash'; cat; } >"$place/bin/$1"
  chmod +x "$place/bin/$1"
}
program id <<<'echo 1000'
# The package "here" is installed.
program dpkg-query <<<'[ "${*: -1}" = here ] && printf "install ok installed"'

# run COMMAND…: runs it with the functions of lib.sh; sets status and said.
run() {
  status=0
  said=$(PATH="$place/bin" bash -c '. "$0/scripts/lib.sh"; "$@"' "$tree" "$@" 2>&1) || status=$?
}

# expect STATUS TEXT: so has it ended, and that is all it has said; … stands for anything.
expect() {
  # shellcheck disable=SC2053 # the right side is a pattern
  [ "$status" = "$1" ] && [[ $said == ${2//…/*} ]] && return
  printf 'status %s: %s\nnot status %s: %s\n' "$status" "$said" "$1" "$2"
  exit 1
}

check_nothing_missing() {
  echo 'one here' >"$tree/scripts/packages.txt"
  run need one
  expect 0 ''
}

check_no_apt() {
  run need one two
  expect 1 '…: these packages are missing, and there is no apt-get: away gone'
}

check_no_sudo() {
  program apt-get <<<'echo "$0 $*"'
  run need one
  expect 1 '…: these packages are missing, and without sudo only root can install them: away'
}

check_installed() {
  program apt-get <<<'exit 1'
  program sudo <<<'echo "$*"'
  run need two one
  expect 0 '== installing away gone
apt-get update -q
env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends away gone'
}

check_no_dpkg() {
  rm "$place/bin/dpkg-query"
  run need one two
  expect 0 '== no dpkg here …: here away gone'
}

# shellcheck disable=SC2317 # called through run
show_ccache() {
  use_ccache
  echo "${CMAKE_CXX_COMPILER_LAUNCHER-none} ${CCACHE_DISABLE-enabled}"
}

check_ccache() {
  export -f show_ccache
  run show_ccache
  expect 0 'none enabled'
  program ccache <<<'[ "$1" = cc ]'
  run show_ccache
  expect 0 'ccache enabled'
  program ccache <<<'echo "ccache: error: no place" >&2; exit 1'
  run show_ccache
  expect 0 '== without ccache: ccache: error: no place
none 1'
}

check_cache() {
  export XDG_CACHE_HOME=$place/cache
  run cache_directory
  expect 0 "$place/cache/libtav_db_api"
  [ -d "$place/cache/libtav_db_api" ]
  XDG_CACHE_HOME=/dev/null/none
  run cache_directory
  expect 0 "$tree/build/cache"
  [ -d "$tree/build/cache" ]
}

check_path() {
  local sound=$tree letter
  for letter in '"' "\\" : ';' '#' ',' '|' $'\n'; do
    tree=$sound${letter}x
    cp -r "$sound" "$tree"
    run true
    [[ $status:$said == 1:*"cannot build in $tree: "* ]] || { echo "accepted: $tree"; exit 1; }
  done
}

"check_$check"
