#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# installed_manuals.sh CMAKE BUILD MANDIR DATADIR: installs the tools alone, and expects the manual
# pages and the completions where people's shells and man look for them. The directories are those
# below the prefix.
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
