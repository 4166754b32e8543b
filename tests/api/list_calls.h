// SPDX-License-Identifier: Apache-2.0
//
// Every exported list and count with its own words, for the rules that all of them share.
#ifndef TESTS_API_LIST_CALLS_H_
#define TESTS_API_LIST_CALLS_H_

#include <gtest/gtest.h>

#include "api/listing.h"
#include "support/app.h"
#include "support/sqlite_recorder.h"

namespace test {

struct ListCall {
  const char* name;
  Listing (*ask)(Nulls nulls);  // all apps of Shown, in the order of their numbers
  const char* count_failed;
  const char* is_empty;
  const char* no_memory;
  const char* not_read;
  bool has_list = true;             // a count has none
  bool clears_count = true;         // *realCount is 0 when the count cannot be prepared
  bool is_short = false;            // multi-screen records
  bool is_last_downloaded = false;  // the rows are put in order after they were read

  std::size_t RecordSize() const {
    return is_short ? sizeof(tav_app_ms_s) : sizeof(tav_app_info_s);
  }
  // How the statement begins that reads the rows, and a column that it alone needs.
  std::string Select() const { return is_short ? "select id,is_multi_screen2" : kSelectApps; }
  std::string SelectedColumn() const { return is_short ? "is_multi_screen2" : "tavorder"; }

  Listing Gives(const Ids& ids) const {
    return has_list ? Listed(ids) : Counted(static_cast<int>(ids.size()));
  }
  Listing CannotPrepareItsCount(int result) const {
    return clears_count ? NotCounted(result) : Listing{result};
  }
  Listing CannotRead(int result) const { return has_list ? NotRead(result) : NotCounted(result); }
};

inline void PrintTo(const ListCall& call, std::ostream* out) {
  *out << call.name;
}

inline tav_app_filter_s* EveryAppByPointer() {
  static tav_app_filter_s filter;
  filter = EveryApp();
  return &filter;
}

inline const ListCall kListCalls[] = {
    {"tav_get_app_list",
     [](Nulls nulls) { return FullList(EveryApp(), kCatalogue, kUnpaged, kAll, nulls); },
     "get app count fail", "real_count is 0 ", "failed to malloc app_list",
     "failed to get app list"},
    {"tav_get_app_list_dn",
     [](Nulls nulls) {
       return FullListByPointer(EveryAppByPointer(), kCatalogue, kUnpaged, kAll, nulls);
     },
     "get app count fail", "real_count is 0 ", "failed to malloc app_list",
     "failed to get app list"},
    {"tav_get_app_list_ms",
     [](Nulls nulls) { return ShortList(EveryApp(), kCatalogue, kUnpaged, kAll, nulls); },
     "get app count fail", "real_count is 0 ", "failed to malloc app_list_ms",
     "failed to get app list ms", true, true, true},
    {"tav_get_app_count", [](Nulls nulls) { return CountOf(EveryApp(), nulls); },
     "get app count fail", "real_count is 0 ", "failed to malloc app_list",
     "failed to get app list", false},
    {"tav_get_app_count_dn", [](Nulls nulls) { return CountByPointer(EveryAppByPointer(), nulls); },
     "get app count fail", "real_count is 0 ", "failed to malloc app_list",
     "failed to get app list", false},
    {"tav_get_all_app_list", [](Nulls nulls) { return AllApps(nulls); }, "get app count fail",
     "count is 0 ", "failed to malloc app_list", "failed to get app list", true, true, false, true},
    {"tav_get_recently_used_app_list", [](Nulls nulls) { return RecentApps(kAll, nulls); },
     "get app count fail ", "real_count is 0 ", "Failed to malloc app_list", "get app count fail "},
    {"tav_get_key_list", [](Nulls nulls) { return KeyApps("is_ticker", kAll, nulls); },
     "failed to get AppsTable Count ", "real_count is 0 ", "Failed to malloc app_list",
     "get app list fail ", true, false},
};

// An app that every list shows at the place of its number, from 0 to 99.
inline App Shown(const std::string& id, int number) {
  const int falling = 99 - number;
  return App(id)
      .Index(number)
      .Type(2)
      .Featured(1)
      .Set("is_ticker", 1)
      .UseCount(1 + falling)
      .LaunchDate("2024-01-01 00:00:" + std::string(falling < 10 ? "0" : "") +
                  std::to_string(falling));
}

inline std::string NameOfListCall(const ::testing::TestParamInfo<ListCall>& info) {
  return info.param.name;
}

}  // namespace test

#endif  // TESTS_API_LIST_CALLS_H_
