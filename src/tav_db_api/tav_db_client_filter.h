// SPDX-License-Identifier: Apache-2.0
//
// The pieces of a list's query that its filter and its view mode stand for.
#ifndef TAV_DB_API_TAV_DB_CLIENT_FILTER_H_
#define TAV_DB_API_TAV_DB_CLIENT_FILTER_H_

#include <string>
#include <vector>

#include "tav_db_api/tav_db_client_bind.h"

// A filter's value that lets every app through.
constexpr int kNoFilter = 65535;

constexpr char kOrderByUseCount[] = " order by use_count desc ";
constexpr char kOrderByIndex[] = " order by app_index asc ";
constexpr char kOrderByInstallDate[] = " order by install_date desc ";
constexpr char kOrderByTitle[] = " order by upper(title) asc ";
constexpr char kOrderByTitleDescending[] = " order by upper(title) desc ";
constexpr char kOrderByLaunchDate[] = " order by launch_date desc ";

// The marks for the app types that are set in appType, and their values. 0, or -1 for a type
// above 127. Only the types 2 and 4 are known; marks is empty when neither is set.
int GetStrAppType(int appType, std::string& marks, std::vector<_TAVDB_BIND_T>& binds);

// The order of the view modes that every kind of list knows; the catalogue's for any other.
const char* OrderOfView(int view_mode);

// Adds " and app_featured in (…) " for the bits 1, 2, 4 and 8 of featured; nothing for
// kNoFilter. False, after a log, when none of the bits is set.
bool AddFeatured(Query& query, int featured);

#endif  // TAV_DB_API_TAV_DB_CLIENT_FILTER_H_
