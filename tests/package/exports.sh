#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# exports.sh LIBRARY LIST HEADERS: fails unless the library exports the names of the list and no
# other, each declared in a header and with the version node.
set -euo pipefail
library=$1 list=$2 headers=$3
export LC_ALL=C

place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
nm --dynamic --defined-only "$library" | awk '$2 != "A" {print $3}' | sort >"$place/versioned"
sed 's/@.*//' "$place/versioned" >"$place/exported"
sort "$list" >"$place/listed"

status=0
if ! diff --label listed "$place/listed" --label exported "$place/exported" -U 0; then
  echo "the exported names are not those of the list"
  status=1
fi
if grep -v '@@TAV_DB_API_0$' "$place/versioned"; then
  echo "the names above do not carry the version TAV_DB_API_0"
  status=1
fi
while read -r name; do
  plain=$(c++filt "$name" | sed 's/\[abi:cxx11\]//; s/(.*//')
  if ! grep -qE "^TAV_API .*\b$plain\(" "$headers"/*.h; then
    echo "exported, but declared in no header: $plain"
    status=1
  fi
done <"$place/exported"
grep -hoE '^TAV_API [^(]*\(' "$headers"/*.h | sed 's/($//; s/.*[ *&]//' | sort -u >"$place/declared"
c++filt <"$place/exported" | sed 's/\[abi:cxx11\]//; s/(.*//' | sort -u >"$place/plain"
undefined=$(comm -23 "$place/declared" "$place/plain")
if [ -n "$undefined" ]; then
  printf 'declared, but not exported:\n%s\n' "$undefined"
  status=1
fi

exit $status
