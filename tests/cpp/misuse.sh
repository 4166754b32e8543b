#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# misuse.sh CXX INCLUDE: fails unless the compiler takes the layer without a warning, on its own
# and without exceptions and run-time types, and takes none of the programs below.
set -euo pipefail
compiler=$1 include=$2
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT

# compile: the program on standard input.
compile() {
  { echo '#include <tav_db_api.hpp>'; cat; } >"$place/program.cpp"
  "$compiler" -std=c++17 -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror \
    -Wno-unused-variable "-I$include" "$place/program.cpp" 2>"$place/messages"
}

accepted() {
  compile || { cat "$place/program.cpp" "$place/messages"; exit 1; }
}

# refused TEXT: the program, with the text among the compiler's reasons.
refused() {
  if compile || ! grep -qE "$1" "$place/messages"; then
    echo "not refused for '$1':"
    cat "$place/program.cpp" "$place/messages"
    exit 1
  fi
}

for header in tav_db_api tav_db_api_reads tav_db_api_service tav_db_api_types tav_db_api_values \
  tav_db_api_watch; do
  for flags in '' '-fno-exceptions -fno-rtti'; do
    # shellcheck disable=SC2086  # several flags, or none
    "$compiler" -std=c++17 -fsyntax-only -x c++ -Wall -Wextra -Wpedantic -Wconversion -Wshadow \
      -Werror $flags "-I$include" - <<<"#include <$header.hpp>"
  done
done

accepted <<'END'
std::string First() {
  for (const tav::AppInfo& app : tav::GetAppList().value()) return app.app_id;
  return tav::GetInstalledAppId().value().str();
}
std::string Second() {
  tav::Result<tav::AppList> apps = tav::GetAppList();
  for (tav::AppInfo& app : *apps) app.size = 0;
  const tav::AppList list = std::move(apps).value();
  return list.size() > 1 ? list[1].app_id : list.data()->app_title;
}
void Use(const std::string& id) {
  if (const auto app = tav::GetAppInfo(id)) (void)tav::SetAppLock(app->app_id, true);
  (void)tav::IsIspApp(tav::GetInstalledAppId().value());
}
END
refused 'unused-result|nodiscard' <<<'void Drop() { tav::SetAppLock("a", true); }'
refused 'unused-result|nodiscard' <<<'void Drop() { tav::IsIspApp("a"); }'
refused 'unused-result|nodiscard' <<<'void Drop() { tav::GetAppList(); }'
refused 'unused-result|nodiscard' <<<'void Drop() { tav::InnerConfig("a"); }'
refused 'unused-result|nodiscard' <<<'void Drop() { tav::WatchFactoryResetType([](int) {}); }'
refused 'unused-result|nodiscard' \
  <<<'void Drop() { tav::WatchFactoryResetType([](int) {}).value(); }'
refused 'deleted' <<<'auto title = tav::TextOf(tav::GetAppInfo("a").value().app_title);'
refused 'deleted' <<<'auto apps = *tav::GetAppList();'
refused 'deleted' <<<'auto* first = tav::GetAppList().value().data();'
refused 'deleted' <<<'auto& first = tav::GetAppList().value()[0];'
refused 'deleted' <<<'auto key = tav::GetAppkey().value().view();'
refused 'deleted' <<<'const char* key = tav::GetAppkey().value().c_str();'
refused 'deleted' <<<'auto status = tav::SetAppLock("a", -1);'
refused 'convert|conversion' <<<'int IsUsb() { return tav::CheckIsUsbApp("a") ? 1 : 0; }'
refused 'convert|conversion|matching' <<<'auto app = tav::GetAppInfo(std::string_view("a"));'
refused 'does not take' <<<'auto watch = tav::WatchFactoryResetType([](const char*) {});'
refused 'deprecated' <<<'auto status = tav::GetExtraAppId();'
