#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# tested_app.sh CMAKE BUILD EXAMPLE CC: builds an application against the installed library
# and runs its tests, each in a device of its own; and sees what the function that adds such tests
# makes of wrong arguments.
# shellcheck source=tests/package/installed.lib.sh
. "$(dirname "${BASH_SOURCE[0]}")/installed.lib.sh"

cmake=$1
install_and_make_device "$1" "$2"
unset TAV_DEVICE_ROOT # a test outside a sandbox would find no device
example=$3 cc=$4
export TMPDIR=$PLACE/tmp
mkdir "$TMPDIR"

# configure SOURCES DIRECTORY: what is said goes to $PLACE/log.
configure() {
  "$cmake" -S "$1" -B "$2" -DCMAKE_PREFIX_PATH="$PREFIX" -DCMAKE_C_COMPILER="$cc" \
    -DCMAKE_C_FLAGS=-Werror >"$PLACE/log" 2>&1
}

configure "$example" "$PLACE/build"
"$cmake" --build "$PLACE/build" >"$PLACE/log" 2>&1
ctest() { "$(dirname "$cmake")/ctest" --test-dir "$PLACE/build" "$@" >"$PLACE/log" 2>&1; }
ctest --output-on-failure
grep -q '^100% tests passed, 0 tests failed out of 3$' "$PLACE/log"

# A seed that does not say what the test expects makes it fail, and tells where.
cp -r "$example" "$PLACE/changed"
sed -i 's/"limit_age": 12/"limit_age": 11/' "$PLACE/changed/family.json"
configure "$PLACE/changed" "$PLACE/build-changed"
"$cmake" --build "$PLACE/build-changed" >"$PLACE/log" 2>&1
if "$(dirname "$cmake")/ctest" --test-dir "$PLACE/build-changed" >"$PLACE/log" 2>&1; then
  echo "the tests pass with another seed"
  exit 1
fi
grep -q 'locks_the_apps_from_an_age_on .*Failed' "$PLACE/log"
grep -q 'locks_nothing_above_every_age .*Passed' "$PLACE/log"

# expect_refusal ARGUMENTS MESSAGE: configuring ends with the function's message.
expect_refusal() {
  mkdir -p "$PLACE/wrong"
  printf '%s\n' 'cmake_minimum_required(VERSION 3.25)' 'project(wrong LANGUAGES C)' \
    'find_package(tav_db_api REQUIRED)' 'set(CMAKE_FIND_USE_SYSTEM_ENVIRONMENT_PATH OFF)' \
    'set(CMAKE_FIND_USE_CMAKE_SYSTEM_PATH OFF)' "tav_add_sandboxed_test($1)" \
    >"$PLACE/wrong/CMakeLists.txt"
  if configure "$PLACE/wrong" "$PLACE/build-wrong"; then
    echo "accepted: tav_add_sandboxed_test($1)"
    exit 1
  fi
  tr -s ' \n' ' ' <"$PLACE/log" | grep -qF "tav_add_sandboxed_test: $2" || {
    echo "not refused with '$2':"
    exit 1
  }
}
expect_refusal 'COMMAND true' 'NAME is missing'
expect_refusal 'NAME a' 'COMMAND is missing'
expect_refusal 'NAME a SEEDS x.json COMMAND true' 'unknown arguments: SEEDS;x.json'
expect_refusal 'NAME a COMMAND true SEED none.json' "a: there is no seed $PLACE/wrong/none.json"
mv "$PREFIX/bin/tav-sandbox" "$PLACE/tav-sandbox"
rm -rf "$PLACE/build-wrong"
expect_refusal 'NAME a COMMAND true' 'there is no tav-sandbox; it comes with'

mv "$PLACE/tav-sandbox" "$PREFIX/bin/tav-sandbox"

# What was built for a device comes without the function, and is found all the same.
of_function=$(find "$PREFIX" -name TavSandboxedTest.cmake)
mv "$of_function" "$PLACE/TavSandboxedTest.cmake"
mkdir "$PLACE/for-device"
printf '%s\n' 'cmake_minimum_required(VERSION 3.25)' 'project(for_device LANGUAGES C)' \
  'find_package(tav_db_api REQUIRED)' 'if(COMMAND tav_add_sandboxed_test)' \
  'message(FATAL_ERROR "the function is there")' 'endif()' >"$PLACE/for-device/CMakeLists.txt"
configure "$PLACE/for-device" "$PLACE/build-for-device"
mv "$PLACE/TavSandboxedTest.cmake" "$of_function"

rmdir "$TMPDIR" # nothing stays of the sandboxes

# Arguments arrive as they are; the time limit ends all that runs in the sandbox.
mkdir "$PLACE/more" "$TMPDIR"
cat >"$PLACE/more/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.25)
project(more LANGUAGES C)
find_package(tav_db_api REQUIRED)
enable_testing()
tav_add_sandboxed_test(NAME arguments WORKING_DIRECTORY /
                       COMMAND sh -c "test $PWD = /; test $1 = 'a;b' && test $# = 1" sh "a;b")
tav_add_sandboxed_test(NAME slow TIMEOUT 1 COMMAND sh -c "echo $$ >$ENV{TMPDIR}/id; sleep 600")
END
configure "$PLACE/more" "$PLACE/build-more"
"$(dirname "$cmake")/ctest" --test-dir "$PLACE/build-more" >"$PLACE/log" 2>&1 || true
grep -q 'arguments .*Passed' "$PLACE/log" ||
  { cat "$PLACE/build-more/Testing/Temporary/LastTest.log"; exit 1; }
grep -q 'slow .*\*\*\*Timeout' "$PLACE/log"
tries=500
while [ -e "/proc/$(cat "$TMPDIR/id")" ]; do
  [ $((tries -= 1)) -gt 0 ] || { echo "the command runs on"; exit 1; }
  sleep 0.02
done
