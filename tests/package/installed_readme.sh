#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# installed_readme.sh CMAKE BUILD README CXX: builds the C++ program of the README with the
# flags that pkg-config gives for the installed library, and runs it in a device.
# shellcheck source=tests/package/installed.lib.sh
. "$(dirname "${BASH_SOURCE[0]}")/installed.lib.sh"

install_and_make_device "$1" "$2"
readme=$3 compiler=$4
sed -n '/^## In C++$/,/^## The/ {/^#include/,/^}$/p}' "$readme" >"$PLACE/program.cpp"
export PKG_CONFIG_PATH=$PREFIX/lib/pkgconfig
read -ra flags < <(pkg-config --cflags --libs tav_db_api)
"$compiler" -std=c++17 -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror \
  "$PLACE/program.cpp" -o "$PLACE/program" "${flags[@]}" "-Wl,-rpath,$PREFIX/lib"

"$PREFIX/bin/tavctl" list --featured 5 --view title --csv >"$PLACE/list"
tail -n +2 "$PLACE/list" | cut -d, -f1 >"$PLACE/ids"
[ "$(wc -l <"$PLACE/ids")" -gt 1 ]
diff <("$PLACE/program" | cut -d: -f1) "$PLACE/ids"

rm "$TAV_DEVICE_ROOT/dbspace/.tavcore.db"
status=0
"$PLACE/program" 2>"$PLACE/err" || status=$?
[ "$status" = 1 ]
grep -q '^no list; the log says why$' "$PLACE/err"
