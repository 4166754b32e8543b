// SPDX-License-Identifier: Apache-2.0
//
// Single values from the database: counts, one column of one app, one configuration value, and
// whether an app is among the rows of a query. Results are 0; -1 without a row; -2 when the
// database stayed busy; or what Prepare returned, the out value then untouched.
#ifndef TAV_DB_API_TAV_DB_CLIENT_VALUES_H_
#define TAV_DB_API_TAV_DB_CLIENT_VALUES_H_

#include <string>
#include <vector>

#include "tav_db_api/tav_db_client_connection.h"

constexpr char kConfigTable[] = "TAVConfigTable";
// The number that makes GetStrValueByKey read the configuration table.
constexpr int kConfigTableType = 2;

// How many apps match. 0 also when none does. *count is written whatever ends the rows.
int GetAppsTableCount(int* count, const std::string& where, int tableType,
                      const std::vector<_TAVDB_BIND_T>& binds) REQUIRES(g_Mute);

// The column of the first app that matches. tableType is only logged.
int GetIntValueByKey(int* value, const char* column, const std::string& where, int tableType,
                     const std::vector<_TAVDB_BIND_T>& binds) REQUIRES(g_Mute);

// The same for a text; value has room for TAV_TEXT_SIZE bytes, and a longer text is cut. For
// the configuration table the value column is read and column is not used.
int GetStrValueByKey(char* value, const char* column, const std::string& where, int tableType,
                     const std::vector<_TAVDB_BIND_T>& binds) REQUIRES(g_Mute);

// A configuration value as a new malloc block. It is there as soon as its row was read, also
// when the result is -2: the caller frees it whatever the result.
int GetConfigTableValue(const char* name, char** value) REQUIRES(g_Mute);

// A configuration value as a text; false, value then untouched, when it cannot be read.
bool GetConfigText(const char* name, std::string& value) REQUIRES(g_Mute);

// 0 when appId is among the rows of sql, -1 when it is not.
int CheckIsRecentlyOrMostUsedApp(const std::string& appId, const std::string& sql,
                                 const std::vector<_TAVDB_BIND_T>& binds) REQUIRES(g_Mute);

#endif  // TAV_DB_API_TAV_DB_CLIENT_VALUES_H_
