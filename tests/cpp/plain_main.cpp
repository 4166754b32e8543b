// SPDX-License-Identifier: Apache-2.0
//
// A program without exceptions and run-time types, of two sources that both use the whole layer:
// lists the apps, and ends when the other source was told of a change.
#include <glib.h>
#include <tav_db_api.hpp>
#include <tav_db_api.hpp>  // twice, as it happens

#include <cstdio>

#include "plain_other.h"

int main() {
  if (!tav::HasSameLayouts()) return 2;
  const auto apps = tav::GetAppList({}, tav::ViewMode::kTitle, {0, 2});
  for (const tav::AppInfo& app : *apps) std::printf("%s\n", app.app_id);
  std::printf("%d\n", static_cast<int>(tav::GetAppInfo("org.example.none").status()));
  bool is_told = false;
  const auto watch = tav::WatchInstalledAppId([&](tav::TextView id) {
    std::printf("main %s\n", id.data());
    is_told = true;
  });
  const auto other = WatchElsewhere();
  if (!watch || !other || !SetInstalledApp("org.example.clock")) return 1;
  while (!is_told || !IsToldElsewhere()) g_main_context_iteration(nullptr, TRUE);
  return 0;
}
