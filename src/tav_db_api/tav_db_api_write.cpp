// SPDX-License-Identifier: Apache-2.0
//
// The exported changes of an app's state, and the questions whether an app is being installed.
#include <vconf.h>

#include <string>

#include "tav_common/tav_arguments.h"
#include "tav_common/tav_log.h"
#include "tav_common/tav_settings_keys.h"
#include "tav_db_api.h"
#include "tav_db_api/tav_db_api_border.h"
#include "tav_db_api/tav_db_api_throwing.h"
#include "tav_db_api/tav_db_client_app_info.h"
#include "tav_db_api/tav_db_client_checks.h"
#include "tav_db_api/tav_db_client_inner.h"
#include "tav_db_api/tav_db_write_api.h"

namespace {

// True, after an error in the log, when there is no id. The two complaints may be the same.
bool IsMissing(const char* app_id, const char* null_complaint, const char* empty_complaint,
               const LogPlace& place = LogPlace::Here()) {
  if (app_id != nullptr && app_id[0] != '\0') return false;
  TAV_LOGE_FOR(place, "%s", app_id == nullptr ? null_complaint : empty_complaint);
  return true;
}

bool IsMissing(const char* app_id, const LogPlace& place = LogPlace::Here()) {
  return IsMissing(app_id, "in param is NULL ", "in param is NULL ", place);
}

// What a lock and a rating are refused for.
bool RefusesChange(const char* app_id, const LogPlace& place = LogPlace::Here()) {
  return PlatformRefuses(place) || IsMissing(app_id, "app_id is NULL ", "app_id is empty ", place);
}

// Watchers reload. That they were not told does not undo the change.
void TellAppChange(const LogPlace& place = LogPlace::Here()) {
  if (vconf_set_int(kAppChangeKey, 1) == 0) {
    TAV_LOGI_FOR(place, "Set app changed to vconf succesfully.");  // the misspelling is kept
  } else {
    TAV_LOGE_FOR(place, "Set app changed to vconf fail.");
  }
}

// Asks for one of the changes that need no look at the app.
int Change(const char* app_id, int (*request)(const char* app_id),
           const LogPlace& place = LogPlace::Here()) try {
  const TavCall call;
  TAV_LOGI_FOR(place, "[tav db] [%s] update count", Printable(app_id));
  if (IsRecovering(place) || IsMissing(app_id, place)) return kFailed;
  const DatabaseLock lock;
  const int result = request(app_id);
  TAV_LOGI_FOR(place, "Finish,ret:[%d]", result);
  return result;
} catch (...) {
  return AnswerException(place.function);
}

// Whether one of the apps in the list is being updated.
bool IsRequiredAppUpdating(const char* app_id, const std::string& required) {
  TAV_LOGI("%s app have required app %s", app_id, required.c_str());
  std::map<std::string, std::string> ids;
  throwing::ParseStringToList(required, ",", "", ids);
  for (const auto& [id, unused] : ids) {
    _APPS_INNER_INFO_T app;
    if (GetAppInnerInfo(id, &app) != 0) continue;
    TAV_LOGI("required app [%s] installed", id.c_str());
    if (!app.bReserved10) continue;
    TAV_LOGI("[%s] required app [%s] is updating", app_id, id.c_str());
    return true;
  }
  return false;
}

}  // namespace

int tav_get_ticker_mode(int* tickerMode) try {
  const TavCall call;
  if (HasNull({tickerMode})) return kFailed;
  int result;
  {
    const DatabaseLock lock;
    result = GetTickerModeFromLaunch(tickerMode);
  }
  TAV_LOGI("Finish,ret:[%d],tickerMode:[%d]", result, *tickerMode);
  return result;
} catch (...) {
  return AnswerException(__func__);
}

int tav_set_ticker_mode(int tickerMode) try {
  const TavCall call;
  TAV_LOGI("Start: tickerMode:[%d]", tickerMode);
  int result;
  {
    const DatabaseLock lock;
    result = SetTickerModeToLaunch(tickerMode);
  }
  TAV_LOGI("Finish,ret:[%d],tickerMode:[%d]", result, tickerMode);
  return result;
} catch (...) {
  return AnswerException(__func__);
}

int tav_set_app_lock(const char* appId, int isLock) try {
  const TavCall call;
  TAV_LOGI("Start");
  const DatabaseLock lock;
  if (RefusesChange(appId)) return kFailed;
  TAV_LOGI("app_id :[%s],is_lock:[%d]", appId, isLock);
  const int result = TavSetAppLock(appId, isLock);
  if (result != 0) {
    TAV_LOGE("set id:%s %d fail", appId, isLock);
    return result;
  }
  TAV_LOGI("Finish,app_id :[%s],is_lock:[%d] ", appId, isLock);
  TellAppChange();
  return 0;
} catch (...) {
  return AnswerException(__func__);
}

int tav_set_app_rating(const char* appId, int rating) try {
  const TavCall call;
  TAV_LOGI("Start");
  const DatabaseLock lock;
  if (RefusesChange(appId)) return kFailed;
  TAV_LOGI("app_id :[%s],rating:[%d]", appId, rating);
  tav_app_info_s info;
  const Query query = Query(" where id = ?  ").Bind(appId).AndVisible();
  int result = GetAppsTableInfo(&info, query.Condition(), query.Binds());
  if (result != 0) {
    TAV_LOGW("app:%s isn't exit or unavailable", appId);  // the misspelling is kept
    return result;
  }
  result = TavSetAppRating(appId, rating);
  if (result != 0) {
    TAV_LOGE("Get app[%s] rating fail ", appId);
    return result;
  }
  TAV_LOGI("Finish,app_id :[%s],rating:[%d] ", appId, rating);
  TellAppChange();
  return 0;
} catch (...) {
  return AnswerException(__func__);
}

int tav_db_update_app_use_count(const char* appId) {
  return Change(appId, TavUpdateAppUseCount);
}

int tav_db_set_app_updated(const char* appId) {
  return Change(appId, TavSetAppUpdted);
}

int tav_check_update_popup(const char* appId) try {
  const TavCall call;
  TAV_LOGI("[tav db] check app need show update popup [%s]", Printable(appId));
  if (IsMissing(appId)) return kFailed;
  _APPS_INNER_INFO_T app;
  if (GetAppInnerInfo(appId, &app) == kFailed) {
    TAV_LOGE("%s is not installed", appId);
    return kFailed;
  }
  // Deliberate: after any other failure the flag of the default record decides.
  if (app.bReserved11) return kFailed;
  TAV_LOGI("[%s] updating", appId);
  return 0;
} catch (...) {
  return AnswerException(__func__);
}

int tav_db_check_app_installing(const char* appId) try {
  const TavCall call;
  TAV_LOGI("[tav db] check app installing [%s]", Printable(appId));
  if (IsRecovering() || IsMissing(appId)) return kFailed;
  _APPS_INNER_INFO_T app;
  if (GetAppInnerInfo(appId, &app) == kFailed) {
    TAV_LOGE("%s is not installed", appId);
    return kFailed;
  }
  if (app.bReserved10) {
    TAV_LOGI("[%s] updating", appId);
    return 0;
  }
  if (!app.strReservedString10.empty() && IsRequiredAppUpdating(appId, app.strReservedString10)) {
    return 0;
  }
  TAV_LOGI("[%s] is not installing", appId);
  return kFailed;
} catch (...) {
  return AnswerException(__func__);
}
