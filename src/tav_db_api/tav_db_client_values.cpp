// SPDX-License-Identifier: Apache-2.0
#include "tav_db_api/tav_db_client_values.h"

#include <cstring>
#include <new>

#include "tav_common/tav_handles.h"
#include "tav_db_api/tav_db_client_columns.h"
#include "tav_db_api/tav_db_client_text.h"

int GetAppsTableCount(int* count, const std::string& where, int tableType,
                      const std::vector<_TAVDB_BIND_T>& binds) {
  TAV_LOGI("Start, tableType:[%d]", tableType);
  const int prepared =
      PrepareAndBind(std::string("select count(id) from ") + kAppsTable + where, binds);
  if (prepared != 0) return prepared;

  int matching = 0;
  int result = kFailed;
  RowWalk rows;
  while (rows.Next()) {
    matching = GetIntegerFromResult(0);
    result = kFound;
  }
  *count = matching;
  if (rows.WasBusy()) return kBusy;
  return rows.ReachedTheEnd() ? kFound : result;
}

int GetIntValueByKey(int* value, const char* column, const std::string& where, int tableType,
                     const std::vector<_TAVDB_BIND_T>& binds) {
  TAV_LOGI("Start, tableType:[%d]", tableType);
  const int prepared =
      PrepareAndBind(std::string("  select ") + column + "  from " + kAppsTable + where, binds);
  if (prepared != 0) return prepared;
  const int result = ReadFirstRow([&]() REQUIRES(g_Mute) { *value = GetIntegerFromResult(0); });
  if (result == kFound) {
    TAV_LOGI("iValue =%d", *value);
    TAV_LOGI("Get DB info finish:iValue:[%d]", *value);
  }
  return result;
}

int GetStrValueByKey(char* value, const char* column, const std::string& where, int tableType,
                     const std::vector<_TAVDB_BIND_T>& binds) {
  const std::string sql = tableType == kConfigTableType
                              ? std::string("  select value from ") + kConfigTable + where
                              : std::string("  select ") + column + "  from " + kAppsTable + where;
  TAV_LOGI("sql:%s", sql.c_str());
  const int prepared = PrepareAndBind(sql, binds);
  if (prepared != 0) return prepared;
  const int result =
      ReadFirstRow([&]() REQUIRES(g_Mute) { CopyText(value, GetStringFromResult(0)); });
  if (result == kFound) {
    TAV_LOGI("strValue =%s", value);
    TAV_LOGI("Get DB finish:strValue:[%s]", value);
  }
  return result;
}

int GetConfigTableValue(const char* name, char** value) {
  std::vector<_TAVDB_BIND_T> binds;
  save_db_bind(binds, name);
  const std::string sql = std::string("select value from ") + kConfigTable + " where name = ?";
  TAV_LOGI("sql %s", sql.c_str());
  const int prepared = PrepareAndBind(sql, binds);
  if (prepared != 0) return prepared;
  const int result = ReadFirstRow([&]() REQUIRES(g_Mute) {
    MallocText copy(strdup(GetStringFromResult(0)));
    if (copy == nullptr) throw std::bad_alloc();
    *value = copy.release();
  });
  if (result == kFound) TAV_LOGI("Get DB finish:strName:[%s],strValue:[%s]", name, *value);
  return result;
}

bool GetConfigText(const char* name, std::string& value) {
  char* text = nullptr;
  const int result = GetConfigTableValue(name, &text);
  const MallocText owner(text);
  if (result != kFound) return false;
  value = text;
  return true;
}

int CheckIsRecentlyOrMostUsedApp(const std::string& appId, const std::string& sql,
                                 const std::vector<_TAVDB_BIND_T>& binds) {
  TAV_LOGI("app id:%s, strSql:%s", appId.c_str(), sql.c_str());
  const int prepared = PrepareAndBind(sql, binds);
  if (prepared != 0) {
    TAV_LOGE("Failed to prepare");
    return prepared;
  }
  int result = kFailed;
  std::string id;
  RowWalk rows("get app info fail:sql busy");
  while (rows.Next()) {
    if (result == kFound) continue;
    GetValueByDBPosition(0, id);
    if (id != appId) continue;
    TAV_LOGI("[%s] is recently(or most) used app", appId.c_str());
    result = kFound;
  }
  if (rows.WasBusy()) return kBusy;
  TAV_LOGI("[%s] check db finish, result [%d]", appId.c_str(), result);
  return result;
}
