// SPDX-License-Identifier: Apache-2.0
#include "tav_db_api/tav_db_client_inner.h"

#include <cstdlib>
#include <utility>

#include "tav_common/tav_arguments.h"
#include "tav_db_api/tav_db_client_age_rating.h"
#include "tav_db_api/tav_db_client_app_info.h"
#include "tav_db_api/tav_db_client_checks.h"
#include "tav_db_api/tav_db_client_filter.h"
#include "tav_db_api/tav_db_client_inner_fields.h"

namespace {

// Fills a record from the current row. Each of the two readers leaves one column alone.
void SetInnerInfo(_APPS_INNER_INFO_T& app, ColumnIndex left_alone, AgeRating& rating)
    REQUIRES(g_Mute) {
  for (const auto& field : kInnerTexts) app.*field.member = GetStringFromResult(field.column);
  for (const auto& field : kInnerIntegers) {
    if (field.column != left_alone) app.*field.member = GetIntegerFromResult(field.column);
  }
  for (const auto& field : kInnerFlags) {
    if (field.column != left_alone) app.*field.member = GetIntegerFromResult(field.column) != 0;
  }
  // Without a limit the flag stays as the column has it, 0, 1 or anything else.
  if (const auto is_locked = rating.Locks(app.iAgeLimit)) {
    app.iIsLock = *is_locked || app.iIsLock != 0 ? 1 : 0;
  }
}

void SetFirstInnerInfo(_APPS_INNER_INFO_T& app, AgeRating& rating) REQUIRES(g_Mute) {
  SetInnerInfo(app, kInstallSourceType, rating);
  TAV_LOGI("set app_info success");
}

// How the numbers are read that come as texts: 0 without a digit at the beginning.
int NumberOf(const std::string& text) {
  return static_cast<int>(std::strtol(text.c_str(), nullptr, 10));
}

}  // namespace

int m_GetAppsTableInnerInfo(_APPS_INNER_INFO_T* ptAppInfo, const std::string& strParam,
                            const std::vector<_TAVDB_BIND_T>& binds) {
  const int prepared = PrepareAndBind(SelectApps() + strParam, binds);
  if (prepared != 0) return prepared;
  AgeRating rating;
  return ReadFirstRow([&]() REQUIRES(g_Mute) { SetFirstInnerInfo(*ptAppInfo, rating); });
}

int m_GetAppsTableInnerList(std::vector<_APPS_INNER_INFO_T>& list, const std::string& strParam,
                            const std::vector<_TAVDB_BIND_T>& binds) {
  const int prepared = PrepareAndBind(SelectApps() + strParam, binds);
  if (prepared != 0) return prepared;
  AgeRating rating;
  RowWalk rows;
  while (rows.Next()) {
    _APPS_INNER_INFO_T app;
    SetInnerInfo(app, kReservedTinyint15, rating);
    TAV_LOGI("set app %s", app.strAppID.c_str());
    list.push_back(std::move(app));
  }
  return 0;
}

int GetAppInnerInfo(const std::string& strAppID, _APPS_INNER_INFO_T* ptAppInfo) {
  TAV_LOGI("Start, app_id:[%s]", strAppID.c_str());
  const DatabaseLock lock;
  if (PlatformRefuses() || HasNull({ptAppInfo}) ||
      IsEmpty(strAppID.c_str(), "strAppID is empty ")) {
    return kFailed;
  }
  const Query query =
      Query(
          " where (id = ?  or tizen_id = ? or pkgname = ? or hybrid_app = ? or reserved_string_16 = ?)  ")
          .Bind(strAppID)
          .Bind(strAppID)
          .Bind(strAppID)
          .Bind(strAppID)
          .Bind(strAppID)
          .AndVisible();
  const int result = m_GetAppsTableInnerInfo(ptAppInfo, query.Condition(), query.Binds());
  TAV_LOGI("Finish app_id:[%s],ret[%d]", strAppID.c_str(), result);
  return result;
}

int GetTAVAppList(const std::string& featured, const std::string& view_mode, bool bAll,
                  std::vector<_APPS_INNER_INFO_T>& list) {
  TAV_LOGI("Start, app_featured:[%s], view_mode:[%s]", featured.c_str(), view_mode.c_str());
  const DatabaseLock lock;
  const int featured_bits = NumberOf(featured);
  const int order = NumberOf(view_mode);
  if (PlatformRefuses()) return kFailed;
  Query query(" where install_state = ? and is_app_available = ? and is_need_reset = ? ");
  query.Bind(kInstalled).Bind(kAvailable).Bind(kNotMarkedForReset);
  if (!bAll) {
    query.Append(" and is_hidden = ? ").Bind(kNotHidden);
    if (!AddFeatured(query, featured_bits)) return kFailed;
    query.Append(OrderOfView(order));
  }
  const int result = m_GetAppsTableInnerList(list, query.Condition(), query.Binds());
  TAV_LOGI("Finish ret[%d]", result);
  return result;
}
