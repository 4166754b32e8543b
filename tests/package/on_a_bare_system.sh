#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# on_a_bare_system.sh PACKAGES: installs the Debian packages of this directory on a system of its
# own, uses them as a user does, and removes them. scripts/check packages runs it.
set -euo pipefail

debs=$(realpath "$1")
examples=$(realpath "$(dirname "${BASH_SOURCE[0]}")/../../examples")
install() {
  DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "$@" \
    >/tmp/apt.log 2>&1 || { cat /tmp/apt.log; exit 1; }
}
cd /tmp
apt-get update -q >/tmp/apt.log 2>&1 || { cat /tmp/apt.log; exit 1; }

# What the packages ask for is enough to run what is in them.
install "$debs"/libtav-db-api_*.deb "$debs"/tav-db-api-tools_*.deb
tav-sandbox -- sh -c 'tavctl lock org.example.clock && tavctl info org.example.clock' >out
grep -q '^is_lock  *1$' out

install "$debs"/libtav-db-api-dev_*.deb cmake g++ make pkg-config libglib2.0-dev

# expect_installation PROGRAM: it tells of an app that is installed beside it.
expect_installation() {
  rm -f out # what an earlier program said
  # shellcheck disable=SC2016 # expanded by the inner shell
  timeout 60 tav-sandbox -- sh -c '
    "$1" 1 >out &
    until grep -qs "^waiting for installations$" out; do sleep 0.05; done
    tavctl set-setting memory/tav/app_install org.example.weather
    wait' sh "$1"
  grep -q '^installed: Погода у озера, version 2.8.4$' out
}
read -ra flags < <(pkg-config --cflags --libs tav_db_api glib-2.0)
cc "$examples/installed_apps.c" -o by_pkg_config "${flags[@]}"
expect_installation ./by_pkg_config
cmake -S "$examples" -B by_cmake >log 2>&1 || { cat log; exit 1; }
cmake --build by_cmake >log 2>&1 || { cat log; exit 1; }
expect_installation by_cmake/installed_apps
expect_installation by_cmake/installed_apps_cpp
cmake -S "$examples/tested_app" -B tested_app >log 2>&1 || { cat log; exit 1; }
cmake --build tested_app >log 2>&1 || { cat log; exit 1; }
ctest --test-dir tested_app --output-on-failure | tail -n 3

packages=(libtav-db-api libtav-db-api-dev tav-db-api-tools)
ldconfig -p | grep -q 'libtav_db_api\.so\.0 '
dpkg -L "${packages[@]}" >owned
dpkg --purge "${packages[@]}" >log
# A directory may be another package's too; nothing else of theirs is left.
while read -r path; do
  if [ -e "$path" ] || [ -L "$path" ]; then
    [ -d "$path" ] && dpkg -S "$path" >/dev/null 2>&1 && continue
    [ "$path" = /. ] || { echo "left behind: $path"; exit 1; }
  fi
done <owned
if ldconfig -p | grep 'libtav_db_api\|libdlog'; then
  echo "the linker still knows the libraries above"
  exit 1
fi
