// SPDX-License-Identifier: Apache-2.0
//
// The settings that the service publishes: what the library reads, watches and sets.
#ifndef TOOLS_TAVCTL_PUBLISHED_SETTINGS_H_
#define TOOLS_TAVCTL_PUBLISHED_SETTINGS_H_

#include <functional>
#include <string>
#include <vector>

#include "tav_db_api.hpp"

using IntListener = std::function<void(int value)>;
using TextListener = std::function<void(tav::TextView value)>;

// A setting's reader says its type. Its watch is null where the platform alone watches it.
struct PublishedSetting {
  const char* key;
  tav::Result<int> (*read_int)();
  tav::Result<tav::Text> (*read_text)();
  tav::Result<tav::Watch> (*watch_int)(IntListener&& listener);
  tav::Result<tav::Watch> (*watch_text)(TextListener&& listener);

  bool IsWatchable() const { return watch_int != nullptr || watch_text != nullptr; }
  bool IsText() const { return read_text != nullptr; }
  const char* TypeName() const { return IsText() ? "string" : "int"; }
};

// The library only sets this one; its watchers ask the platform.
tav::Result<int> ReadAppChange();

constexpr PublishedSetting IntSetting(const char* key, decltype(PublishedSetting::read_int) read,
                                      decltype(PublishedSetting::watch_int) watch = nullptr) {
  return {key, read, nullptr, watch, nullptr};
}
constexpr PublishedSetting TextSetting(const char* key, decltype(PublishedSetting::read_text) read,
                                       decltype(PublishedSetting::watch_text) watch = nullptr) {
  return {key, nullptr, read, nullptr, watch};
}

inline constexpr PublishedSetting kPublishedSettings[] = {
    TextSetting("db/comss/appkey", tav::GetAppkey),
    TextSetting("db/comss/kestranaversion", tav::GetKestranaVer),
    IntSetting("db/tav/app_sync_status", tav::GetTvSyncStatus),
    IntSetting("db/tav/factory_reset", tav::GetFactoryResetType, tav::WatchFactoryResetType),
    IntSetting("memory/tav/appsync", tav::GetAppsyncStartStatus, tav::WatchAppsyncStart),
    IntSetting("db/homedeck/reset/tavcore", tav::GetHomedeckResetStatus,
               tav::WatchHomedeckResetStatus),
    IntSetting("memory/tav/boot_status", tav::GetTavBootStatus),
    TextSetting("memory/tav/app_install", tav::GetInstalledAppId, tav::WatchInstalledAppId),
    IntSetting("memory/tav/app_change", ReadAppChange),
};

// Null when the service publishes no such setting.
inline const PublishedSetting* FindPublishedSetting(const std::string& key) {
  for (const PublishedSetting& setting : kPublishedSettings) {
    if (key == setting.key) return &setting;
  }
  return nullptr;
}

inline std::vector<std::string> PublishedKeys() {
  std::vector<std::string> keys;
  for (const PublishedSetting& setting : kPublishedSettings) keys.emplace_back(setting.key);
  return keys;
}

#endif  // TOOLS_TAVCTL_PUBLISHED_SETTINGS_H_
