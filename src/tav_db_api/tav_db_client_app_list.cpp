// SPDX-License-Identifier: Apache-2.0
#include "tav_db_api/tav_db_client_app_list.h"

#include <algorithm>
#include <cstring>

#include "tav_common/tav_arguments.h"
#include "tav_db_api/tav_db_client_app_info.h"
#include "tav_db_api/tav_db_client_checks.h"
#include "tav_db_api/tav_db_client_columns.h"
#include "tav_db_api/tav_db_client_filter.h"
#include "tav_db_api/tav_db_client_text.h"
#include "tav_db_api/tav_db_client_values.h"

namespace {

constexpr int kHighestTypeFilter = 255;

constexpr ListComplaints kFullComplaints = {"failed to malloc app_list", "failed to get app list"};
constexpr ListComplaints kShortComplaints = {"failed to malloc app_list_ms",
                                             "failed to get app list ms"};

// View modes come from callers as integers, the known ones and others. Full records are put in
// the order of their downloads after they were read.
const char* OrderOf(int view_mode, bool is_ms) {
  if (view_mode == TAV_APP_VIEWMODE_LAST_DOWNLOADED && is_ms) return kOrderByInstallDate;
  if (view_mode == TAV_APP_VIEWMODE_RECENTLY_LAUNCHED) return kOrderByLaunchDate;
  return OrderOfView(view_mode);
}

// Counts the apps that the filter lets through and leaves the condition in query. 0, or the
// failure; *realCount is then 0 unless the filter itself was refused.
int CountFiltered(const tav_app_filter_s& filter, Query& query, int* realCount) REQUIRES(g_Mute) {
  query.Bind(kAvailable).Bind(kInstalled);
  bool is_no_type = false;
  if (filter.app_type != kNoFilter) {
    std::string marks;
    const int result = GetStrAppType(filter.app_type, marks, query.Binds());
    if (result != 0) {
      TAV_LOGW("filterAppType error");
      return result;
    }
    query.Append(" and app_type in (" + marks + ") ");
    is_no_type = marks.empty();
  }
  if (!AddFeatured(query, filter.featured)) return kFailed;
  query.Append(" and is_hidden = ? and is_need_reset = ? ");
  query.Bind(kNotHidden).Bind(kNotMarkedForReset);

  // Deliberate: a filter without a known type fails, although SQLite would take an empty list.
  const int result =
      is_no_type ? kFailed : GetAppsTableCount(realCount, query.Condition(), 0, query.Binds());
  if (result != 0) {
    *realCount = 0;
    TAV_LOGE("get app count fail");
  }
  return result;
}

// How many of the matching apps the page holds; 0 or less when there is none.
int PageSize(int matching, int index, int count) {
  const int rest = index >= 0 ? matching - index : matching;
  return count > 0 && rest > count ? count : rest;
}

}  // namespace

int GetAppList(tav_app_filter_s filter, tav_app_viewmode_e viewMode, int index, int count,
               bool isMs, int* realCount, tav_app_info_s** appList, tav_app_ms_s** msList) {
  if (PlatformRefuses()) return kFailed;
  if (isMs ? HasNull({msList, realCount}) : HasNull({appList, realCount})) return kFailed;
  TAV_LOGI("featured:[%d],premium_game:[%d],app_type:[%d],view_mode:[%d],index:[%d],count:[%d]",
           filter.featured, filter.premium_game, filter.app_type, static_cast<int>(viewMode), index,
           count);
  if (filter.app_type != kNoFilter && filter.app_type > kHighestTypeFilter) {
    TAV_LOGW("in param app_type is error");
    return kFailed;
  }

  Query query(" where is_app_available = ? and install_state = ? ");
  const int counted = CountFiltered(filter, query, realCount);
  if (counted != 0) return counted;
  const int matching = *realCount;
  *realCount = 0;  // until the list is the caller's
  if (matching == 0) {
    TAV_LOGI("real_count is 0 ");
    return 0;
  }
  if (matching <= index) {
    TAV_LOGW("offect >= real count:offect:%d, real count:%d ", index, matching);
    return kFailed;
  }
  const int size = PageSize(matching, index, count);
  if (size < 1) {
    TAV_LOGW("real_count <=0, it's wrong ");
    return kFailed;
  }

  query.Append(OrderOf(viewMode, isMs));
  if (index >= 0) query.Append("limit ?,? ").Bind(index).Bind(size);
  int result;
  if (isMs) {
    result = DeliverList(size, msList, realCount, kShortComplaints,
                         [&](tav_app_ms_s* list) REQUIRES(g_Mute) {
                           return GetAppsMSList(list, size, query.Condition(), query.Binds());
                         });
  } else {
    result = DeliverList(size, appList, realCount, kFullComplaints,
                         [&](tav_app_info_s* list) REQUIRES(g_Mute) {
                           return GetAppsTableList(list, size, query.Condition(), 0, query.Binds(),
                                                   viewMode == TAV_APP_VIEWMODE_LAST_DOWNLOADED);
                         });
  }
  if (result == 0) TAV_LOGI("Finish,real_count:[%d]", *realCount);
  return result;
}

int GetAppsMSList(tav_app_ms_s* list, int count, const std::string& where,
                  const std::vector<_TAVDB_BIND_T>& binds) {
  const std::string sql = std::string("select id,is_multi_screen2 from ") + kAppsTable + where;
  TAV_LOGI("sql:%s", sql.c_str());
  const int prepared = PrepareAndBind(sql, binds);
  if (prepared != 0) return prepared;
  const int records = std::max(count, 0);
  std::memset(list, 0, sizeof(tav_app_ms_s) * static_cast<std::size_t>(records));

  int stored = 0;
  bool has_row = false;
  RowWalk rows;
  while (rows.Next()) {
    has_row = true;
    if (stored == records) continue;
    TAV_LOGI("begin to set app_info ");
    CopyText(list[stored].app_id, GetStringFromResult(0));
    list[stored].is_multi_screen2 = GetIntegerFromResult(1);
    ++stored;
    TAV_LOGI("set app_info success");
  }
  if (rows.WasBusy()) return kBusy;
  for (int i = 0; i < stored; ++i) {
    TAV_LOGI("appindex = %d, app_id =%s, is_multi_screen2 =%d", i, list[i].app_id,
             list[i].is_multi_screen2);
  }
  return has_row ? 0 : kFailed;
}
