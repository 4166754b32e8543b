// SPDX-License-Identifier: Apache-2.0
//
// Helpers of libtav_db_api that other components of the platform call. C++ only: their
// exported names carry their parameter types. An application needs tav_db_api.h alone.
#ifndef TAV_DB_API_INNER_H_
#define TAV_DB_API_INNER_H_

#include "tav_db_api.h"

// The two lookups below take no lock: inside the library they run in a section that holds it.
// From outside, no other function of the library may run in the process at the same time.

// Fills *info with the app whose id, Tizen id or package name is app_id. Returns 0; -1 when
// nothing matches, an argument is null or empty, or the call is refused (factory reset,
// package-manager recovery); -2 when the database stayed busy. *info is untouched when the
// call was refused or the query could not be prepared, and zeroed when nothing matched.
TAV_API int m_tav_get_app_info(const char* app_id, tav_app_info_s* info);

// Fills *info with the app whose run title is run_title; note the order of the arguments.
// Results as m_tav_get_app_info.
TAV_API int GetAppInfoByRuntitle(tav_app_info_s* info, const char* run_title);

#endif  // TAV_DB_API_INNER_H_
