// SPDX-License-Identifier: Apache-2.0
#include "plain_other.h"

#include <vconf.h>

#include <cstdio>

namespace {
bool g_is_told = false;
}  // namespace

tav::Result<tav::Watch> WatchElsewhere() {
  return tav::WatchInstalledAppId([](tav::TextView id) {
    const tav::Result<tav::AppInfo> app = tav::GetAppInfo(id);
    std::printf("other %s, %s\n", app->app_id, app ? "found" : "not found");
    g_is_told = true;
  });
}

bool IsToldElsewhere() {
  return g_is_told;
}

bool SetInstalledApp(const char* id) {
  return vconf_set_str("memory/tav/app_install", id) == 0;
}
