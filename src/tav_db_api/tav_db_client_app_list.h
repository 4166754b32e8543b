// SPDX-License-Identifier: Apache-2.0
//
// The list engine: a filter, a view mode and a page become one query, and its rows one block
// for the caller.
#ifndef TAV_DB_API_TAV_DB_CLIENT_APP_LIST_H_
#define TAV_DB_API_TAV_DB_CLIENT_APP_LIST_H_

#include <string>
#include <vector>

#include "tav_common/tav_handles.h"
#include "tav_db_api.h"
#include "tav_db_api/tav_db_client_connection.h"

// Filtered, ordered and paged: full records to *appList, or with isMs short ones to *msList.
// The pointer that is not asked for may be null. Results, and what becomes of the out values,
// are those of tav_get_app_list.
int GetAppList(tav_app_filter_s filter, tav_app_viewmode_e viewMode, int index, int count,
               bool isMs, int* realCount, tav_app_info_s** appList, tav_app_ms_s** msList)
    REQUIRES(g_Mute);

// Fills up to count short records from the rows that match where. 0; -1 without a row; -2 when
// the database stayed busy; or what Prepare returned, the records then untouched.
int GetAppsMSList(tav_app_ms_s* list, int count, const std::string& where,
                  const std::vector<_TAVDB_BIND_T>& binds) REQUIRES(g_Mute);

// What a list call says when it fails. Without a not_read the reader's own lines say it all.
struct ListComplaints {
  const char* no_memory;
  const char* not_read;
};

// Gives the caller a new block of count records that read(records) has filled, and its count.
// On any failure, of the block as well, the list is null and *realCount stays as it was.
template <typename Record, typename Read>
int DeliverList(int count, Record** list, int* realCount, const ListComplaints& complaints,
                const Read& read) REQUIRES(g_Mute) {
  *list = nullptr;
  std::size_t size = 0;
  const bool is_too_large =
      __builtin_mul_overflow(static_cast<std::size_t>(count), sizeof(Record), &size);
  MallocPtr<Record> records(is_too_large ? nullptr : static_cast<Record*>(std::malloc(size)));
  if (records == nullptr) {
    TAV_LOGE("%s", complaints.no_memory);
    return kFailed;
  }
  const int result = read(records.get());
  if (result != 0) {
    if (complaints.not_read != nullptr) TAV_LOGE("%s", complaints.not_read);
    return result;
  }
  *list = records.release();
  *realCount = count;
  return 0;
}

#endif  // TAV_DB_API_TAV_DB_CLIENT_APP_LIST_H_
