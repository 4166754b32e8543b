#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# installed_cmake.sh CMAKE BUILD SOURCES CC [FLAG…]: builds and runs a C program that finds the
# installed library through its CMake package.
# shellcheck source=tests/package/installed.lib.sh
. "$(dirname "${BASH_SOURCE[0]}")/installed.lib.sh"

cmake=$1
install_and_make_device "$1" "$2"
sources=$3 compiler=$4
shift 4
"$cmake" -S "$sources" -B "$PLACE/build" -DCMAKE_PREFIX_PATH="$PREFIX" \
  -DCMAKE_C_COMPILER="$compiler" -DCMAKE_C_FLAGS="$*" >"$PLACE/configure.log"
"$cmake" --build "$PLACE/build" >>"$PLACE/configure.log"
expect_lookup "$PLACE/build/lookup"
