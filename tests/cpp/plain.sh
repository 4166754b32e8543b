#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# plain.sh PROGRAM SANDBOX: runs the program without exceptions and run-time types in a device.
set -euo pipefail
program=$1 sandbox=$2
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
"$sandbox" --create "$place/device"
TAV_DEVICE_ROOT=$place/device "$program" >"$place/out"
diff "$place/out" - <<'END'
org.example.bramble-bolts
org.example.puppet-house
-1
main org.example.clock
other org.example.clock, found
END
