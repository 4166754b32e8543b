// SPDX-License-Identifier: Apache-2.0
//
// Lookups and lists.
#include <tav_db_api_inner.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>

#include "workloads.h"

namespace bench {
namespace {

constexpr int kDeviceApps = 200;  // what a TV has
constexpr int kFewApps = 10;      // where a lookup has next to nothing to search
constexpr tav_app_filter_s kEveryApp = {65535, 65535, 65535};
constexpr auto kOrder = TAV_APP_VIEWMODE_CATALOGUE;

template <typename Record>
using Block = std::unique_ptr<Record, void (*)(void*)>;

template <typename Record>
Block<Record> Own(Record* block) {
  return {block, free};
}

bool IsSame(const tav_app_info_s& one, const tav_app_info_s& other) {
  return std::memcmp(&one, &other, sizeof one) == 0;
}

void RequireSame(const tav_app_info_s* list, int count, const tav_app_info_s* other,
                 std::size_t other_count) {
  Require(static_cast<std::size_t>(count) == other_count, "lists of other lengths");
  for (int i = 0; i < count; ++i) Require(IsSame(list[i], other[i]), "a list's other record");
}

std::vector<Rival> LookupRivals(const Rivals& rivals) {
  static const std::string& id = *new std::string(IdOf(kFewApps / 2));
  tav_app_info_s library;
  tav_app_info_s bare;
  tav_app_info_s bus;
  Require(tav_get_app_info(id.c_str(), &library) == 0, "the library's lookup");
  Require(rivals.bare.Lookup(id.c_str(), &bare) == 0 && IsSame(library, bare), "bare lookup");
  Require(IsSame(library, rivals.application.Lookup(id).value()), "SQLiteCpp's lookup");
  Require(rivals.bus.Lookup(id, &bus) == 0 && IsSame(library, bus), "the lookup over the bus");
  return {
      Repeat(kLibrary,
             [] {
               tav_app_info_s info;
               tav_get_app_info(id.c_str(), &info);
             }),
      Repeat(kBare,
             [rivals] {
               tav_app_info_s info;
               rivals.bare.Lookup(id.c_str(), &info);
             }),
      Repeat(kSqliteCpp, [rivals] { rivals.application.Lookup(id); }),
      Repeat(
          kBus,
          [rivals] {
            tav_app_info_s info;
            rivals.bus.Lookup(id, &info);
          },
          Clock::kWall),
  };
}

std::vector<Rival> RunTitleRivals(const Rivals& rivals) {
  static const std::string& title = *new std::string(RunTitleOf(kDeviceApps / 2));
  tav_app_info_s library;
  tav_app_info_s bare;
  Require(tav_get_app_info_by_runtitle(title.c_str(), &library) == 0, "the library's run title");
  Require(rivals.bare.LookupByRunTitle(title.c_str(), &bare) == 0 && IsSame(library, bare),
          "bare run title");
  Require(IsSame(library, rivals.application.LookupByRunTitle(title).value()),
          "SQLiteCpp's run title");
  return {
      Repeat(kLibrary,
             [] {
               tav_app_info_s info;
               tav_get_app_info_by_runtitle(title.c_str(), &info);
             }),
      Repeat(kBare,
             [rivals] {
               tav_app_info_s info;
               rivals.bare.LookupByRunTitle(title.c_str(), &info);
             }),
      Repeat(kSqliteCpp, [rivals] { rivals.application.LookupByRunTitle(title); }),
  };
}

int LibraryList(int index, int count, tav_app_info_s** list, int* real_count) {
  return tav_get_app_list(kEveryApp, kOrder, index, count, list, real_count);
}

// The bus gives whole lists alone.
std::vector<Rival> ListRivals(const Rivals& rivals, int index, int count) {
  const bool is_whole = count == 0;
  tav_app_info_s* library = nullptr;
  tav_app_info_s* bare = nullptr;
  int library_count = 0;
  int bare_count = 0;
  Require(LibraryList(index, count, &library, &library_count) == 0, "the library's list");
  Require(rivals.bare.List(index, count, &bare, &bare_count) == 0, "the bare list");
  const auto library_owner = Own(library);
  const auto bare_owner = Own(bare);
  RequireSame(library, library_count, bare, static_cast<std::size_t>(bare_count));
  const auto application = rivals.application.List(index, count);
  RequireSame(library, library_count, application.data(), application.size());

  std::vector<Rival> list = {
      Repeat(kLibrary,
             [index, count] {
               tav_app_info_s* apps = nullptr;
               int read = 0;
               LibraryList(index, count, &apps, &read);
               Own(apps);
             }),
      Repeat(kBare,
             [rivals, index, count] {
               tav_app_info_s* apps = nullptr;
               int read = 0;
               rivals.bare.List(index, count, &apps, &read);
               Own(apps);
             }),
      Repeat(kSqliteCpp, [rivals, index, count] { rivals.application.List(index, count); }),
  };
  if (is_whole) {
    constexpr int kMostApps = 4000;  // in all the rounds of the bus
    const auto bus = rivals.bus.List();
    RequireSame(library, library_count, bus.data(), bus.size());
    list.push_back(Repeat(
        kBus, [rivals] { rivals.bus.List(); }, Clock::kWall));
    list.back().most_rounds = std::max(2, kMostApps / library_count);
  }
  return list;
}

// Counting is reading the list and taking its length: the library's contract, so that every rule
// of the lists holds for the count.
std::vector<Rival> CountRivals(const Rivals& rivals) {
  int count = 0;
  int bare = 0;
  Require(tav_get_app_count(kEveryApp, &count) == 0, "the library's count");
  Require(rivals.bare.Count(&bare) == 0 && bare == count, "the bare count");
  Require(rivals.application.CountAlone() == count, "SQLiteCpp's count");
  return {
      Repeat(kLibrary,
             [] {
               int number = 0;
               tav_get_app_count(kEveryApp, &number);
             }),
      Repeat(kBare,
             [rivals] {
               int number = 0;
               rivals.bare.Count(&number);
             }),
      Repeat(kSqliteCpp, [rivals] { rivals.application.Count(); }),
  };
}

std::vector<Rival> OneCountRivals(const Rivals& rivals) {
  auto list = CountRivals(rivals);
  list.erase(list.begin() + 1, list.end());
  list.push_back(Repeat(kSqliteCpp, [rivals] { rivals.application.CountAlone(); }));
  return list;
}

std::vector<Rival> MultiScreenRivals(const Rivals& rivals) {
  tav_app_ms_s* library = nullptr;
  tav_app_ms_s* bare = nullptr;
  int count = 0;
  int bare_count = 0;
  Require(tav_get_app_list_ms(kEveryApp, kOrder, 0, 0, &library, &count) == 0, "multi-screen list");
  Require(rivals.bare.MultiScreenList(&bare, &bare_count) == 0, "bare multi-screen list");
  const auto library_owner = Own(library);
  const auto bare_owner = Own(bare);
  const auto size = static_cast<std::size_t>(count);
  Require(count == bare_count && std::memcmp(library, bare, size * sizeof *library) == 0,
          "bare multi-screen records");
  Require(std::memcmp(library, rivals.application.MultiScreenList().data(),
                      size * sizeof *library) == 0,
          "SQLiteCpp's multi-screen records");
  return {
      Repeat(kLibrary,
             [] {
               tav_app_ms_s* apps = nullptr;
               int read = 0;
               tav_get_app_list_ms(kEveryApp, kOrder, 0, 0, &apps, &read);
               Own(apps);
             }),
      Repeat(kBare,
             [rivals] {
               tav_app_ms_s* apps = nullptr;
               int read = 0;
               rivals.bare.MultiScreenList(&apps, &read);
               Own(apps);
             }),
      Repeat(kSqliteCpp, [rivals] { rivals.application.MultiScreenList(); }),
  };
}

}  // namespace

void Require(bool condition, const char* what) {
  if (!condition) throw std::runtime_error(std::string("not as it should be: ") + what);
}

std::vector<Workload> LookupWorkloads(const Rivals& rivals) {
  return {
      {"lookup by id", kDeviceApps, [rivals] { return LookupRivals(rivals); }, 200},
      {"lookup by id among 10", kFewApps, [rivals] { return LookupRivals(rivals); }, 200},
      {"lookup by run title", kDeviceApps, [rivals] { return RunTitleRivals(rivals); }, 200},
  };
}

std::vector<Workload> ListWorkloads(const Rivals& rivals) {
  std::vector<Workload> workloads = {
      {"page of 20 of 200", kDeviceApps, [rivals] { return ListRivals(rivals, 100, 20); }, 120},
      {"count of 200", kDeviceApps, [rivals] { return CountRivals(rivals); }, 120},
      {"count of 200, over one statement", kDeviceApps, [rivals] { return OneCountRivals(rivals); },
       40},
      {"multi-screen list of 200", kDeviceApps, [rivals] { return MultiScreenRivals(rivals); },
       120},
  };
  for (const auto& [apps, rounds] : {std::pair{50, 200}, {200, 120}, {2000, 40}, {10000, 12}}) {
    workloads.push_back({"list of " + std::to_string(apps), apps,
                         [rivals] { return ListRivals(rivals, 0, 0); }, rounds});
  }
  return workloads;
}

}  // namespace bench
