#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# complete_bash.sh FILE WORD…: what bash offers in the place of the last word, a line each. The
# first word is the program; the file is its completion.
set -euo pipefail
# shellcheck source=/dev/null
. "$1"
COMP_WORDS=("${@:2}") COMP_CWORD=$(($# - 2)) COMPREPLY=()
registered=$(complete -p "$2")
[[ $registered =~ -F\ ([^ ]+) ]]
"${BASH_REMATCH[1]}" "$2" "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
[ ${#COMPREPLY[@]} -eq 0 ] || printf '%s\n' "${COMPREPLY[@]}"
