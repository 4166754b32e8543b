// SPDX-License-Identifier: Apache-2.0
//
// The lists whose condition is fixed: all apps, the recently used ones, and those with a key.
#include <gtest/gtest.h>

#include <climits>
#include <cstring>

#include "api/listing.h"
#include "support/device.h"

namespace {

using test::AllApps;
using test::App;
using test::KeyApps;
using test::Listed;
using test::NothingMatches;
using test::RecentApps;

class FixedLists : public ::testing::Test {
 protected:
  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(FixedLists, OfAllAppsHoldHiddenOnesAndTheListByFilterNeverDoes) {
  device.InstallAll({App("shown").Index(1), App("hidden").Index(2).Hidden(),
                     App("hidden 2").Index(3).Set("is_hidden", 2),
                     App("neither").Index(4).Null("is_hidden")});
  EXPECT_EQ(AllApps(), Listed({"shown", "hidden", "hidden 2", "neither"}));
  EXPECT_EQ(test::FullList(test::EveryApp()), Listed({"shown"}));
  EXPECT_TRUE(log.Has("Finish"));
}

TEST_F(FixedLists, OfAllAppsHoldNoAppThatIsNotWhollyThere) {
  device.InstallAll({App("there"), App("installing").InstallState(2),
                     App("unavailable").Unavailable(), App("marked").MarkedForReset(),
                     App("no state").Null("install_state"), App("no mark").Null("is_need_reset")});
  EXPECT_EQ(AllApps(), Listed({"there"}));
}

TEST_F(FixedLists, GiveWholeRecords) {
  device.Install(test::AppWithEveryColumnSet("a").Set("is_hidden", 0).Set("is_ticker", 1));
  tav_app_info_s expected;
  ASSERT_EQ(tav_get_app_info("a", &expected), 0);
  ASSERT_STREQ(expected.launch_user_data, "text reserved_string_6");

  const auto expect_it = [&](const char* name, const auto& call) {
    tav_app_info_s* list = nullptr;
    int count = 0;
    ASSERT_EQ(call(&list, &count), 0) << name;
    const std::unique_ptr<tav_app_info_s, decltype(&std::free)> owner(list, &std::free);
    ASSERT_EQ(count, 1) << name;
    EXPECT_EQ(std::memcmp(list, &expected, sizeof(expected)), 0) << name;
  };
  expect_it("filtered", [](tav_app_info_s** list, int* count) {
    return tav_get_app_list(test::EveryApp(), TAV_APP_VIEWMODE_TITLE, 0, 1, list, count);
  });
  expect_it("all", tav_get_all_app_list);
  expect_it("recent", [](tav_app_info_s** list, int* count) {
    return tav_get_recently_used_app_list(0, list, count);
  });
  expect_it("key", [](tav_app_info_s** list, int* count) {
    return tav_get_key_list("is_ticker", 0, list, count);
  });
}

TEST_F(FixedLists, LockTheirAppsByTheAgeSetting) {
  device.Setting("db/appstore/ratingvalue", "18+")
      .InstallAll({App("young").Index(1).AgeLimit(12), App("old").Index(2).AgeLimit(18),
                   App("locked").Index(3).Locked()});
  tav_app_info_s* list = nullptr;
  int count = 0;
  ASSERT_EQ(tav_get_all_app_list(&list, &count), 0);
  const std::unique_ptr<tav_app_info_s, decltype(&std::free)> owner(list, &std::free);
  ASSERT_EQ(count, 3);
  EXPECT_EQ(list[0].is_lock, 0);
  EXPECT_EQ(list[1].is_lock, 1);
  EXPECT_EQ(list[2].is_lock, 1);
}

TEST_F(FixedLists, OfRecentAppsHoldTheUsedOnesWithTheLatestLaunchFirst) {
  device.InstallAll({App("never").LaunchDate("2024-12-31"),
                     App("early").UseCount(9).LaunchDate("2024-01-01"),
                     App("late").UseCount(1).LaunchDate("2024-06-01"),
                     App("negative").UseCount(-1).LaunchDate("2024-07-01"),
                     App("none").Null("use_count").LaunchDate("2024-08-01")});
  EXPECT_EQ(RecentApps(5), Listed({"late", "early"}));
  EXPECT_TRUE(log.Has("count:[5]"));
  EXPECT_TRUE(log.Has("before set,in_param count: 5,real_count:2"));
  EXPECT_TRUE(log.Has("before set,real_count: 2"));
  EXPECT_TRUE(log.Has("Finish,real_count:[2]"));
}

TEST_F(FixedLists, EndWithTheLineOfTheirEmptiness) {
  EXPECT_EQ(AllApps(), NothingMatches());
  EXPECT_EQ(log.Messages().back(), "count is 0 ");
  EXPECT_EQ(RecentApps(), NothingMatches());
  EXPECT_EQ(log.Messages().back(), "real_count is 0 ");
  log.Forget();
  EXPECT_EQ(KeyApps("is_usb_app"), NothingMatches());
  EXPECT_EQ(log.Messages().back(), "real_count is 0 ");
}

TEST_F(FixedLists, TellTheirSizeBeforeTheyAreReadForRecentAppsAlone) {
  device.Install(App("a").UseCount(1).Set("is_usb_app", 1));
  const auto told = [&] {
    test::Ids lines;
    for (const test::LogLine& line : log.Lines()) {
      if (line.message.rfind("before set", 0) != 0) continue;
      lines.push_back(line.priority + (" " + line.function) + ": " + line.message);
    }
    return lines;
  };
  EXPECT_EQ(AllApps(), Listed({"a"}));
  EXPECT_EQ(log.Messages().back(), "Finish");
  EXPECT_EQ(KeyApps("is_usb_app", 1), Listed({"a"}));
  EXPECT_EQ(log.Messages().back(), "Finish:real_count:[1]");
  EXPECT_EQ(told(), test::Ids());
  EXPECT_EQ(RecentApps(7), Listed({"a"}));
  EXPECT_EQ(told(), test::Ids({"I tav_get_recently_used_app_list: before set,in_param count: 7,"
                               "real_count:1",
                               "I tav_get_recently_used_app_list: before set,real_count: 1"}));
  EXPECT_EQ(log.Messages().back(), "Finish,real_count:[1]");
}

TEST_F(FixedLists, OfRecentAppsHoldAtMostTheCountAndAllWithoutOne) {
  device.InstallAll({App("1").UseCount(1).LaunchDate("2024-01-01"),
                     App("2").UseCount(2).LaunchDate("2024-01-02"),
                     App("3").UseCount(3).LaunchDate("2024-01-03")});
  EXPECT_EQ(RecentApps(1), Listed({"3"}));
  EXPECT_TRUE(log.Has("before set,in_param count: 1,real_count:3"));
  EXPECT_TRUE(log.Has("before set,real_count: 1"));
  EXPECT_EQ(RecentApps(2), Listed({"3", "2"}));
  for (const int count : {3, 4, INT_MAX, 0, -1, INT_MIN}) {
    EXPECT_EQ(RecentApps(count), Listed({"3", "2", "1"})) << count;
  }
}

TEST_F(FixedLists, OfRecentAppsHoldOnlyVisibleOnes) {
  const auto used = [](const char* id) { return App(id).UseCount(1); };
  device.InstallAll({used("shown"), used("hidden").Hidden(), used("installing").InstallState(2),
                     used("unavailable").Unavailable(), used("marked").MarkedForReset()});
  EXPECT_EQ(RecentApps(), Listed({"shown"}));
}

TEST_F(FixedLists, OfAKeyHoldTheAppsWhoseColumnIsOneHiddenOnesIncluded) {
  device.InstallAll({App("one").Set("is_usb_app", 1), App("zero"), App("two").Set("is_usb_app", 2),
                     App("minus").Set("is_usb_app", -1), App("none").Null("is_usb_app"),
                     App("hidden").Set("is_usb_app", 1).Hidden(),
                     App("installing").Set("is_usb_app", 1).InstallState(2),
                     App("unavailable").Set("is_usb_app", 1).Unavailable(),
                     App("marked").Set("is_usb_app", 1).MarkedForReset()});
  EXPECT_EQ(KeyApps("is_usb_app"), Listed({"one", "hidden"}));
  EXPECT_TRUE(log.Has("Finish:real_count:[2]"));
  EXPECT_EQ(KeyApps("is_need_login"), NothingMatches());
}

TEST_F(FixedLists, OfAKeyHoldAtMostTheCountInTheDatabasesOrder) {
  device.InstallAll({App("c").Index(1).Set("is_network", 1), App("a").Index(3).Set("is_network", 1),
                     App("b").Index(2).Set("is_network", 1)});
  EXPECT_EQ(KeyApps("is_network", 1), Listed({"c"}));
  EXPECT_EQ(KeyApps("is_network", 2), Listed({"c", "a"}));
  for (const int count : {3, 4, INT_MAX, 0, -1, INT_MIN}) {
    EXPECT_EQ(KeyApps("is_network", count), Listed({"c", "a", "b"})) << count;
  }
}

TEST_F(FixedLists, OfAKeyTakeAnyColumnOfTheTable) {
  device.Install(App("a").Set("is_ispbound", 1).Set("rating", 1).Set("reserved_tinyint_19", 1));
  for (const char* key : {"is_ispbound", "rating", "reserved_tinyint_19", "is_app_available"}) {
    EXPECT_EQ(KeyApps(key), Listed({"a"})) << key;
  }
}

}  // namespace
