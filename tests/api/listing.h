// SPDX-License-Identifier: Apache-2.0
//
// The list calls as one value each: what a call returned, what it wrote, and the ids it gave.
#ifndef TESTS_API_LISTING_H_
#define TESTS_API_LISTING_H_

#include <cstdlib>
#include <cstring>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "tav_db_api.h"

namespace test {

using Ids = std::vector<std::string>;

// What became of the caller's pointer.
enum class Pointer { kUntouched, kNull, kBlock };

constexpr int kUntouchedCount = -77;

struct Listing {
  int result = 0;
  int count = kUntouchedCount;
  Pointer pointer = Pointer::kUntouched;
  Ids ids = {};

  bool operator==(const Listing& other) const {
    return result == other.result && count == other.count && pointer == other.pointer &&
           ids == other.ids;
  }
};

inline std::ostream& operator<<(std::ostream& out, const Listing& listing) {
  constexpr const char* kPointers[] = {"untouched", "null", "a block"};
  out << "result " << listing.result << ", count " << listing.count << ", pointer "
      << kPointers[static_cast<int>(listing.pointer)] << ", ids";
  for (const std::string& id : listing.ids) out << " [" << id << "]";
  return out;
}

// A block with these ids; an empty one stands for a zeroed record.
inline Listing Listed(const Ids& ids) {
  return {0, static_cast<int>(ids.size()), Pointer::kBlock, ids};
}
inline Listing NothingMatches() {
  return {0, 0};
}
// A call that stopped before it wrote anything.
inline Listing Refused() {
  return {-1};
}
// A call that stopped at its count or its page.
inline Listing NotCounted(int result) {
  return {result, 0};
}
// A call that stopped at its block or its rows.
inline Listing NotRead(int result) {
  return {result, 0, Pointer::kNull};
}
// A count, which has no list.
inline Listing Counted(int count) {
  return {0, count};
}

// The arguments that are null.
struct Nulls {
  bool list = false;
  bool count = false;
};

template <typename Record, typename Call>
Listing Ask(const Call& call, Nulls nulls = {}) {
  static Record untouched;
  Record* list = &untouched;
  Listing listing;
  listing.result = call(nulls.list ? nullptr : &list, nulls.count ? nullptr : &listing.count);
  if (list == &untouched) return listing;
  listing.pointer = list == nullptr ? Pointer::kNull : Pointer::kBlock;
  const std::unique_ptr<Record, decltype(&std::free)> owner(list, &std::free);
  for (int i = 0; list != nullptr && i < listing.count; ++i) {
    listing.ids.emplace_back(list[i].app_id, strnlen(list[i].app_id, sizeof(list[i].app_id)));
  }
  return listing;
}

constexpr int kCatalogue = 1;
constexpr int kLastDownloaded = 2;
constexpr int kUnpaged = -1;
constexpr int kAll = 0;

inline tav_app_filter_s Filter(int featured, int app_type) {
  return {featured, 0, app_type};
}
inline tav_app_filter_s EveryApp() {
  return Filter(65535, 65535);
}

inline Listing FullList(tav_app_filter_s filter, int mode = kCatalogue, int index = kUnpaged,
                        int count = kAll, Nulls nulls = {}) {
  return Ask<tav_app_info_s>(
      [&](tav_app_info_s** list, int* real_count) {
        return tav_get_app_list(filter, static_cast<tav_app_viewmode_e>(mode), index, count, list,
                                real_count);
      },
      nulls);
}

// A null filter is one that the caller has not given.
inline Listing FullListByPointer(tav_app_filter_s* filter, int mode = kCatalogue,
                                 int index = kUnpaged, int count = kAll, Nulls nulls = {}) {
  return Ask<tav_app_info_s>(
      [&](tav_app_info_s** list, int* real_count) {
        return tav_get_app_list_dn(filter, static_cast<tav_app_viewmode_e>(mode), index, count,
                                   list, real_count);
      },
      nulls);
}

inline Listing ShortList(tav_app_filter_s filter, int mode = kCatalogue, int index = kUnpaged,
                         int count = kAll, Nulls nulls = {}) {
  return Ask<tav_app_ms_s>(
      [&](tav_app_ms_s** list, int* real_count) {
        return tav_get_app_list_ms(filter, static_cast<tav_app_viewmode_e>(mode), index, count,
                                   list, real_count);
      },
      nulls);
}

inline Listing CountOf(tav_app_filter_s filter, Nulls nulls = {}) {
  return Ask<tav_app_info_s>(
      [&](tav_app_info_s**, int* count) { return tav_get_app_count(filter, count); }, nulls);
}

inline Listing CountByPointer(tav_app_filter_s* filter, Nulls nulls = {}) {
  return Ask<tav_app_info_s>(
      [&](tav_app_info_s**, int* count) { return tav_get_app_count_dn(filter, count); }, nulls);
}

inline Listing AllApps(Nulls nulls = {}) {
  return Ask<tav_app_info_s>(
      [](tav_app_info_s** list, int* count) { return tav_get_all_app_list(list, count); }, nulls);
}

inline Listing RecentApps(int count = kAll, Nulls nulls = {}) {
  return Ask<tav_app_info_s>(
      [&](tav_app_info_s** list, int* real_count) {
        return tav_get_recently_used_app_list(count, list, real_count);
      },
      nulls);
}

inline Listing KeyApps(const std::string& key, int count = kAll, Nulls nulls = {}) {
  return Ask<tav_app_info_s>(
      [&](tav_app_info_s** list, int* real_count) {
        return tav_get_key_list(key, count, list, real_count);
      },
      nulls);
}

}  // namespace test

#endif  // TESTS_API_LISTING_H_
