// SPDX-License-Identifier: Apache-2.0
//
// Which apps a filter lets into the lists, and which filters are refused.
#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <map>

#include "api/listing.h"
#include "support/device.h"

namespace {

using test::App;
using test::Counted;
using test::CountOf;
using test::EveryApp;
using test::Filter;
using test::FullList;
using test::FullListByPointer;
using test::Ids;
using test::Listed;
using test::NotCounted;
using test::Refused;
using test::ShortList;

constexpr int kAny = 65535;

class ListFilter : public ::testing::Test {
 protected:
  // One app for each value of the column, named after it and in the order of the values.
  void InstallOneForEach(const std::string& column, const std::vector<int>& values) {
    std::vector<App> apps;
    for (const int value : values) {
      apps.push_back(App(column + " " + std::to_string(value))
                         .Index(static_cast<int>(apps.size()))
                         .Set(column, value));
    }
    device.InstallAll(apps);
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(ListFilter, RecordsHaveTheLayoutThatCallersWereBuiltAgainst) {
  EXPECT_EQ(get_size_of_tav_app_filter_s(), 12U);
  EXPECT_EQ(sizeof(tav_app_filter_s), 12U);
  EXPECT_EQ(offsetof(tav_app_filter_s, featured), 0U);
  EXPECT_EQ(offsetof(tav_app_filter_s, premium_game), 4U);
  EXPECT_EQ(offsetof(tav_app_filter_s, app_type), 8U);
  EXPECT_EQ(sizeof(tav_app_ms_s), 132U);
  EXPECT_EQ(offsetof(tav_app_ms_s, app_id), 0U);
  EXPECT_EQ(offsetof(tav_app_ms_s, is_multi_screen2), 128U);
  EXPECT_EQ(sizeof(tav_app_viewmode_e), 4U);
  EXPECT_EQ(TAV_APP_VIEWMODE_MOST_USED, 0);
  EXPECT_EQ(TAV_APP_VIEWMODE_CATALOGUE, 1);
  EXPECT_EQ(TAV_APP_VIEWMODE_LAST_DOWNLOADED, 2);
  EXPECT_EQ(TAV_APP_VIEWMODE_TITLE, 3);
  EXPECT_EQ(TAV_APP_VIEWMODE_TITLE_DESCENDING, 4);
  EXPECT_EQ(TAV_APP_VIEWMODE_RECENTLY_LAUNCHED, 5);
}

TEST_F(ListFilter, StartsWithTheFirstFeaturedGroupAndTheFirstType) {
  tav_app_filter_s filter = {9, 9, 9};
  EXPECT_EQ(tav_init_app_filter(&filter), 0);
  EXPECT_EQ(filter.featured, 1);
  EXPECT_EQ(filter.premium_game, 1);
  EXPECT_EQ(filter.app_type, 2);
  EXPECT_FALSE(log.Has("in param is NULL "));
  EXPECT_EQ(tav_init_app_filter(nullptr), -1);
  EXPECT_TRUE(log.HasNotice("in param is NULL "));
}

TEST_F(ListFilter, OfTheDefaultsLetsThroughWhatItNames) {
  device.InstallAll({App("a").Featured(1).Type(2), App("b").Featured(2).Type(2),
                     App("c").Featured(1).Type(4), App("d").Featured(1).Type(2).Index(9)});
  tav_app_filter_s filter;
  ASSERT_EQ(tav_init_app_filter(&filter), 0);
  EXPECT_EQ(FullList(filter), Listed({"a", "d"}));
  EXPECT_EQ(FullListByPointer(&filter), Listed({"a", "d"}));
  EXPECT_EQ(ShortList(filter), Listed({"a", "d"}));
  EXPECT_EQ(CountOf(filter), Counted(2));
}

TEST_F(ListFilter, TakesTheTypesTwoAndFourFromTheBits) {
  InstallOneForEach("app_type", {0, 1, 2, 3, 4, 6, 8, 16, 65535});
  device.Install(App("no type").Null("app_type").Index(99));
  const Ids two = {"app_type 2"};
  const Ids four = {"app_type 4"};
  const Ids both = {"app_type 2", "app_type 4"};
  const std::map<int, Ids> expected = {{2, two},   {4, four},   {6, both},   {3, two},
                                       {5, four},  {7, both},   {10, two},   {12, four},
                                       {18, two},  {126, both}, {127, both}, {-1, both},
                                       {-2, both}, {-3, four},  {-5, two},   {INT_MIN + 6, both}};
  for (const auto& [type, ids] : expected) {
    EXPECT_EQ(FullList(Filter(kAny, type)), Listed(ids)) << type;
    EXPECT_EQ(ShortList(Filter(kAny, type)), Listed(ids)) << type;
    EXPECT_EQ(CountOf(Filter(kAny, type)), Counted(static_cast<int>(ids.size()))) << type;
  }
  EXPECT_EQ(FullList(Filter(kAny, kAny)),
            Listed({"app_type 0", "app_type 1", "app_type 2", "app_type 3", "app_type 4",
                    "app_type 6", "app_type 8", "app_type 16", "app_type 65535", "no type"}));
}

TEST_F(ListFilter, WithoutAKnownTypeFailsAsACountThatCannotBeMade) {
  InstallOneForEach("app_type", {0, 1, 2, 4, 8, 16});
  for (const int type : {0, 1, 8, 9, 16, 32, 64, 120, 121, -7, -8, INT_MIN}) {
    log.Forget();
    EXPECT_EQ(FullList(Filter(kAny, type)), NotCounted(-1)) << type;
    EXPECT_EQ(ShortList(Filter(kAny, type)), NotCounted(-1)) << type;
    EXPECT_EQ(CountOf(Filter(kAny, type)), NotCounted(-1)) << type;
    EXPECT_EQ(log.Count("get app count fail"), 3) << type;
    EXPECT_EQ(log.Count("Type:"), 3) << type;
    EXPECT_FALSE(log.Has("filterAppType error"));
  }
  EXPECT_EQ(FullList(Filter(kAny, 6)), Listed({"app_type 2", "app_type 4"}));
}

TEST_F(ListFilter, RefusesTypesFrom128To255WhereTheyAreTakenApart) {
  for (const int type : {128, 130, 134, 255}) {
    log.Forget();
    EXPECT_EQ(FullList(Filter(kAny, type)), Refused()) << type;
    EXPECT_EQ(ShortList(Filter(kAny, type)), Refused()) << type;
    EXPECT_EQ(CountOf(Filter(kAny, type)), Refused()) << type;
    EXPECT_EQ(log.Count("in param app_type is error"), 3) << type;
    EXPECT_EQ(log.Count("filterAppType error"), 3) << type;
  }
  EXPECT_FALSE(log.Has("Connected to DB"));
}

TEST_F(ListFilter, RefusesTypesAbove255AtOnce) {
  for (const int type : {256, 258, 65534, 65536, INT_MAX}) {
    log.Forget();
    EXPECT_EQ(FullList(Filter(kAny, type)), Refused()) << type;
    EXPECT_EQ(ShortList(Filter(kAny, type)), Refused()) << type;
    EXPECT_EQ(CountOf(Filter(kAny, type)), Refused()) << type;
    EXPECT_EQ(log.Count("in param app_type is error"), 3) << type;
    EXPECT_FALSE(log.Has("filterAppType error")) << type;
  }
  EXPECT_FALSE(log.Has("Connected to DB"));
}

TEST_F(ListFilter, TakesTheFeaturedGroupsFromTheLowestFourBits) {
  const std::vector<int> groups = {0, 1, 2, 3, 4, 7, 8, 11, 15, 65535};
  InstallOneForEach("app_featured", groups);
  device.Install(App("no group").Null("app_featured").Index(99));
  const std::vector<int> filters = {1,  2,  4,  5,  6,  7,   8,  9,  10,      11,          12,
                                    13, 14, 15, 17, 19, 127, 31, -1, 256 + 4, INT_MIN + 8, 65534};
  for (const int featured : filters) {
    Ids ids;
    for (const int bit : {1, 2, 4, 8}) {
      if ((featured & bit) != 0) ids.push_back("app_featured " + std::to_string(bit));
    }
    EXPECT_EQ(FullList(Filter(featured, kAny)), Listed(ids)) << featured;
    EXPECT_EQ(ShortList(Filter(featured, kAny)), Listed(ids)) << featured;
    EXPECT_EQ(CountOf(Filter(featured, kAny)), Counted(static_cast<int>(ids.size()))) << featured;
  }
  EXPECT_EQ(FullList(EveryApp()).count, 11);
}

TEST_F(ListFilter, WidensTheFirstTwoFeaturedGroupsByTheEight) {
  InstallOneForEach("app_featured", {1, 2, 3, 4, 8, 11});
  const Ids widened = {"app_featured 1", "app_featured 2", "app_featured 8"};
  EXPECT_EQ(FullList(Filter(3, kAny)), Listed(widened));
  EXPECT_EQ(FullList(Filter(11, kAny)), Listed(widened));
  // Only the very value 3 is widened.
  EXPECT_EQ(FullList(Filter(19, kAny)), Listed({"app_featured 1", "app_featured 2"}));
}

TEST_F(ListFilter, RefusesAFeaturedSetWithoutAnyOfItsGroups) {
  for (const int featured : {0, 16, 32, 48, 65536, 1 << 30, -16, INT_MIN}) {
    log.Forget();
    EXPECT_EQ(FullList(Filter(featured, kAny)), Refused()) << featured;
    EXPECT_EQ(ShortList(Filter(featured, kAny)), Refused()) << featured;
    EXPECT_EQ(CountOf(Filter(featured, kAny)), Refused()) << featured;
    EXPECT_EQ(log.Count("in param featured error"), 3) << featured;
  }
  EXPECT_FALSE(log.Has("Connected to DB"));
}

TEST_F(ListFilter, ChecksTheTypeBeforeTheFeaturedSet) {
  EXPECT_EQ(FullList(Filter(0, 256)), Refused());
  EXPECT_EQ(FullList(Filter(0, 128)), Refused());
  EXPECT_FALSE(log.Has("in param featured error"));
  // A type that is merely unknown fails with the count, and so after the featured set.
  EXPECT_EQ(FullList(Filter(0, 1)), Refused());
  EXPECT_TRUE(log.Has("in param featured error"));
  EXPECT_FALSE(log.Has("get app count fail"));
}

TEST_F(ListFilter, JoinsTypeAndFeaturedSet) {
  device.InstallAll(
      {App("2 1").Type(2).Featured(1).Index(1), App("2 4").Type(2).Featured(4).Index(2),
       App("4 1").Type(4).Featured(1).Index(3), App("4 4").Type(4).Featured(4).Index(4)});
  EXPECT_EQ(FullList(Filter(1, 2)), Listed({"2 1"}));
  EXPECT_EQ(FullList(Filter(4, 6)), Listed({"2 4", "4 4"}));
  EXPECT_EQ(FullList(Filter(5, 4)), Listed({"4 1", "4 4"}));
  EXPECT_EQ(FullList(Filter(2, 6)), test::NothingMatches());
}

TEST_F(ListFilter, SelectsNothingByThePremiumGame) {
  device.InstallAll({App("game").Set("is_premium_game", 1), App("other").Index(1)});
  for (const int premium : {0, 1, 2, -1, INT_MAX, INT_MIN}) {
    tav_app_filter_s filter = EveryApp();
    filter.premium_game = premium;
    EXPECT_EQ(FullList(filter), Listed({"game", "other"})) << premium;
    EXPECT_EQ(ShortList(filter), Listed({"game", "other"})) << premium;
  }
}

TEST_F(ListFilter, LetsThroughOnlyAppsThatAreInstalledAvailableShownAndNotMarkedForReset) {
  device.InstallAll({App("shown"), App("installing").InstallState(2), App("failed").InstallState(4),
                     App("no state").Null("install_state"), App("unavailable").Unavailable(),
                     App("available 2").Set("is_app_available", 2), App("marked").MarkedForReset(),
                     App("no mark").Null("is_need_reset"), App("hidden").Hidden(),
                     App("hidden 2").Set("is_hidden", 2), App("no visibility").Null("is_hidden")});
  EXPECT_EQ(FullList(EveryApp()), Listed({"shown"}));
  EXPECT_EQ(ShortList(EveryApp()), Listed({"shown"}));
  EXPECT_EQ(CountOf(EveryApp()), Counted(1));
}

}  // namespace
