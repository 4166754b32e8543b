// SPDX-License-Identifier: Apache-2.0
//
// The view modes: the order of full and of multi-screen lists, and the last-download order.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>

#include "api/listing.h"
#include "support/device.h"

namespace {

using test::AllApps;
using test::App;
using test::EveryApp;
using test::FullList;
using test::FullListByPointer;
using test::Ids;
using test::Listed;
using test::ShortList;

class ListOrder : public ::testing::Test {
 protected:
  // Six apps that each order puts differently.
  void InstallSix() {
    const auto app = [](const char* id, int index, int use_count, const char* title,
                        const char* installed, const char* launched) {
      return App(id)
          .Index(index)
          .UseCount(use_count)
          .Title(title)
          .InstallDate(installed)
          .LaunchDate(launched);
    };
    device.InstallAll({app("a", 5, 10, "delta", "2024-01-06", "2024-03-01"),
                       app("b", 301, 40, "Alpha", "2024-01-01", "2024-03-04"),
                       app("c", 1, 20, "charlie", "2024-01-02", "2024-03-06"),
                       app("d", 310, 30, "Bravo", "2024-01-05", "2024-03-02"),
                       app("e", 299, 60, "Foxtrot", "2024-01-04", "2024-03-05"),
                       app("f", 300, 50, "echo", "2024-01-03", "2024-03-03")});
  }
  // Apps with these indexes, each named after its place in the list.
  void InstallIndexes(const std::vector<int>& indexes) {
    std::vector<App> apps;
    for (const int index : indexes) {
      apps.push_back(App(std::to_string(apps.size()) + ":" + std::to_string(index)).Index(index));
    }
    device.InstallAll(apps);
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

struct Order {
  int mode;
  Ids full;
  Ids multi_screen;
};

TEST_F(ListOrder, IsTheOneOfTheViewMode) {
  InstallSix();
  const Ids catalogue = {"c", "a", "e", "f", "b", "d"};
  const Order orders[] = {
      {0, {"e", "f", "b", "d", "c", "a"}, {"e", "f", "b", "d", "c", "a"}},
      {1, catalogue, catalogue},
      {2, {"d", "b", "f", "c", "a", "e"}, {"a", "d", "e", "f", "c", "b"}},
      {3, {"b", "d", "c", "a", "f", "e"}, {"b", "d", "c", "a", "f", "e"}},
      {4, {"e", "f", "a", "c", "d", "b"}, {"e", "f", "a", "c", "d", "b"}},
      {5, {"c", "e", "b", "f", "d", "a"}, {"c", "e", "b", "f", "d", "a"}},
      {-1, catalogue, catalogue},
      {6, catalogue, catalogue},
      {100, catalogue, catalogue},
      {INT_MIN, catalogue, catalogue},
      {INT_MAX, catalogue, catalogue},
  };
  tav_app_filter_s filter = EveryApp();
  for (const Order& order : orders) {
    EXPECT_EQ(FullList(filter, order.mode), Listed(order.full)) << order.mode;
    EXPECT_EQ(FullListByPointer(&filter, order.mode), Listed(order.full)) << order.mode;
    EXPECT_EQ(ShortList(filter, order.mode), Listed(order.multi_screen)) << order.mode;
  }
}

TEST_F(ListOrder, IsThatOfThePageWhenTheListIsPaged) {
  InstallSix();
  EXPECT_EQ(FullList(EveryApp(), 0, 1, 2), Listed({"f", "b"}));
  EXPECT_EQ(FullList(EveryApp(), 3, 3, 0), Listed({"a", "f", "e"}));
  EXPECT_EQ(ShortList(EveryApp(), 5, 4, 9), Listed({"d", "a"}));
  // The last-download order is applied to the rows of the page alone.
  EXPECT_EQ(FullList(EveryApp(), 2, 2, 3), Listed({"b", "f", "e"}));
  EXPECT_EQ(FullList(EveryApp(), 2, -1, 4), Listed({"f", "c", "a", "e"}));
  EXPECT_EQ(ShortList(EveryApp(), 2, 2, 3), Listed({"e", "f", "c"}));
}

TEST_F(ListOrder, OfTitlesTakesNoHeedOfCaseAndPutsMissingTitlesFirst) {
  device.InstallAll({App("lower").Title("bb"), App("upper").Title("AA"), App("upper 2").Title("CC"),
                     App("empty"), App("none").Null("title"), App("digit").Title("9")});
  EXPECT_EQ(FullList(EveryApp(), 3),
            Listed({"none", "empty", "digit", "upper", "lower", "upper 2"}));
  EXPECT_EQ(FullList(EveryApp(), 4),
            Listed({"upper 2", "lower", "upper", "digit", "empty", "none"}));
}

TEST_F(ListOrder, ByLastDownloadIsSaidInTheLogForFullRecordsOnly) {
  InstallSix();
  for (const int mode : {0, 1, 3, 4, 5, 6, -1}) FullList(EveryApp(), mode);
  ShortList(EveryApp(), 2);
  EXPECT_FALSE(log.Has("view mode : last download"));
  FullList(EveryApp(), 2);
  EXPECT_TRUE(log.Has("view mode : last download"));
  AllApps();
  EXPECT_EQ(log.Count("view mode : last download"), 2);
}

TEST_F(ListOrder, ByLastDownloadBeginsAboveTheBuiltInRange) {
  InstallIndexes({298, 299, 300, 301});
  const Ids expected = {"3:301", "2:300", "0:298", "1:299"};
  EXPECT_EQ(FullList(EveryApp(), 2), Listed(expected));
  EXPECT_EQ(AllApps(), Listed(expected));
}

TEST_F(ListOrder, ByLastDownloadLeavesAListOfBuiltInAppsAlone) {
  InstallIndexes({299, -5, 0, 12});
  const Ids expected = {"1:-5", "2:0", "3:12", "0:299"};
  EXPECT_EQ(FullList(EveryApp(), 2), Listed(expected));
  EXPECT_EQ(AllApps(), Listed(expected));
}

TEST_F(ListOrder, ByLastDownloadReversesAListOfDownloadsAlone) {
  InstallIndexes({700, 300, 2147483647, 500});
  const Ids expected = {"2:2147483647", "0:700", "3:500", "1:300"};
  EXPECT_EQ(FullList(EveryApp(), 2), Listed(expected));
  EXPECT_EQ(AllApps(), Listed(expected));
}

TEST_F(ListOrder, ByLastDownloadStopsAtAnIndexThatIsNoNumber) {
  // SQLite sorts texts behind all numbers, and such an index reads as 0.
  InstallIndexes({310, 320, 5});
  device.Install(App("text").Set("app_index", "many")).Install(App("none").Null("app_index"));
  const Ids expected = {"none", "2:5", "0:310", "1:320", "text"};
  EXPECT_EQ(FullList(EveryApp(), 2), Listed(expected));
  EXPECT_EQ(AllApps(), Listed(expected));
}

TEST_F(ListOrder, ByLastDownloadIsTheModelsForManyLists) {
  std::mt19937 random(299);
  for (int round = 0; round < 60; ++round) {
    const int size = 1 + static_cast<int>(random() % 40);
    std::vector<int> indexes;
    for (int i = 250 + static_cast<int>(random() % 60); static_cast<int>(indexes.size()) < size;) {
      indexes.push_back(i += 1 + static_cast<int>(random() % 3));
    }
    std::vector<int> downloads;
    std::vector<int> expected;
    for (const int index : indexes) (index > 299 ? downloads : expected).push_back(index);
    expected.insert(expected.begin(), downloads.rbegin(), downloads.rend());

    std::shuffle(indexes.begin(), indexes.end(), random);
    std::vector<App> apps;
    for (const int index : indexes) apps.push_back(App(std::to_string(index)).Index(index));
    device.Sql("delete from widgetinfo").InstallAll(apps);

    Ids ids;
    for (const int index : expected) ids.push_back(std::to_string(index));
    ASSERT_EQ(FullList(EveryApp(), 2), Listed(ids)) << "round " << round;
    ASSERT_EQ(AllApps(), Listed(ids)) << "round " << round;
  }
}

}  // namespace
