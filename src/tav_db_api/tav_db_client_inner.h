// SPDX-License-Identifier: Apache-2.0
//
// The inner record's readers and its lookup.
#ifndef TAV_DB_API_TAV_DB_CLIENT_INNER_H_
#define TAV_DB_API_TAV_DB_CLIENT_INNER_H_

#include <string>
#include <vector>

#include "tav_db_api/tav_db_client_connection.h"
#include "tav_db_api_inner.h"

// Fills the record from the first row of "select … from widgetinfo" + strParam. 0; -1 without a
// row; -2 when the database stayed busy; or what Prepare returned. Members that it does not
// read stay as they are.
int m_GetAppsTableInnerInfo(_APPS_INNER_INFO_T* ptAppInfo, const std::string& strParam,
                            const std::vector<_TAVDB_BIND_T>& binds) REQUIRES(g_Mute);

// Appends a record for each row. 0, also when a busy database ends the rows: what was read
// until then stays; or what Prepare returned.
int m_GetAppsTableInnerList(std::vector<_APPS_INNER_INFO_T>& list, const std::string& strParam,
                            const std::vector<_TAVDB_BIND_T>& binds) REQUIRES(g_Mute);

// The installed app with this id, platform id, package name, native id or Android id. Takes the
// lock itself. 0; -1 when there is none or the call is refused; -2 when the database stayed busy.
int GetAppInnerInfo(const std::string& strAppID, _APPS_INNER_INFO_T* ptAppInfo);

// Appends the installed apps: with bAll every one, in the database's order; else those that are
// not hidden and that featured lets through, in the order of view_mode, both decimal numbers.
// Takes the lock itself. 0; -1 when featured has none of the bits 1, 2, 4 and 8 or the call is
// refused; or what Prepare returned.
int GetTAVAppList(const std::string& featured, const std::string& view_mode, bool bAll,
                  std::vector<_APPS_INNER_INFO_T>& list);

#endif  // TAV_DB_API_TAV_DB_CLIENT_INNER_H_
