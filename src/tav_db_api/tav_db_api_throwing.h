// SPDX-License-Identifier: Apache-2.0
//
// Exported functions for the library's own use: exceptions pass, so that memory that ran out is
// told from an app that is not there, and half a list or none is not taken for the whole.
#ifndef TAV_DB_API_TAV_DB_API_THROWING_H_
#define TAV_DB_API_TAV_DB_API_THROWING_H_

#include <map>
#include <string>

#include "tav_db_api/tav_db_client_connection.h"
#include "tav_db_api_inner.h"

namespace throwing {

int m_tav_get_app_info(const char* app_id, tav_app_info_s* info) REQUIRES(g_Mute);
int GetAppInfoByRuntitle(tav_app_info_s* info, const char* run_title) REQUIRES(g_Mute);
std::map<std::string, std::string> GetUnsupportedPkgList();
void ParseStringToList(const std::string& text, const std::string& item_separator,
                       const std::string& pair_separator, std::map<std::string, std::string>& out);

}  // namespace throwing

// The exported declarations say nothing of the lock; inside the library it is required.
// NOLINTBEGIN(readability-redundant-declaration)
int m_tav_get_app_info(const char* app_id, tav_app_info_s* info) REQUIRES(g_Mute);
int GetAppInfoByRuntitle(tav_app_info_s* info, const char* run_title) REQUIRES(g_Mute);
// NOLINTEND(readability-redundant-declaration)

#endif  // TAV_DB_API_TAV_DB_API_THROWING_H_
