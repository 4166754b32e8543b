# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=bash
# install_and_make_device CMAKE BUILD: installs the build into a temporary prefix, makes a
# device, and sets PREFIX, PLACE and TAV_DEVICE_ROOT. When the test fails, it shows what the
# programs have written to $PLACE/log, $PLACE/err and the like.
set -euo pipefail

clean_up() {
  local status=$? file
  if [ "$status" -ne 0 ]; then
    for file in "$PLACE"/{*.log,log,out,err}; do
      [ ! -s "$file" ] || { echo "== ${file##*/}"; cat "$file"; }
    done
  fi
  rm -rf "$PLACE"
}

install_and_make_device() {
  PLACE=$(mktemp -d)
  trap clean_up EXIT
  PREFIX=$PLACE/prefix
  "$1" --install "$2" --prefix "$PREFIX" >"$PLACE/install.log"
  "$PREFIX/bin/tav-sandbox" --create "$PLACE/device"
  export TAV_DEVICE_ROOT=$PLACE/device
}

# expect_lookup PROGRAM: the program finds the app whose id it is given.
expect_lookup() {
  local answer
  answer=$("$1" org.example.weather)
  [ "$answer" = org.example.weather ] || { echo "got '$answer'"; exit 1; }
  if "$1" org.example.none; then
    echo "an unknown app was found"
    exit 1
  fi
}
