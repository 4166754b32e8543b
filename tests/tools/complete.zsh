#!/usr/bin/env zsh
# SPDX-License-Identifier: Apache-2.0
# complete.zsh DIRECTORY LINE…: what zsh offers at the end of each line, a line each, and "--" after
# the offers for a line. The directory holds the completions.
#
# The lines are typed into a shell at a terminal of its own, whose compadd tells what it is given.
emulate -R zsh
zmodload zsh/zpty || exit
local -r directory=$1 place=$(mktemp -d)
trap 'zpty -d shell; rm -rf $place' EXIT
shift

cat >$place/.zshrc <<END
PROMPT= RPROMPT= ZLE_RPROMPT_INDENT=0
fpath=(${(q)directory} \$fpath)
autoload -Uz compinit && compinit -u -D
setopt no_list_beep no_beep
compadd() {
  # Asked for what would match: not an offer yet.
  if [[ \${@[1,(i)(-|--)]} == *' '-[OAD]' '* || \$1 == -[OAD] ]]; then
    builtin compadd "\$@"
    return
  fi
  local -a offers
  builtin compadd -A offers "\$@"
  print -rl -- \$offers >>${(q)place}/offers
  builtin compadd "\$@"
}
_offer() {
  _main_complete
  print -r -- -- >>${(q)place}/offers
}
zle -C offer complete-word _offer
bindkey -e  # in which ^U clears the line
bindkey '^I' offer
: >${(q)place}/ready
END

await() {
  local -i tries=3000
  until eval $1; do
    (( tries-- )) || { print -u2 "no $2"; exit 1 }
    zpty -r -t shell ignored  # or the terminal would fill up
    sleep 0.01
  done
}

: >$place/offers
export ZDOTDIR=$place
zpty -b shell zsh -d -i
await '[[ -e $place/ready ]]' "start of zsh: $(<$place/.zshrc)"
local -i lines=0
for line in "$@"; do
  (( ++lines ))
  zpty -w -n shell $line$'\t'
  await '(( $(grep -c "^--\$" $place/offers) == lines ))' "offers for $line"
  zpty -w -n shell $'\x15'
done
sed '/^$/d' $place/offers
