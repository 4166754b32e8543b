// SPDX-License-Identifier: Apache-2.0
//
// The calls that read apps: lookups, lists, counts and usage.
#include "faults/calls.h"
#include "faults/seeded_device.h"

namespace test {
namespace {

const Endings kNoRecord = {{-1, kUntouched}, {-1, kZeroed}};
const Endings kBusyRecord = {{-2, kAnything, true}};

const Endings kNoList = {{-1, "untouched, untouched"}, {-1, "untouched, 0"}, {-1, "null, 0"}};
const Endings kBusyList = {{-2, "untouched, untouched"}, {-2, "untouched, 0"}, {-2, "null, 0"}};
// The one call that leaves what it had counted.
const Endings kBusyListWithItsCount = {
    {-2, "untouched, untouched"}, {-2, "untouched, 0"}, {-2, "untouched, 3"}, {-2, "null, 0"}};
const Endings kPartOfList = {{0, "a block, 3"}};

const Endings kNoCount = {{-1, kUntouched}, {-1, "0"}};
const Endings kBusyCount = {{-2, kUntouched}, {-2, "0"}};

template <typename Find>
Outcome Look(const Find& find) {
  return WithRecord(find);
}

tav_app_filter_s Filter() {
  return {1, 0, 2};
}

constexpr auto kByIndex = TAV_APP_VIEWMODE_CATALOGUE;
constexpr auto kByDownload = TAV_APP_VIEWMODE_LAST_DOWNLOADED;

const std::string& KeyColumn() {
  static const std::string column = "reserved_tinyint_11 + is_ticker";
  return column;
}

}  // namespace

Calls LookupCalls() {
  return {
      {"tav_get_app_info", "",
       [] { return Look([](tav_app_info_s* info) { return tav_get_app_info(kAppA, info); }); },
       kNoRecord, kBusyRecord},
      {"tav_get_app_info", "OfTheDemonstrationApp",
       [] { return Look([](tav_app_info_s* info) { return tav_get_app_info("vitrine", info); }); },
       kNoRecord, kBusyRecord},
      {"tav_get_app_info_by_tizenid", "",
       [] {
         return Look(
             [](tav_app_info_s* info) { return tav_get_app_info_by_tizenid(kTizenIdA, info); });
       },
       kNoRecord, kBusyRecord},
      {"tav_get_app_info_by_runtitle", "",
       [] {
         return Look(
             [](tav_app_info_s* info) { return tav_get_app_info_by_runtitle(kRunTitleA, info); });
       },
       kNoRecord, kBusyRecord},
      {"m_tav_get_app_info", "",
       [] { return Look([](tav_app_info_s* info) { return m_tav_get_app_info(kAppA, info); }); },
       kNoRecord, kBusyRecord},
      {"GetAppInfoByRuntitle", "",
       [] {
         return Look([](tav_app_info_s* info) { return GetAppInfoByRuntitle(info, kRunTitleA); });
       },
       kNoRecord, kBusyRecord},
      {"get_size_of_tav_app_info_s", "",
       [] { return WithStatus([] { return static_cast<int>(get_size_of_tav_app_info_s()); }); }},
  };
}

Calls ListCalls() {
  return {
      {"tav_get_app_list", "",
       [] {
         return WithList<tav_app_info_s>([](tav_app_info_s** list, int* count) {
           return tav_get_app_list(Filter(), kByDownload, 0, 10, list, count);
         });
       },
       kNoList, kBusyList, kPartOfList},
      {"tav_get_app_list_dn", "",
       [] {
         return WithList<tav_app_info_s>([](tav_app_info_s** list, int* count) {
           tav_app_filter_s filter = Filter();
           return tav_get_app_list_dn(&filter, kByIndex, -1, 0, list, count);
         });
       },
       kNoList, kBusyList, kPartOfList},
      {"tav_get_app_list_ms", "",
       [] {
         return WithList<tav_app_ms_s>([](tav_app_ms_s** list, int* count) {
           return tav_get_app_list_ms(Filter(), kByDownload, 0, 10, list, count);
         });
       },
       kNoList, kBusyList, kPartOfList},
      {"tav_get_app_count", "",
       [] { return WithInt([](int* count) { return tav_get_app_count(Filter(), count); }); },
       kNoCount, kBusyCount},
      {"tav_get_app_count_dn", "",
       [] {
         return WithInt([](int* count) {
           tav_app_filter_s filter = Filter();
           return tav_get_app_count_dn(&filter, count);
         });
       },
       kNoCount, kBusyCount},
      {"tav_get_all_app_list", "",
       [] {
         return WithList<tav_app_info_s>(
             [](tav_app_info_s** list, int* count) { return tav_get_all_app_list(list, count); });
       },
       kNoList, kBusyList, kPartOfList},
      {"tav_get_recently_used_app_list", "",
       [] {
         return WithList<tav_app_info_s>([](tav_app_info_s** list, int* count) {
           return tav_get_recently_used_app_list(0, list, count);
         });
       },
       kNoList, kBusyList, kPartOfList},
      {"tav_get_key_list", "",
       [] {
         const std::string& key = KeyColumn();
         return WithList<tav_app_info_s>([&](tav_app_info_s** list, int* count) {
           return tav_get_key_list(key, 0, list, count);
         });
       },
       kNoList, kBusyListWithItsCount, kPartOfList},
      {"tav_check_is_recently_used_app", "",
       [] { return WithStatus([] { return tav_check_is_recently_used_app(kAppA); }); }, kFailure,
       kBusy},
      {"tav_check_is_most_used_app", "",
       [] { return WithStatus([] { return tav_check_is_most_used_app(kAppA); }); }, kFailure,
       kBusy},
      {"tav_init_app_filter", "",
       [] {
         tav_app_filter_s filter = {};
         Outcome outcome = WithStatus([&] { return tav_init_app_filter(&filter); });
         outcome.state = std::to_string(filter.featured) + std::to_string(filter.premium_game) +
                         std::to_string(filter.app_type);
         return outcome;
       }},
      {"get_size_of_tav_app_filter_s", "",
       [] { return WithStatus([] { return static_cast<int>(get_size_of_tav_app_filter_s()); }); }},
  };
}

}  // namespace test
