// SPDX-License-Identifier: Apache-2.0
//
// The public app record: its mapping from a row of the apps table, and the two drivers that
// fill one record or an array of them.
#ifndef TAV_DB_API_TAV_DB_CLIENT_APP_INFO_H_
#define TAV_DB_API_TAV_DB_CLIENT_APP_INFO_H_

#include <string>
#include <vector>

#include "tav_db_api.h"
#include "tav_db_api/tav_db_client_age_rating.h"
#include "tav_db_api/tav_db_client_connection.h"

// "select <the 71 columns> from <the apps table>": what every query for app records begins with.
const std::string& SelectApps();

// Fills the record from the current row; rating is the one of the running query. Does nothing
// for a null record.
void m_GetWidgetInfo(tav_app_info_s* info, AgeRating& rating) REQUIRES(g_Mute);

// Fills the record from the first row of "select … from widgetinfo" + condition. 0; -1 without
// a row; -2 when the database stayed busy; or what Prepare returned, the record then untouched.
int GetAppsTableInfo(tav_app_info_s* info, const std::string& condition,
                     const std::vector<_TAVDB_BIND_T>& binds) REQUIRES(g_Mute);

// Fills up to count records, the rest zeroed. 0 also when there are fewer rows; -2 when the
// database stayed busy, the rows read until then kept; or what Prepare returned, the records
// then untouched. The integer between condition and binds is accepted and ignored.
int GetAppsTableList(tav_app_info_s* list, int count, const std::string& condition, int ignored,
                     const std::vector<_TAVDB_BIND_T>& binds, bool lastDownload) REQUIRES(g_Mute);

// Moves the records at the end of the list that were added after the built-in range to its
// front, the last one first; the others follow in their order.
void sort_applist_lastdownload(tav_app_info_s* list, int count);

#endif  // TAV_DB_API_TAV_DB_CLIENT_APP_INFO_H_
