#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# installed_cmake.sh CMAKE BUILD SOURCES CC CXX: builds and runs a program in C and one in
# C++ that find the installed library through its CMake package.
# shellcheck source=tests/package/installed.lib.sh
. "$(dirname "${BASH_SOURCE[0]}")/installed.lib.sh"

cmake=$1
install_and_make_device "$1" "$2"
sources=$3 cc=$4 cxx=$5
"$cmake" -S "$sources" -B "$PLACE/build" -DCMAKE_PREFIX_PATH="$PREFIX" \
  -DCMAKE_C_COMPILER="$cc" -DCMAKE_CXX_COMPILER="$cxx" >"$PLACE/configure.log"
"$cmake" --build "$PLACE/build" >>"$PLACE/configure.log"
expect_lookup "$PLACE/build/lookup"
expect_lookup "$PLACE/build/lookup_cpp"
