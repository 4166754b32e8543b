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

// The installed app with this id, Tizen id, package name, native id or Android id. Takes the
// lock itself. 0; -1 when there is none or the call is refused; -2 when the database stayed busy.
int GetAppInnerInfo(const std::string& strAppID, _APPS_INNER_INFO_T* ptAppInfo);

#endif  // TAV_DB_API_TAV_DB_CLIENT_INNER_H_
