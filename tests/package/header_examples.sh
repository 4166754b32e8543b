#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# header_examples.sh HEADERS CC CXX: compiles each example in the comments of the headers, a block
# between @code{.c} or @code{.cpp} and @endcode, or the same with backslashes, as the body of a
# function.
set -euo pipefail
headers=$1 cc=$2 cxx=$3
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT

# examples HEADER LANGUAGE: its examples in this language, each as a function.
examples() {
  awk -v language="$2" '
    {sub(/^ *(\/\/\/|\*) ?/, "")}
    /^[@\\]endcode$/ && is_inside {print "}"; is_inside = 0}
    is_inside {print}
    substr($0, 2) == "code{." language "}" && /^[@\\]/ {
      is_inside = 1
      print (language == "c" ? "" : "inline ") "void example_" ++count \
            (language == "c" ? "(void)" : "()") ";"
      print "void example_" count (language == "c" ? "(void) {" : "() {")
    }' "$1"
}

count=0
for header in "$headers"/*.h*; do
  for language in c cpp; do
    examples "$header" "$language" >"$place/examples"
    [ -s "$place/examples" ] || continue
    count=$((count + $(grep -c '^void .*{$' "$place/examples")))
    file=$place/$(basename "$header").$language
    {
      printf '#include "%s"\n' "$(basename "$header")"
      [ "$language" = c ] || printf '#include <%s>\n' cstdio iostream string vector
      printf '#include <%s>\n' stdio.h stdlib.h string.h
      cat "$place/examples"
    } >"$file"
    compiler=("$cc" -std=c11)
    [ "$language" = c ] || compiler=("$cxx" -std=c++17)
    "${compiler[@]}" -Wall -Wextra -Werror -fsyntax-only -I "$headers" "$file" ||
      { echo "an example of $header does not compile"; exit 1; }
  done
done
# Twelve groups of functions have one each, and the C++ layer three.
[ "$count" -ge 15 ] || { echo "found $count examples alone"; exit 1; }
