#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# pages.sh CHECK ROOT: compares the project's pages with the sources that they are about. Says
# what is missing and where, and fails then; fails too when it finds nothing to look for.
set -euo pipefail
export LC_ALL=C.UTF-8
check=$1
cd "$2"

PAGES=(README.md CONTRIBUTING.md docs/*.md packaging/*.md)
SOURCES=(src/*/*.cpp src/*/*.h)

# expect_all WHAT PAGE [BEFORE]: each line of standard input must stand in the page, between
# backquotes and behind the text BEFORE.
expect_all() {
  local what=$1 page=$2 before=${3-} name wanted count=0 status=0
  while IFS= read -r name; do
    count=$((count + 1))
    wanted=$before\`$name\`
    grep -qF -- "$wanted" "$page" && continue
    echo "$page does not have $what: $wanted"
    status=1
  done
  [ "$count" -gt 0 ] || { echo "no $what was found in the sources"; status=1; }
  return "$status"
}

# The targets of a page's links, those in blocks of code left out.
links_of() {
  awk '/^```/ {is_code = !is_code; next} !is_code' "$1" |
    perl -CSD -ne 'print "$1\n" while /\]\(([^)\s]+)\)/g' | grep -vE '^(https?|mailto):' || true
}

# The anchors that a page's headings get.
anchors_of() {
  perl -CSD -ne '
    if (/^```/) { $is_code = !$is_code }
    elsif (!$is_code && /^#+ +(.*?) *$/) {
      $_ = lc $1;
      s/[^\w\- ]//g; tr/ /-/;
      print $_, $seen{$_} ? "-$seen{$_}" : "", "\n";
      ++$seen{$_};
    }' "$1"
}

check_links() {
  local page link file anchor count=0 status=0
  for page in "${PAGES[@]}"; do
    while IFS= read -r link; do
      count=$((count + 1))
      file=${link%%#*}
      file=${file:+$(dirname "$page")/$file}
      file=${file:-$page}
      if [ ! -e "$file" ]; then
        echo "$page links to $link, which is not there"
        status=1
        continue
      fi
      [ "$link" != "${link%%#*}" ] || continue
      anchor=${link#*#}
      anchors_of "$file" | grep -qxF -- "$anchor" && continue
      echo "$page links to $link, but $file has no such heading"
      status=1
    done < <(links_of "$page")
  done
  [ "$count" -gt 0 ] || { echo "no page has a link"; return 1; }
  return "$status"
}

# A page that no other one links to is not found by its readers.
check_reach() {
  local page linked
  linked=$(for page in "${PAGES[@]}"; do
    links_of "$page" | sed "s|#.*||; /./s|^|$(dirname "$page")/|" |
      xargs -r realpath -m --relative-to=. | grep -vxF "$page" || true
  done)
  printf '%s\n' docs/*.md | grep -vxFf <(printf '%s\n' "$linked") |
    sed 's/$/ is linked from no other page/' && return 1
  return 0
}

# The table may abbreviate names that differ in one word, `tav_register_…_cb`: the words stand in
# the same row.
check_calls() {
  table=$(mktemp)
  trap 'rm -f "$table"' EXIT
  perl -CSD -ne '
    if (/^## /) { $is_table = /^## Calls$/ }
    next unless $is_table && /^\| *`/;
    my @words = /`([^`]+)`/g;
    for my $name (@words) {
      print "`$name`\n";
      next unless $name =~ /\x{2026}/;
      print "`", $name =~ s/\x{2026}/$_/r, "`\n" for @words;
    }' README.md >"$table"
  c++filt <abi/exported-symbols.txt | sed 's/\[abi:cxx11\]//; s/(.*//' | sort -u |
    expect_all "the call" "$table" | sed "s|$table|README.md, in its table of calls,|"
}

# Every text of the sources that has the shape of a setting's key.
check_settings() {
  grep -hoE '"(db|memory)/[a-z_/]+"' "${SOURCES[@]}" | tr -d '"' | sort -u |
    expect_all "the setting" docs/settings.md '| '
  grep -oE '"[^"]+"' src/tav_common/tav_settings_keys.h | grep -v '\.h"$' | tr -d '"' |
    expect_all "the setting" docs/settings.md '| '
}

check_methods() {
  grep -hoE 'Call(ForStatus)?\(proxy, "[^"]+"' src/*/*.cpp | cut -d '"' -f 2 | sort -u |
    expect_all "the method" docs/bus.md '| '
  # Those that the proxy itself knows.
  perl -0777 -ne '
    print "$_\n" for map { /"(\w+)"/g } /(?:kHeartbeat|kNotStarting)\[\] =[^;]*;/g' \
    src/tav_common/tav_proxy.cpp | sort -u | expect_all "the method" docs/bus.md
}

# A column's row has the member of the record and the key in JSON that it becomes.
check_columns() {
  perl -0777 -e '
    sub text_of { open my $file, "<", $_[0] or die "$_[0]: $!\n"; return scalar <$file> }
    my $room = "src/tav_db_api/tav_db_client_";
    my %name = text_of("${room}columns.h") =~ /COLUMN\((k\w+), "(\w+)"\)/g;
    my %becomes;
    my $record = text_of("${room}app_info.cpp");
    push @{$becomes{$2}}, $1 while $record =~ /\{offsetof\(tav_app_info_s, (\w+)\), (k\w+)\}/g;
    my $inner = text_of("${room}inner_fields.h");
    push @{$becomes{$1}}, $2 while $inner =~ /_APPS_INNER_INFO_T::\w+, (k\w+),\s*"(\w+)"/g;
    my $page = text_of("docs/database.md");
    my $status = keys %name > 0 && keys %becomes > 0 ? 0 : print "no columns were found\n";
    for my $column (sort keys %name) {
      my ($row) = $page =~ /^(\| `$name{$column}` \|.*)$/m;
      for my $member ("$name{$column}", @{$becomes{$column} // []}) {
        next if defined $row && $row =~ /`$member`/;
        print "docs/database.md does not say that $name{$column} becomes $member\n";
        $status = 1;
      }
    }
    exit $status;'
}

# The texts of errors and notices as they stand in the sources, and those that reach the log
# through a parameter: they complain.
check_failures() {
  perl -0777 -ne '
    s{^\s*(//|#).*$}{}gm;
    my $literal = qr/"(?:[^"\\]|\\.)*"/;
    my $call = qr/TAV_LOG[EW](?:_FOR)?\s*\(\s*(?:\w*place,\s*)?|LogBusError\(\s*/;
    my @texts = /$call($literal(?:\s*$literal)*)/g;
    s/TAV_LOG[IEW](?:_FOR)?\s*\((?:[^;"]|$literal)*;//g;
    push @texts, grep { /fail|malloc|is empty|is NULL|is <=|does not answer/ } /$literal/g;
    for (@texts) { s/^"|"\s*"|"$//g; s/ +$//; print "$_\n" unless /^%s$/ }' "${SOURCES[@]}" |
    sort -u | expect_all "the line" docs/errors.md
}

check_pictures() {
  local source picture count=0 status=0
  for source in docs/*.dot; do
    count=$((count + 1))
    picture=${source%.dot}.svg
    grep -qF "sha256 $(sha256sum <"$source" | cut -d ' ' -f 1) " "$picture" && continue
    echo "$picture was not drawn from $source as it is: run scripts/pictures"
    status=1
  done
  [ "$count" -gt 0 ] || { echo "no picture has a source"; return 1; }
  return "$status"
}

"check_$check"
