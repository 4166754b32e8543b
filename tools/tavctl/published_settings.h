// SPDX-License-Identifier: Apache-2.0
//
// The settings that the service publishes: what the library reads, watches and sets.
#ifndef TOOLS_TAVCTL_PUBLISHED_SETTINGS_H_
#define TOOLS_TAVCTL_PUBLISHED_SETTINGS_H_

#include <string>
#include <vector>

#include "tav_db_api.h"

// No setting that the library watches has this number.
inline constexpr tav_vconf_key_e kNotWatchable = static_cast<tav_vconf_key_e>(-1);

// One of the two readers is null: it says the type.
struct PublishedSetting {
  const char* key;
  int (*read_int)(int* value);
  int (*read_text)(char** value);
  tav_vconf_key_e watched_as;  // kNotWatchable: by the platform alone

  bool IsWatchable() const { return watched_as != kNotWatchable; }
  bool IsText() const { return read_text != nullptr; }
  const char* TypeName() const { return IsText() ? "string" : "int"; }
};

// The library only sets this one; its watchers ask the platform.
int ReadAppChange(int* value);

inline constexpr PublishedSetting kPublishedSettings[] = {
    {"db/comss/appkey", nullptr, tav_get_appkey, kNotWatchable},
    {"db/comss/kestranaversion", nullptr, tav_get_kestrana_ver, kNotWatchable},
    {"db/tav/app_sync_status", tav_get_tv_sync_status, nullptr, kNotWatchable},
    {"db/tav/factory_reset", tav_get_factory_reset_type, nullptr, TAV_VCONF_KEY_FACTORY_RESET_TYPE},
    {"memory/tav/appsync", tav_get_appsync_start_status, nullptr, TAV_VCONF_KEY_APPSYNC_START},
    {"db/homedeck/reset/tavcore", tav_get_homedeck_reset_status, nullptr,
     TAV_VCONF_KEY_HOMEDECK_RESET_STATUS},
    {"memory/tav/boot_status", tav_get_tav_boot_status, nullptr, kNotWatchable},
    {"memory/tav/app_install", nullptr, tav_get_installed_appid, TAV_VCONF_KEY_INSTALLED_APPID},
    {"memory/tav/app_change", ReadAppChange, nullptr, kNotWatchable},
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
