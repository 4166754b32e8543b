#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# exports.sh LIBRARY LIST HEADERS: fails when the library exports a name that the list lacks or
# that no header declares, or without the version node; prints the names it does not have yet.
set -euo pipefail
library=$1 list=$2 headers=$3
export LC_ALL=C

place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
nm --dynamic --defined-only "$library" | awk '$2 != "A" {print $3}' | sort >"$place/versioned"
sed 's/@.*//' "$place/versioned" >"$place/exported"
sort "$list" >"$place/listed"

status=0
extra=$(comm -23 "$place/exported" "$place/listed")
if [ -n "$extra" ]; then
  printf 'exported, but not in the list:\n%s\n' "$extra"
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

[ -s "$place/exported" ] || { echo "the library exports nothing"; status=1; }
printf 'exported: %s of %s; not there yet:\n' "$(wc -l <"$place/exported")" \
  "$(wc -l <"$place/listed")"
comm -13 "$place/exported" "$place/listed"
exit $status
