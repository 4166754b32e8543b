// SPDX-License-Identifier: Apache-2.0
//
// The statements of the lists as SQLite receives them: text, values and their order.
#include <gtest/gtest.h>

#include <climits>

#include "api/listing.h"
#include "support/device.h"
#include "support/sqlite_recorder.h"

namespace {

using test::App;
using test::CallsToSqlite;
using test::EveryApp;
using test::Filter;
using test::FullList;
using test::kSelectApps;
using test::ShortList;
using Calls = test::SqliteCalls;

constexpr char kShortSelect[] = "select id,is_multi_screen2 from widgetinfo";
constexpr char kCount[] = "select count(id) from widgetinfo";
constexpr char kUnfiltered[] =
    " where is_app_available = ? and install_state = ?  and is_hidden = ? and is_need_reset = ? ";

class ListStatements : public ::testing::Test {
 protected:
  ListStatements() {
    device.InstallAll({App("2 1").Type(2).Featured(1).UseCount(1).Set("is_ticker", 1),
                       App("4 8").Type(4).Featured(8).UseCount(2).Set("is_ticker", 1).Index(1)});
    test::AllApps();  // opens the database
  }

  // What reaches SQLite for a count and a list with the same condition and leading values.
  static Calls Pair(const std::string& select, const std::string& condition,
                    const std::vector<int>& values, const std::string& end,
                    const std::vector<int>& more_values = {}) {
    Calls calls = {kCount + condition};
    const auto bind = [&calls](const std::vector<int>& list, std::size_t already) {
      for (std::size_t i = 0; i < list.size(); ++i) {
        calls.push_back(std::to_string(already + i + 1) + " " + std::to_string(list[i]));
      }
    };
    bind(values, 0);
    calls.emplace_back("finalize");
    calls.push_back(select + condition + end);
    bind(values, 0);
    bind(more_values, values.size());
    calls.emplace_back("finalize");
    return calls;
  }

  static Calls SentForFullList(tav_app_filter_s filter, int mode, int index, int count) {
    return CallsToSqlite([&] { FullList(filter, mode, index, count); });
  }
  static Calls SentForShortList(tav_app_filter_s filter, int mode, int index, int count) {
    return CallsToSqlite([&] { ShortList(filter, mode, index, count); });
  }

  test::Device device;
};

TEST_F(ListStatements, OfAListWithoutAnyFilterOrPage) {
  const std::vector<int> values = {1, 3, 0, 0};
  EXPECT_EQ(SentForFullList(EveryApp(), 1, -1, 0),
            Pair(kSelectApps, kUnfiltered, values, " order by app_index asc "));
  EXPECT_EQ(SentForShortList(EveryApp(), 1, -1, 0),
            Pair(kShortSelect, kUnfiltered, values, " order by app_index asc "));
}

TEST_F(ListStatements, EndWithThePageWhenTheIndexIsNotNegative) {
  const std::vector<int> values = {1, 3, 0, 0};
  const char end[] = " order by app_index asc limit ?,? ";
  EXPECT_EQ(SentForFullList(EveryApp(), 1, 0, 0),
            Pair(kSelectApps, kUnfiltered, values, end, {0, 2}));
  EXPECT_EQ(SentForFullList(EveryApp(), 1, 1, 5),
            Pair(kSelectApps, kUnfiltered, values, end, {1, 1}));
  EXPECT_EQ(SentForShortList(EveryApp(), 1, 0, 1),
            Pair(kShortSelect, kUnfiltered, values, end, {0, 1}));
}

TEST_F(ListStatements, HaveNoPageForANegativeIndexWhateverTheCount) {
  EXPECT_EQ(SentForFullList(EveryApp(), 1, INT_MIN, 1),
            Pair(kSelectApps, kUnfiltered, {1, 3, 0, 0}, " order by app_index asc "));
}

TEST_F(ListStatements, OrderByTheTextOfTheViewMode) {
  const std::vector<int> values = {1, 3, 0, 0};
  struct Clauses {
    int mode;
    const char* full;
    const char* multi_screen;
  };
  constexpr char kIndex[] = " order by app_index asc ";
  const Clauses orders[] = {
      {0, " order by use_count desc ", " order by use_count desc "},
      {1, kIndex, kIndex},
      {2, kIndex, " order by install_date desc "},
      {3, " order by upper(title) asc ", " order by upper(title) asc "},
      {4, " order by upper(title) desc ", " order by upper(title) desc "},
      {5, " order by launch_date desc ", " order by launch_date desc "},
      {-1, kIndex, kIndex},
      {6, kIndex, kIndex},
      {100, kIndex, kIndex},
  };
  for (const Clauses& order : orders) {
    EXPECT_EQ(SentForFullList(EveryApp(), order.mode, -1, 0),
              Pair(kSelectApps, kUnfiltered, values, order.full))
        << order.mode;
    EXPECT_EQ(SentForShortList(EveryApp(), order.mode, -1, 0),
              Pair(kShortSelect, kUnfiltered, values, order.multi_screen))
        << order.mode;
  }
}

TEST_F(ListStatements, NameTheTypesOfTheFilter) {
  struct Type {
    int filter;
    const char* marks;
    std::vector<int> values;
  };
  const Type types[] = {{2, "? ", {1, 3, 2, 0, 0}},
                        {4, "? ", {1, 3, 4, 0, 0}},
                        {6, "? ,? ", {1, 3, 2, 4, 0, 0}},
                        {127, "? ,? ", {1, 3, 2, 4, 0, 0}}};
  for (const Type& type : types) {
    EXPECT_EQ(SentForFullList(Filter(65535, type.filter), 1, -1, 0),
              Pair(kSelectApps,
                   std::string(" where is_app_available = ? and install_state = ?  and app_type"
                               " in (") +
                       type.marks + ")  and is_hidden = ? and is_need_reset = ? ",
                   type.values, " order by app_index asc "))
        << type.filter;
  }
}

TEST_F(ListStatements, NameTheFeaturedGroupsOfTheFilterInRisingOrder) {
  struct Featured {
    int filter;
    const char* marks;
    std::vector<int> values;
  };
  const Featured groups[] = {{1, "? ", {1, 3, 1, 0, 0}},
                             {8, "? ", {1, 3, 8, 0, 0}},
                             {3, "? ,? ,? ", {1, 3, 1, 2, 8, 0, 0}},
                             {9, "? ,? ", {1, 3, 1, 8, 0, 0}},
                             {-1, "? ,? ,? ,? ", {1, 3, 1, 2, 4, 8, 0, 0}}};
  for (const Featured& group : groups) {
    EXPECT_EQ(SentForFullList(Filter(group.filter, 65535), 1, -1, 0),
              Pair(kSelectApps,
                   std::string(" where is_app_available = ? and install_state = ?  and"
                               " app_featured in (") +
                       group.marks + ")  and is_hidden = ? and is_need_reset = ? ",
                   group.values, " order by app_index asc "))
        << group.filter;
  }
}

TEST_F(ListStatements, HoldAllTheirPiecesAndValuesInOrder) {
  const char condition[] =
      " where is_app_available = ? and install_state = ?  and app_type in (? ,? )  and"
      " app_featured in (? ,? ,? ,? )  and is_hidden = ? and is_need_reset = ? ";
  const std::vector<int> values = {1, 3, 2, 4, 1, 2, 4, 8, 0, 0};
  EXPECT_EQ(SentForFullList(Filter(15, 6), 5, 0, 1),
            Pair(kSelectApps, condition, values, " order by launch_date desc limit ?,? ", {0, 1}));
  EXPECT_EQ(
      SentForShortList(Filter(15, 6), 2, 1, 0),
      Pair(kShortSelect, condition, values, " order by install_date desc limit ?,? ", {1, 1}));
}

TEST_F(ListStatements, OfACountAreThoseOfTheMostUsedListFromItsFirstRow) {
  const Calls expected =
      Pair(kSelectApps, kUnfiltered, {1, 3, 0, 0}, " order by use_count desc limit ?,? ", {0, 2});
  EXPECT_EQ(CallsToSqlite([] { test::CountOf(EveryApp()); }), expected);
  tav_app_filter_s filter = EveryApp();
  EXPECT_EQ(CallsToSqlite([&] { test::CountByPointer(&filter); }), expected);
}

TEST_F(ListStatements, OfAllAppsHaveNoConditionOnVisibility) {
  EXPECT_EQ(
      CallsToSqlite([] { test::AllApps(); }),
      Pair(kSelectApps, " where is_app_available = ? and install_state = ? and is_need_reset = ?",
           {1, 3, 0}, " order by app_index asc "));
}

TEST_F(ListStatements, OfTheRecentAppsHaveNoLimit) {
  const char condition[] =
      " where is_app_available = ? and install_state = ? and is_hidden = ? and is_need_reset = ?"
      " and use_count > ? ";
  const Calls expected =
      Pair(kSelectApps, condition, {1, 3, 0, 0, 0}, " order by launch_date desc ");
  EXPECT_EQ(CallsToSqlite([] { test::RecentApps(0); }), expected);
  EXPECT_EQ(CallsToSqlite([] { test::RecentApps(1); }), expected);
}

TEST_F(ListStatements, OfAKeyNameItsColumnAndHaveNeitherOrderNorLimit) {
  const char condition[] =
      "  where install_state = ? and is_app_available = ? and is_ticker = ? and is_need_reset = ?"
      "  ";
  const Calls expected = Pair(kSelectApps, condition, {3, 1, 1, 0}, "");
  EXPECT_EQ(CallsToSqlite([] { test::KeyApps("is_ticker", 0); }), expected);
  EXPECT_EQ(CallsToSqlite([] { test::KeyApps("is_ticker", 1); }), expected);
}

TEST_F(ListStatements, AreNotSentForARefusedFilterNorForAnOffsetBeyondTheEnd) {
  for (const tav_app_filter_s& filter :
       {Filter(0, 2), Filter(16, 65535), Filter(1, 128), Filter(1, 256), Filter(1, 1)}) {
    EXPECT_EQ(SentForFullList(filter, 1, 0, 0), Calls());
    EXPECT_EQ(SentForShortList(filter, 1, 0, 0), Calls());
  }
  Calls count = Pair("", kUnfiltered, {1, 3, 0, 0}, "");
  count.resize(count.size() / 2);
  EXPECT_EQ(SentForFullList(EveryApp(), 1, 2, 0), count);
}

}  // namespace
