#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# library_page.sh PAGE LIST: the library's manual page is clean, and names the exported functions
# of C, each once, and no other.
set -euo pipefail
export LC_ALL=C
mandoc -T lint -W warning "$1"
warnings=$(groff -man -ww -z -Tutf8 "$1" 2>&1)
[ -z "$warnings" ] || { echo "$warnings"; exit 1; }
grep -qE '^\.TH TAV_DB_API 3 20[0-9]{2}(-[0-9]{2}){2} "libtav_db_api [0-9.]+"' "$1"

diff --label exported <(grep -v '^_Z' "$2" | sort) --label 'on the page' \
  <(awk '$1 == ".TP" {is_tag = 1; next} is_tag {print; is_tag = 0}' "$1" |
    grep -oE '\b(get_size_of_)?tav_[a-z_]+' | sort) -U 0
