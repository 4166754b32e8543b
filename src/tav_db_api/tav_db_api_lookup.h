// SPDX-License-Identifier: Apache-2.0
//
// The lookups that the library's own functions call while they hold the lock.
#ifndef TAV_DB_API_TAV_DB_API_LOOKUP_H_
#define TAV_DB_API_TAV_DB_API_LOOKUP_H_

#include "tav_db_api/tav_db_client_connection.h"
#include "tav_db_api_inner.h"

// The exported declarations say nothing of the lock; inside the library it is required.
// NOLINTBEGIN(readability-redundant-declaration)
int m_tav_get_app_info(const char* app_id, tav_app_info_s* info) REQUIRES(g_Mute);
int GetAppInfoByRuntitle(tav_app_info_s* info, const char* run_title) REQUIRES(g_Mute);
// NOLINTEND(readability-redundant-declaration)

// The same for those who must tell an app that is not there from memory that ran out: exceptions
// pass.
namespace throwing {

int m_tav_get_app_info(const char* app_id, tav_app_info_s* info) REQUIRES(g_Mute);
int GetAppInfoByRuntitle(tav_app_info_s* info, const char* run_title) REQUIRES(g_Mute);

}  // namespace throwing

#endif  // TAV_DB_API_TAV_DB_API_LOOKUP_H_
