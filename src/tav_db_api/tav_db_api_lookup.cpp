// SPDX-License-Identifier: Apache-2.0
//
// The exported lookups of one app. They differ in the names they match and in their texts; the
// doubled blanks of the conditions are kept.
#include "tav_db_api/tav_db_api_throwing.h"

#include <system_info.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "tav_common/tav_arguments.h"
#include "tav_common/tav_handles.h"
#include "tav_db_api/tav_db_api_border.h"
#include "tav_db_api/tav_db_client_app_info.h"
#include "tav_db_api/tav_db_client_checks.h"

namespace {

constexpr std::string_view kDemonstrationApp = "vitrine";
constexpr char kDemonstrationAppKey[] = "com.kordyne/featureconf/vitrine.webid";

// Their ids stand in other apps' rows as well, so they are found by the platform id alone.
constexpr std::array<std::string_view, 2> kFoundByTizenIdAlone = {"org.tizen.browser",
                                                                  "org.tizen.netflix-app"};

int Find(const Query& query, tav_app_info_s* info) REQUIRES(g_Mute) {
  return GetAppsTableInfo(info, query.Condition(), query.Binds());
}

int FindById(const char* id, tav_app_info_s* info) REQUIRES(g_Mute) {
  const auto& alone = kFoundByTizenIdAlone;
  if (std::find(alone.begin(), alone.end(), id) != alone.end()) {
    return Find(Query(" where tizen_id = ? ").Bind(id).AndVisible(), info);
  }
  return Find(Query(" where (id = ? or tizen_id = ?)  ").Bind(id).Bind(id).AndVisible(), info);
}

// The web id that the device gives its demonstration app; null after a log when it has none.
MallocText DemonstrationAppId() {
  char* value = nullptr;
  const int result = system_info_get_custom_string(kDemonstrationAppKey, &value);
  MallocText web_id(result == 0 ? value : nullptr);
  if (web_id == nullptr) {
    TAV_LOGE("failed to get vitrine's web id, key:com.kordyne/featureconf/vitrine.webid");
  } else {
    TAV_LOGI("vitrine's web id is %s", web_id.get());
  }
  return web_id;
}

}  // namespace

unsigned int get_size_of_tav_app_info_s(void) {
  return sizeof(tav_app_info_s);
}

int tav_get_app_info(const char* app_id, tav_app_info_s* info) try {
  const TavCall call;
  TAV_LOGI("Start to get [%s] info", Printable(app_id));
  const DatabaseLock lock;
  if (PlatformRefuses() || HasNull({app_id, info}) || IsEmpty(app_id, kAppIdIsEmpty))
    return kFailed;

  MallocText web_id;
  const char* id = app_id;
  if (id == kDemonstrationApp) {
    web_id = DemonstrationAppId();
    if (web_id == nullptr) return kFailed;
    id = web_id.get();
  }
  TAV_LOGI("app_id:[%s]", id);
  const int result = FindById(id, info);
  TAV_LOGI("Get app info by app_id:[%s] finish, ret [%d]", id, result);
  return result;
} catch (...) {
  return AnswerException(__func__);
}

int tav_get_app_info_by_tizenid(const char* tizen_id, tav_app_info_s* info) {
  const TavCall call;
  TAV_LOGI("Start,tizen id:[%s]", Printable(tizen_id));
  const int result = tav_get_app_info(tizen_id, info);
  TAV_LOGI("tizen_id:[%s] finish [%d]", Printable(tizen_id), result);
  return result;
}

int tav_get_app_info_by_runtitle(const char* run_title, tav_app_info_s* info) try {
  const TavCall call;
  TAV_LOGI("Start, runtitile:[%s]", Printable(run_title));
  const DatabaseLock lock;
  if (PlatformRefuses() || HasNull({run_title, info}) || IsEmpty(run_title, kRunTitleIsEmpty)) {
    return kFailed;
  }
  const int result = Find(Query(" where run_title = ?  ").Bind(run_title).AndVisible(), info);
  TAV_LOGI("Finish runtitile:[%s]", run_title);
  return result;
} catch (...) {
  return AnswerException(__func__);
}

namespace throwing {

int m_tav_get_app_info(const char* app_id, tav_app_info_s* info) {
  TAV_LOGI("Start, app_id:[%s]", Printable(app_id));
  if (PlatformRefuses() || HasNull({app_id, info}) || IsEmpty(app_id, kAppIdIsEmpty))
    return kFailed;
  const int result = Find(Query(" where (id = ?  or tizen_id = ? or pkgname = ?)  ")
                              .Bind(app_id)
                              .Bind(app_id)
                              .Bind(app_id)
                              .AndVisible(),
                          info);
  TAV_LOGI("Finish app_id:[%s],ret[%d]", app_id, result);
  return result;
}

int GetAppInfoByRuntitle(tav_app_info_s* info, const char* run_title) {
  if (PlatformRefuses() || HasNull({run_title, info}) || IsEmpty(run_title, kRunTitleIsEmpty)) {
    return kFailed;
  }
  TAV_LOGI("runtitile:[%s]", run_title);
  const int result = Find(Query(" where run_title = ? ").Bind(run_title).AndVisible(), info);
  TAV_LOGI("Get app info by run_title:[%s] finish, ret [%d]", run_title, result);
  return result;
}

}  // namespace throwing

int m_tav_get_app_info(const char* app_id, tav_app_info_s* info) try {
  const TavCall call;
  const TavRunningCall running;
  return throwing::m_tav_get_app_info(app_id, info);
} catch (...) {
  return AnswerException(__func__);
}

int GetAppInfoByRuntitle(tav_app_info_s* info, const char* run_title) try {
  const TavCall call;
  const TavRunningCall running;
  return throwing::GetAppInfoByRuntitle(info, run_title);
} catch (...) {
  return AnswerException(__func__);
}
