#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# installed_examples.sh CMAKE BUILD EXAMPLES CC CXX: builds the examples against the
# installed library, runs each in a device, and compares what they say of an installation.
# shellcheck source=tests/package/installed.lib.sh
. "$(dirname "${BASH_SOURCE[0]}")/installed.lib.sh"

cmake=$1
install_and_make_device "$1" "$2"
sources=$3 cc=$4 cxx=$5
"$cmake" -S "$sources" -B "$PLACE/build" -DCMAKE_PREFIX_PATH="$PREFIX" -DCMAKE_C_COMPILER="$cc" \
  -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_C_FLAGS=-Werror -DCMAKE_CXX_FLAGS=-Werror \
  >"$PLACE/configure.log"
"$cmake" --build "$PLACE/build" >>"$PLACE/configure.log"

# expect_installations PROGRAM: it lists the apps, tells of two installations, the second of an app
# that the database does not have, and ends.
expect_installations() {
  : >"$PLACE/out" # nothing of an earlier run
  "$1" 2 >"$PLACE/out" &
  local program=$!
  shown 'waiting for installations'
  "$PREFIX/bin/tavctl" set-setting memory/tav/app_install org.example.weather
  shown 'installed: .*, version'
  "$PREFIX/bin/tavctl" set-setting memory/tav/app_install org.example.none
  wait "$program"
  "$PREFIX/bin/tavctl" list --view title --csv >"$PLACE/list"
  diff <(tail -n +2 "$PLACE/list" | cut -d, -f1) \
    <(sed '/^waiting for installations$/,$d' "$PLACE/out" | cut -d ' ' -f 1)
  diff - <(sed '1,/^waiting for installations$/d' "$PLACE/out") <<'END'
installed: Погода у озера, version 2.8.4
installed: org.example.none, which is not to be seen
END
}

# shown PATTERN: waits until the program's output has it.
shown() {
  local tries=500
  until grep -q "$1" "$PLACE/out"; do
    [ $((tries -= 1)) -gt 0 ] || { echo "'$1' was not said:"; cat "$PLACE/out"; exit 1; }
    sleep 0.02
  done
}

# expect_end_on_interrupt PROGRAM: Ctrl-C ends it with status 0.
expect_end_on_interrupt() {
  : >"$PLACE/out"
  "$1" >"$PLACE/out" &
  local program=$!
  shown 'waiting for installations'
  kill -INT "$program"
  wait "$program"
}

for program in installed_apps installed_apps_cpp; do
  expect_installations "$PLACE/build/$program"
  expect_end_on_interrupt "$PLACE/build/$program"
  status=0
  "$PLACE/build/$program" none 2>"$PLACE/err" || status=$?
  [ "$status" = 2 ]
  grep -q '^usage: ' "$PLACE/err"
  rm "$TAV_DEVICE_ROOT/dbspace/.tavcore.db"
  status=0
  "$PLACE/build/$program" >"$PLACE/out" 2>"$PLACE/err" || status=$?
  [ "$status" = 1 ]
  grep -q '^no list; the log says why$' "$PLACE/err"
  rm -r "$TAV_DEVICE_ROOT"
  "$PREFIX/bin/tav-sandbox" --create "$TAV_DEVICE_ROOT"
done
