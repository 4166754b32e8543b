#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# installed_pkg_config.sh CMAKE BUILD SOURCE CC: builds and runs a C program with the flags that
# pkg-config gives for the installed library.
# shellcheck source=tests/package/installed.lib.sh
. "$(dirname "${BASH_SOURCE[0]}")/installed.lib.sh"

install_and_make_device "$1" "$2"
source=$3 compiler=$4
export PKG_CONFIG_PATH=$PREFIX/lib/pkgconfig
read -ra flags < <(pkg-config --cflags --libs tav_db_api)
"$compiler" -std=c11 -Wall -Wextra -Wpedantic -Werror "$source" -o "$PLACE/lookup" \
  "${flags[@]}" "-Wl,-rpath,$PREFIX/lib"
expect_lookup "$PLACE/lookup"

# The host platform's libraries are found the same way.
for module in dlog vconf libtzplatform-config capi-system-info pkgmgr-info \
  capi-appfw-app-control; do
  pkg-config --exists --print-errors "$module"
done
