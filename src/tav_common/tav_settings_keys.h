// SPDX-License-Identifier: Apache-2.0
//
// The settings that more than one room of the library names.
#ifndef TAV_COMMON_TAV_SETTINGS_KEYS_H_
#define TAV_COMMON_TAV_SETTINGS_KEYS_H_

constexpr char kFactoryResetKey[] = "db/tav/factory_reset";
constexpr char kAppSyncKey[] = "memory/tav/appsync";
constexpr char kHomedeckResetKey[] = "db/homedeck/reset/tavcore";
constexpr char kInstalledAppKey[] = "memory/tav/app_install";
// Set to 1 to make watchers reload.
constexpr char kAppChangeKey[] = "memory/tav/app_change";

#endif  // TAV_COMMON_TAV_SETTINGS_KEYS_H_
