// SPDX-License-Identifier: Apache-2.0
//
// The exported lists, counts and usage tests. Each holds the lock around its whole work.
#include <string>
#include <utility>

#include "tav_common/tav_arguments.h"
#include "tav_db_api.h"
#include "tav_db_api/tav_db_api_border.h"
#include "tav_db_api/tav_db_client_app_info.h"
#include "tav_db_api/tav_db_client_app_list.h"
#include "tav_db_api/tav_db_client_checks.h"
#include "tav_db_api/tav_db_client_columns.h"
#include "tav_db_api/tav_db_client_filter.h"
#include "tav_db_api/tav_db_client_values.h"

namespace {

constexpr int kMostUsageRows = 3;

// A list of full records whose condition is fixed, and what is said of it.
struct FixedList {
  int table_type;         // logged by the count
  bool is_count_cleared;  // whether a failed count sets the caller's to 0
  const char* count_failed;
  const char* is_empty;
  const char* order;
  bool is_last_download;
  bool is_size_told;  // whether its size is logged before it is read
  ListComplaints complaints;
};

constexpr FixedList kAllApps = {0,
                                true,
                                "get app count fail",
                                "count is 0 ",
                                kOrderByIndex,
                                true,
                                false,
                                {"failed to malloc app_list", "failed to get app list"}};

// The complaint about the list is the one about the count: deliberate, and kept.
constexpr FixedList kRecentApps = {0,
                                   true,
                                   "get app count fail ",
                                   "real_count is 0 ",
                                   kOrderByLaunchDate,
                                   false,
                                   true,
                                   {"Failed to malloc app_list", "get app count fail "}};

constexpr FixedList kKeyApps = {1,
                                false,
                                "failed to get AppsTable Count ",
                                "real_count is 0 ",
                                "",
                                false,
                                false,
                                {"Failed to malloc app_list", "get app list fail "}};

// Reads the apps that match query, at most `most` of them when that is above 0. When there is
// none, its line ends the call: *real_count is 0 and the status too.
int GetFixedList(const FixedList& kind, Query query, int most, tav_app_info_s** list,
                 int* real_count, const LogPlace& place = LogPlace::Here()) REQUIRES(g_Mute) {
  const int counted =
      GetAppsTableCount(real_count, query.Condition(), kind.table_type, query.Binds());
  if (counted != 0) {
    if (kind.is_count_cleared) *real_count = 0;
    TAV_LOGE_FOR(place, "%s", kind.count_failed);
    return counted;
  }
  const int matching = *real_count;
  *real_count = 0;  // until the list is the caller's
  if (matching == 0) {
    TAV_LOGI_FOR(place, "%s", kind.is_empty);
    return 0;
  }
  if (matching < 0) {
    TAV_LOGE_FOR(place, "count is <=0, it's wrong");
    return kFailed;
  }
  const int size = most > 0 && matching > most ? most : matching;
  if (kind.is_size_told) {
    TAV_LOGI_FOR(place, "before set,in_param count: %d,real_count:%d", most, matching);
    TAV_LOGI_FOR(place, "before set,real_count: %d", size);
  }
  query.Append(kind.order);
  return DeliverList(size, list, real_count, kind.complaints,
                     [&](tav_app_info_s* records) REQUIRES(g_Mute) {
                       return GetAppsTableList(records, size, query.Condition(), kind.table_type,
                                               query.Binds(), kind.is_last_download);
                     });
}

// 0 when the app is among the first three apps in this order that were used at all.
int CheckUsage(const char* app_id, const char* order, const LogPlace& place = LogPlace::Here())
    REQUIRES(g_Mute) {
  if (IsRecovering(place)) return kFailed;
  Query query(
      " where is_need_reset = ? and is_app_available = ? and install_state = ? and is_hidden = ? and use_count > ? ");
  query.Bind(kNotMarkedForReset)
      .Bind(kAvailable)
      .Bind(kInstalled)
      .Bind(kNotHidden)
      .Bind(kNeverUsed);
  query.Append(order).Append("limit ?").Bind(kMostUsageRows);
  return CheckIsRecentlyOrMostUsedApp(
      app_id, std::string("select id from ") + kAppsTable + query.Condition(), query.Binds());
}

bool IsNullOrEmpty(const char* app_id, const LogPlace& place = LogPlace::Here()) {
  return HasNull({app_id}, place) || IsEmpty(app_id, "in param is NULL ", place);
}

}  // namespace

unsigned int get_size_of_tav_app_filter_s(void) {
  return sizeof(tav_app_filter_s);
}

int tav_init_app_filter(tav_app_filter_s* filter) {
  const TavCall call;
  if (HasNull({filter})) return kFailed;
  *filter = {1, 1, 2};
  return 0;
}

int tav_get_app_list(tav_app_filter_s filter, tav_app_viewmode_e viewMode, int index, int count,
                     tav_app_info_s** appList, int* realCount) try {
  const TavCall call;
  TAV_LOGI("Start");
  const DatabaseLock lock;
  return GetAppList(filter, viewMode, index, count, false, realCount, appList, nullptr);
} catch (...) {
  return AnswerException(__func__);
}

int tav_get_app_list_dn(tav_app_filter_s* filter, tav_app_viewmode_e viewMode, int index, int count,
                        tav_app_info_s** appList, int* realCount) {
  const TavCall call;
  return HasNull({filter}) ? kFailed
                           : tav_get_app_list(*filter, viewMode, index, count, appList, realCount);
}

int tav_get_app_list_ms(tav_app_filter_s filter, tav_app_viewmode_e viewMode, int index, int count,
                        tav_app_ms_s** msList, int* realCount) try {
  const TavCall call;
  TAV_LOGI("Start");
  const DatabaseLock lock;
  return GetAppList(filter, viewMode, index, count, true, realCount, nullptr, msList);
} catch (...) {
  return AnswerException(__func__);
}

// Counts by fetching, so that every rule of the lists holds for the count.
int tav_get_app_count(tav_app_filter_s filter, int* count) try {
  const TavCall call;
  TAV_LOGI("Start");
  const DatabaseLock lock;
  tav_app_info_s* list = nullptr;
  const int result =
      GetAppList(filter, TAV_APP_VIEWMODE_MOST_USED, 0, 0, false, count, &list, nullptr);
  const MallocPtr<tav_app_info_s> owner(list);
  TAV_LOGI("Finish,count:%d ", count != nullptr ? *count : 0);
  return result;
} catch (...) {
  return AnswerException(__func__);
}

int tav_get_app_count_dn(tav_app_filter_s* filter, int* count) {
  const TavCall call;
  return HasNull({filter}) ? kFailed : tav_get_app_count(*filter, count);
}

int tav_get_all_app_list(tav_app_info_s** appList, int* count) try {
  const TavCall call;
  TAV_LOGI("Start");
  const DatabaseLock lock;
  if (PlatformRefuses() || HasNull({appList, count})) return kFailed;
  Query query(" where is_app_available = ? and install_state = ? and is_need_reset = ?");
  query.Bind(kAvailable).Bind(kInstalled).Bind(kNotMarkedForReset);
  const int result = GetFixedList(kAllApps, std::move(query), 0, appList, count);
  if (result == 0 && *count != 0) TAV_LOGI("Finish");
  return result;
} catch (...) {
  return AnswerException(__func__);
}

int tav_get_recently_used_app_list(int count, tav_app_info_s** appList, int* realCount) try {
  const TavCall call;
  TAV_LOGI("Start");
  const DatabaseLock lock;
  if (PlatformRefuses() || HasNull({appList, realCount})) return kFailed;
  TAV_LOGI("count:[%d]", count);
  Query query(
      " where is_app_available = ? and install_state = ? and is_hidden = ? and is_need_reset = ? and use_count > ? ");
  query.Bind(kAvailable)
      .Bind(kInstalled)
      .Bind(kNotHidden)
      .Bind(kNotMarkedForReset)
      .Bind(kNeverUsed);
  const int result = GetFixedList(kRecentApps, std::move(query), count, appList, realCount);
  if (result == 0 && *realCount != 0) TAV_LOGI("Finish,real_count:[%d]", *realCount);
  return result;
} catch (...) {
  return AnswerException(__func__);
}

// The key is a column's name and stands in the text as it is, by contract.
int tav_get_key_list(const std::string& key, int count, tav_app_info_s** appList,
                     int* realCount) try {
  const TavCall call;
  TAV_LOGI("Start, key:[%s],count:[%d]", key.c_str(), count);
  const DatabaseLock lock;
  if (PlatformRefuses() || HasNull({appList, realCount})) return kFailed;
  Query query("  where install_state = ? and is_app_available = ? and " + key +
              " = ? and is_need_reset = ?  ");
  query.Bind(kInstalled).Bind(kAvailable).Bind(1).Bind(kNotMarkedForReset);
  const int result = GetFixedList(kKeyApps, std::move(query), count, appList, realCount);
  if (result == 0 && *realCount != 0) TAV_LOGI("Finish:real_count:[%d]", *realCount);
  return result;
} catch (...) {
  return AnswerException(__func__);
}

int tav_check_is_recently_used_app(const char* appId) try {
  const TavCall call;
  if (IsNullOrEmpty(appId)) return kFailed;
  TAV_LOGI("check [%s] is recently used app or not", appId);
  const DatabaseLock lock;
  const int result = CheckUsage(appId, kOrderByLaunchDate);
  TAV_LOGI("app %s ,check is recently used app ret:%d.", appId, result);
  return result;
} catch (...) {
  return AnswerException(__func__);
}

int tav_check_is_most_used_app(const char* appId) try {
  const TavCall call;
  if (IsNullOrEmpty(appId)) return kFailed;
  TAV_LOGI("check [%s] is recently used app or not", appId);
  const DatabaseLock lock;
  const int result = CheckUsage(appId, kOrderByUseCount);
  TAV_LOGI("app %s ,check is most used app ret:%d.", appId, result);
  return result;
} catch (...) {
  return AnswerException(__func__);
}
