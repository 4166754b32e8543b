// SPDX-License-Identifier: Apache-2.0
//
// The settings that the service publishes, and the two configuration values with a reader of
// their own. The getters take no lock: each reads one setting of the platform.
#include <vconf.h>

#include <cstdlib>
#include <string>

#include "tav_common/tav_arguments.h"
#include "tav_common/tav_handles.h"
#include "tav_common/tav_log.h"
#include "tav_common/tav_settings_keys.h"
#include "tav_db_api.h"
#include "tav_db_api/tav_db_api_border.h"
#include "tav_db_api/tav_db_client_connection.h"
#include "tav_db_api/tav_db_client_values.h"

namespace {

constexpr char kAppKeyKey[] = "db/comss/appkey";
constexpr char kVersionKey[] = "db/comss/kestranaversion";
constexpr char kSyncStatusKey[] = "db/tav/app_sync_status";
constexpr char kBootStatusKey[] = "memory/tav/boot_status";

// The platform's block becomes the caller's.
int ReadText(const char* key, char** value) {
  char* text = vconf_get_str(key);
  if (text == nullptr) return kFailed;
  *value = text;
  return 0;
}

void SayUnreadable(const char* key, const LogPlace& place) {
  TAV_LOGE_FOR(place, "Failed to get vconf value key= %s", key);
}

// The out value is written on success alone: a getter that fails may have written its own.
int GetInt(const char* key, int* value, const LogPlace& place = LogPlace::Here()) {
  const TavCall call;
  if (HasNull({value}, place)) return kFailed;
  int read = 0;
  if (vconf_get_int(key, &read) != 0) {
    SayUnreadable(key, place);
    return kFailed;
  }
  *value = read;
  return 0;
}

}  // namespace

int tav_get_appkey(char** key) {
  const TavCall call;
  if (HasNull({key})) return kFailed;
  if (ReadText(kAppKeyKey, key) != 0) {
    TAV_LOGE("Failed to get app key from [%s].", kAppKeyKey);
    return kFailed;
  }
  TAV_LOGI("App key info = [%s]", *key);
  return 0;
}

int tav_get_kestrana_ver(char** version) {
  const TavCall call;
  if (HasNull({version})) return kFailed;
  if (ReadText(kVersionKey, version) != 0) {
    TAV_LOGE("Failed to get kestrana verison from [%s].", kVersionKey);
    return kFailed;
  }
  TAV_LOGI("Kestrana verison = [%s]", *version);  // the misspelling is kept
  return 0;
}

int tav_get_tv_sync_status(int* status) {
  const TavCall call;
  const int result = GetInt(kSyncStatusKey, status);
  if (result == 0) TAV_LOGI("Finish,status:[%d]", *status);
  return result;
}

int tav_get_factory_reset_type(int* type) {
  return GetInt(kFactoryResetKey, type);
}

int tav_get_appsync_start_status(int* status) {
  return GetInt(kAppSyncKey, status);
}

int tav_get_homedeck_reset_status(int* status) {
  return GetInt(kHomedeckResetKey, status);
}

int tav_get_tav_boot_status(int* status) {
  return GetInt(kBootStatusKey, status);
}

int tav_get_installed_appid(char** appId) {
  const TavCall call;
  if (HasNull({appId})) return kFailed;
  const int result = ReadText(kInstalledAppKey, appId);
  if (result != 0) SayUnreadable(kInstalledAppKey, LogPlace::Here());
  return result;
}

int tav_get_extra_appid(...) {
  const TavCall call;
  TAV_LOGW("deprecated api, doesnt support extra app in 5.0");
  return kFailed;
}

int tav_set_app_change(void) {
  const TavCall call;
  if (vconf_set_int(kAppChangeKey, 1) == 0) {
    TAV_LOGW("Set app changed to vconf successfully.");
    return 0;
  }
  TAV_LOGE("Set app changed to vconf fail.");
  return kFailed;
}

int tav_inner_config_db_api(const char* name, char** value) try {
  const TavCall call;
  TAV_LOGI("tav_inner_config_db_api key %s", Printable(name));
  char* text = nullptr;
  int result = kFailed;
  if (!HasNull({name, value})) {
    const DatabaseLock lock;
    result = GetConfigTableValue(name, &text);
  }
  MallocText owner(text);
  // A lookup that fails gives the caller no value, and no failure either.
  if (result != 0) owner.reset();
  TAV_LOGI("tav_inner_config_db_api value %s", Printable(owner.get()));
  if (owner != nullptr) *value = owner.release();
  return 0;
} catch (...) {
  AnswerException(__func__);
  return 0;
}

int tav_get_tv_sync_state(int* state) try {
  const TavCall call;
  TAV_LOGI("Start");
  if (HasNull({state})) return kFailed;
  const DatabaseLock lock;
  char value[TAV_TEXT_SIZE] = {};
  const Query query = Query("  where name  = ? ").Bind("SYNC_STATE");
  const int result =
      GetStrValueByKey(value, "", query.Condition(), kConfigTableType, query.Binds());
  if (result != 0) {
    TAV_LOGE("query sql fail or have no required record in database ");
    return result;
  }
  *state = static_cast<int>(std::strtol(value, nullptr, 10));
  TAV_LOGI("Finish,iSyncState:[%d] ", *state);
  return 0;
} catch (...) {
  return AnswerException(__func__);
}
