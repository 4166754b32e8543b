#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# components.sh CMAKE BUILD PLATFORM LIBRARIES TYPE: fails unless each component of a build installs
# what packaging/files.txt lists for it, and all of them together what the build installs.
# shellcheck source=tests/package/files.lib.sh
. "$(dirname "${BASH_SOURCE[0]}")/files.lib.sh"

cmake=$1 build=$2
shift 2
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT

status=0
for component in runtime dev tools; do
  "$cmake" --install "$build" --component "$component" --prefix "$place/$component" >/dev/null
  listed "$component" "$@" >"$place/listed.$component"
  found "$place/$component" >"$place/found"
  diff --label "files.txt: $component" "$place/listed.$component" --label installed \
    "$place/found" -U 0 || status=1
done
"$cmake" --install "$build" --prefix "$place/all" >/dev/null
LC_ALL=C sort "$place"/listed.* >"$place/listed"
found "$place/all" >"$place/found"
diff --label 'files.txt: all' "$place/listed" --label installed "$place/found" -U 0 || status=1
exit $status
