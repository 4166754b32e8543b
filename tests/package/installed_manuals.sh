#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# installed_manuals.sh CMAKE BUILD MANDIR DATADIR: installs the tools alone, and expects their
# manual pages and the completions where people's shells and man look for them; then the library's
# page with what its users need. The directories are those below the prefix.
set -euo pipefail

prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
"$1" --install "$2" --prefix "$prefix" --component tools >"$prefix/log"

for page in tavctl tav-sandbox tavcore-sim; do
  man=$prefix/$3/man1/$page.1 name=${page^^}
  grep -qF ".TH ${name//-/\\-} 1 " "$man" || { echo "no page in $man"; exit 1; }
done
grep -qx 'complete -F _tavctl tavctl' "$prefix/$4/bash-completion/completions/tavctl"
[ "$(head -n 1 "$prefix/$4/zsh/site-functions/_tavctl")" = '#compdef tavctl' ]

[ ! -e "$prefix/$3/man3" ]
"$1" --install "$2" --prefix "$prefix" --component dev >"$prefix/log"
grep -q '^tav_db_api ' "$prefix/$3/man3/tav_db_api.3"
