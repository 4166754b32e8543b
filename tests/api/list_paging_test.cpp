// SPDX-License-Identifier: Apache-2.0
//
// Pages of a list: the first row, the size, and the offsets that lie beyond the end.
#include <gtest/gtest.h>

#include <climits>

#include "api/listing.h"
#include "support/device.h"

namespace {

using test::App;
using test::Counted;
using test::CountOf;
using test::EveryApp;
using test::Filter;
using test::FullList;
using test::Ids;
using test::Listed;
using test::NotCounted;
using test::NothingMatches;
using test::ShortList;

class ListPaging : public ::testing::Test {
 protected:
  ListPaging() {
    std::vector<App> apps;
    for (int i = 0; i < 10; ++i) apps.push_back(App(std::to_string(i)).Index(i).Type(2));
    device.InstallAll(apps);
  }
  // Full and multi-screen lists page alike.
  static void Expect(int index, int count, const test::Listing& expected) {
    EXPECT_EQ(FullList(EveryApp(), 1, index, count), expected) << index << ", " << count;
    EXPECT_EQ(ShortList(EveryApp(), 1, index, count), expected) << index << ", " << count;
  }

  test::Device device;
  test::Log& log = device.GetLog();
  const Ids all = {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"};
};

TEST_F(ListPaging, GivesTheRestFromTheIndexWithoutACount) {
  for (const int count : {0, -1, INT_MIN}) {
    Expect(3, count, Listed({"3", "4", "5", "6", "7", "8", "9"}));
    Expect(0, count, Listed(all));
    Expect(9, count, Listed({"9"}));
  }
}

TEST_F(ListPaging, GivesAtMostTheCount) {
  Expect(0, 1, Listed({"0"}));
  Expect(3, 2, Listed({"3", "4"}));
  Expect(8, 2, Listed({"8", "9"}));
  Expect(8, 3, Listed({"8", "9"}));
  Expect(9, INT_MAX, Listed({"9"}));
  Expect(0, 10, Listed(all));
  Expect(0, INT_MAX, Listed(all));
}

TEST_F(ListPaging, IsOffWithANegativeIndexAndTheCountStillHolds) {
  for (const int index : {-1, -10, INT_MIN}) {
    for (const int count : {0, -1, 10, 11, INT_MAX, INT_MIN}) Expect(index, count, Listed(all));
    Expect(index, 3, Listed({"0", "1", "2"}));
  }
}

TEST_F(ListPaging, FailsFromTheIndexThatEqualsTheNumberOfApps) {
  for (const int index : {10, 11, 65535, INT_MAX}) {
    log.Forget();
    Expect(index, 1, NotCounted(-1));
    EXPECT_EQ(
        log.Count("offect >= real count:offect:" + std::to_string(index) + ", real count:10 "), 2);
  }
  Expect(9, 1, Listed({"9"}));
}

TEST_F(ListPaging, GivesNothingAndSucceedsWhereNothingMatchesWhateverTheIndex) {
  for (const int index : {-1, 0, 1, INT_MAX}) {
    log.Forget();
    EXPECT_EQ(FullList(Filter(65535, 4), 1, index, 0), NothingMatches());
    EXPECT_EQ(ShortList(Filter(65535, 4), 1, index, 0), NothingMatches());
    EXPECT_EQ(log.Count("real_count is 0 "), 2);
  }
  EXPECT_EQ(CountOf(Filter(65535, 4)), Counted(0));
}

TEST_F(ListPaging, CountsWhatTheWholeListHolds) {
  EXPECT_EQ(CountOf(EveryApp()), Counted(10));
  EXPECT_EQ(log.Count("Finish,real_count:[10]"), 1);
  EXPECT_EQ(log.Count("Finish,count:10 "), 1);
  EXPECT_EQ(CountOf(Filter(65535, 2)), Counted(10));
  EXPECT_EQ(CountOf(Filter(0, 2)), test::Refused());
  EXPECT_TRUE(log.Has("in param featured error"));
}

TEST_F(ListPaging, EndsACountWithTheCallersNumberAsItStands) {
  int count = 7;
  EXPECT_EQ(tav_get_app_count(Filter(0, 2), &count), -1);
  EXPECT_EQ(log.Messages().back(), "Finish,count:7 ");
  EXPECT_EQ(tav_get_app_count(Filter(65535, 1), &count), -1);  // counting failed
  EXPECT_EQ(log.Messages().back(), "Finish,count:0 ");
  EXPECT_EQ(tav_get_app_count(EveryApp(), &count), 0);
  EXPECT_EQ(log.Messages().back(), "Finish,count:10 ");
  EXPECT_EQ(tav_get_app_count(EveryApp(), nullptr), -1);
  EXPECT_EQ(log.Messages().back(), "Finish,count:0 ");
}

TEST_F(ListPaging, SaysHowManyRecordsItGave) {
  FullList(EveryApp(), 1, 3, 4);
  EXPECT_TRUE(log.Has("Finish,real_count:[4]"));
  ShortList(EveryApp(), 1, 5, 0);
  EXPECT_TRUE(log.Has("Finish,real_count:[5]"));
}

TEST_F(ListPaging, GivesTheMultiScreenValueAsItIsStoredAndTheIdCut) {
  device.Sql("delete from widgetinfo")
      .InstallAll({App("a").Set("is_multi_screen2", 7).Index(1),
                   App("b").Set("is_multi_screen2", -1).Index(2),
                   App("c").Null("is_multi_screen2").Index(3),
                   App(std::string(127, 'd')).Set("is_multi_screen2", 4).Index(4),
                   App(std::string(200, 'e')).Set("is_multi_screen2", 5).Index(5)});
  tav_app_ms_s* list = nullptr;
  int count = 0;
  ASSERT_EQ(tav_get_app_list_ms(EveryApp(), TAV_APP_VIEWMODE_CATALOGUE, -1, 0, &list, &count), 0);
  ASSERT_EQ(count, 5);
  const std::unique_ptr<tav_app_ms_s, decltype(&std::free)> owner(list, &std::free);
  const char* const ids[] = {"a", "b", "c"};
  const int values[] = {7, -1, 0, 4, 5};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(list[i].is_multi_screen2, values[i]);
  for (int i = 0; i < 3; ++i) EXPECT_STREQ(list[i].app_id, ids[i]);
  EXPECT_EQ(list[3].app_id, std::string(127, 'd'));
  EXPECT_EQ(list[4].app_id, std::string(127, 'e'));
  EXPECT_TRUE(log.Has("appindex = 1, app_id =b, is_multi_screen2 =-1"));
  EXPECT_EQ(log.Count("begin to set app_info "), 5);
  EXPECT_EQ(log.Count("set app_info success"), 5);
}

}  // namespace
