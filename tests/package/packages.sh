#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# packages.sh DIRECTORY: fails unless the packages of both kinds in it hold what
# packaging/files.txt lists, serve programs, and leave nothing when they are removed. Needs root.
# shellcheck source=tests/package/files.lib.sh
. "$(dirname "${BASH_SOURCE[0]}")/files.lib.sh"

packages=$(realpath "$1")
here=$(realpath "$(dirname "${BASH_SOURCE[0]}")")
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT

# compare COMPONENT LIBRARIES NAME: $place/found is what the list says and $place/more besides.
compare() {
  # Packages have their manual pages compressed.
  sed -i '/^share\/man\//s/\.gz$//' "$place/found"
  listed "$1" host "$2" RelWithDebInfo | LC_ALL=C sort - "$place/more" >"$place/listed"
  diff --label files.txt "$place/listed" --label "$3" "$place/found" -U 0
}

check_deb() {
  local component=$1 package=$2
  echo "== $package"
  dpkg-deb -x "$packages/$package"_*.deb "$place/$package"
  printf "share/doc/$package/%s\n" changelog.Debian.gz changelog.gz copyright >"$place/more"
  echo "share/lintian/overrides/$package" >>"$place/more"
  found "$place/$package/usr" >"$place/found"
  compare "$component" lib/x86_64-linux-gnu "$package"
  [ "$(ls "$place/$package")" = usr ]
}

check_rpm() {
  local component=$1 package=$2
  echo "== $package"
  : >"$place/more"
  [ "$component" != runtime ] || echo "share/licenses/$package-$version/LICENSE" >"$place/more"
  rpm -qp --queryformat '[%{FILEMODES:perms} %{FILENAMES}\n]' "$packages/$package-$version"-*.rpm \
    2>"$place/err" | sed -n '/^d/d; /\.build-id/d; s|^[^ ]* /usr/||p' | LC_ALL=C sort >"$place/found"
  compare "$component" lib64 "$package"
}

check_deb runtime libtav-db-api
check_deb dev libtav-db-api-dev
check_deb tools tav-db-api-tools
echo "== lintian"
lintian --allow-root --fail-on error,warning "$packages"/*.deb

version=$(sed -n 's/^Version: *//p' "$here/../../packaging/libtav_db_api.spec")
check_rpm runtime libtav_db_api
check_rpm dev libtav_db_api-devel
check_rpm tools libtav_db_api-tools

echo "== the RPM packages in a root of their own"
root=$place/root
mkdir "$root"
rpm --root "$root" --dbpath /db --nodeps --noscripts -i "$packages"/*.rpm
export PKG_CONFIG_PATH=$root/usr/lib64/pkgconfig LD_LIBRARY_PATH=$root/usr/lib64
read -ra flags < <(pkg-config --cflags --libs tav_db_api)
cc "$here/consumer/lookup.c" -o "$place/lookup" "${flags[@]}" "-Wl,-rpath-link,$root/usr/lib64"
[ "$("$root/usr/bin/tav-sandbox" -- "$place/lookup" org.example.weather)" = org.example.weather ]
rpm --root "$root" --dbpath /db --noscripts -e libtav_db_api{,-devel,-tools}
rm -r "$root/db"
find "$root" ! -type d >"$place/found"
diff /dev/null "$place/found"

echo "== the Debian packages on a bare system"
"$here/../../scripts/in-fresh-debian" tests/package/on_a_bare_system.sh \
  "${packages#"$(realpath "$here/../..")/"}"
