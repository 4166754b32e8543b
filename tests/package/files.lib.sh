# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=bash
# What packaging/files.txt says of a package.
set -euo pipefail
FILES=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)/packaging/files.txt

# listed COMPONENT PLATFORM LIBRARIES TYPE: the component's paths below the prefix, sorted.
# LIBRARIES is the directory of libraries there, TYPE the build's.
listed() {
  awk -v component="$1" -v platform="$2" -v libraries="$3" -v type="${4,,}" '
    $1 == component && ($2 == "any" || $2 == platform) {
      sub(/^LIB\//, libraries "/", $3)
      sub(/BUILD_TYPE/, type, $3)
      print $3
    }' "$FILES" | LC_ALL=C sort
}

# found DIRECTORY: what lies in it, directories apart, sorted.
found() { (cd "$1" && find . ! -type d -printf '%P\n' | LC_ALL=C sort); }
