// SPDX-License-Identifier: Apache-2.0
//
// Lists and counts, through the C++ layer.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "answers.h"
#include "support/unreadable_row.h"

namespace {

using tav::AppTypes;
using tav::Featured;
using tav::Filter;
using tav::ViewMode;
using test::App;
using test::Told;

constexpr char kNothing[] = "0 ";
constexpr char kFailed[] = "-1 ";
constexpr char kBusy[] = "-2 ";

class CppLists : public ::testing::Test {
 protected:
  CppLists() {
    device.InstallAll(
        {Of("a", 1, 1, 2).Title("z").UseCount(1).LaunchDate("2026-03-01").Set("is_usb_app", 1),
         Of("b", 2, 2, 4).Title("y").UseCount(3).LaunchDate("2026-03-02").InstallDate("2026-01-01"),
         Of("c", 3, 4, 2).Title("x").UseCount(2).LaunchDate("2026-03-03").Set("is_usb_app", 1),
         Of("d", 4, 8, 2).Title("w").InstallDate("2026-01-02"),
         Of("hidden", 5, 1, 2).Hidden().Set("is_usb_app", 1)});
  }
  static App Of(const std::string& id, int index, int featured, int type) {
    return App(id).Index(index).Featured(featured).Type(type).LaunchDate("2026-01-01");
  }

  test::Device device;
};

TEST_F(CppLists, HoldEveryVisibleAppInTheCataloguesOrderAtFirst) {
  EXPECT_EQ(Told(tav::GetAppList()), "0 a,b,c,d,");
  EXPECT_EQ(Told(tav::GetAppListMs()), "0 a,b,c,d,");
  EXPECT_EQ(Told(tav::GetAppCount()), "0 4");
}

TEST_F(CppLists, HaveTheRecordsThatTheInterfaceGives) {
  tav_app_info_s* expected = nullptr;
  int count = 0;
  ASSERT_EQ(tav_get_app_list({65535, 0, 65535}, TAV_APP_VIEWMODE_TITLE, -1, 0, &expected, &count),
            0);
  const tav::AppList owner(expected, static_cast<std::size_t>(count));
  const auto apps = tav::GetAppList({}, ViewMode::kTitle);
  ASSERT_EQ(apps->size(), owner.size());
  EXPECT_EQ(std::memcmp(apps->data(), expected, sizeof(*expected) * owner.size()), 0);
}

TEST_F(CppLists, FollowTheViewMode) {
  EXPECT_EQ(Told(tav::GetAppList({}, ViewMode::kMostUsed)), "0 b,c,a,d,");
  EXPECT_EQ(Told(tav::GetAppList({}, ViewMode::kTitle)), "0 d,c,b,a,");
  EXPECT_EQ(Told(tav::GetAppList({}, ViewMode::kTitleDescending)), "0 a,b,c,d,");
  EXPECT_EQ(Told(tav::GetAppListMs({}, ViewMode::kRecentlyLaunched)), "0 c,b,a,d,");
  EXPECT_EQ(Told(tav::GetAppListMs({}, ViewMode::kTitle)), "0 d,c,b,a,");
}

TEST_F(CppLists, FollowTheFilter) {
  const Filter kinds = {Featured::kKind1 | Featured::kKind4};
  const Filter types = {Featured::kEvery, AppTypes::kType4};
  EXPECT_EQ(Told(tav::GetAppList(kinds)), "0 a,c,");
  EXPECT_EQ(Told(tav::GetAppListMs(types)), "0 b,");
  EXPECT_EQ(Told(tav::GetAppList({Featured::kKind1 | Featured::kKind2})), "0 a,b,d,");
  EXPECT_EQ(Told(tav::GetAppList(tav::InitAppFilter())), "0 a,");
  EXPECT_EQ(Told(tav::GetAppCount(kinds)), "0 2");
}

TEST_F(CppLists, FollowThePage) {
  EXPECT_EQ(Told(tav::GetAppList({}, ViewMode::kCatalogue, {1, 2})), "0 b,c,");
  EXPECT_EQ(Told(tav::GetAppList({}, ViewMode::kCatalogue, {2})), "0 c,d,");
  EXPECT_EQ(Told(tav::GetAppListMs({}, ViewMode::kCatalogue, {3, 7})), "0 d,");
}

TEST_F(CppLists, TakeAFilterByPointer) {
  const Filter types = {Featured::kEvery, AppTypes::kType2};
  EXPECT_EQ(Told(tav::GetAppListDn(&types, ViewMode::kTitle, {0, 2})), "0 d,c,");
  EXPECT_EQ(Told(tav::GetAppCountDn(&types)), "0 3");
  EXPECT_EQ(Told(tav::GetAppListDn(nullptr)), kFailed);
  EXPECT_EQ(Told(tav::GetAppCountDn(nullptr)), "-1 0");
}

TEST_F(CppLists, OfAllAppsHoldTheHiddenOnesToo) {
  EXPECT_EQ(tav::GetAllAppList().value().size(), 5u);
}

TEST_F(CppLists, OfUsedAppsHoldTheLastLaunchedFirst) {
  EXPECT_EQ(Told(tav::GetRecentlyUsedAppList()), "0 c,b,a,");
  EXPECT_EQ(Told(tav::GetRecentlyUsedAppList(2)), "0 c,b,");
}

TEST_F(CppLists, OfAColumnHoldTheAppsInWhichItIsOne) {
  EXPECT_EQ(Told(tav::GetKeyList("is_usb_app")), "0 a,c,hidden,");
  EXPECT_EQ(Told(tav::GetKeyList("is_usb_app", 1)), "0 a,");
}

TEST_F(CppLists, AreEmptyWhenNothingMatches) {
  device.Sql("delete from widgetinfo");
  EXPECT_EQ(Told(tav::GetAppList()), kNothing);
  EXPECT_EQ(Told(tav::GetAppListMs()), kNothing);
  EXPECT_EQ(Told(tav::GetAllAppList()), kNothing);
  EXPECT_EQ(Told(tav::GetRecentlyUsedAppList()), kNothing);
  EXPECT_EQ(Told(tav::GetAppCount()), "0 0");
}

TEST_F(CppLists, FailForAFilterOrAPageThatIsRefused) {
  EXPECT_EQ(Told(tav::GetAppList({Featured{}})), kFailed);
  EXPECT_EQ(Told(tav::GetAppListMs({Featured::kEvery, AppTypes{}})), kFailed);
  EXPECT_EQ(Told(tav::GetAppList({}, ViewMode::kCatalogue, {4, 1})), kFailed);
  EXPECT_EQ(Told(tav::GetAppCount({Featured{}})), "-1 0");
  EXPECT_EQ(Told(tav::GetKeyList("no_such_column")), kFailed);
}

TEST_F(CppLists, FailWithNoAppsWhileTheyAreRefused) {
  device.FactoryReset(2);
  EXPECT_EQ(Told(tav::GetAppList()), kFailed);
  EXPECT_EQ(Told(tav::GetAllAppList()), kFailed);
  EXPECT_EQ(Told(tav::GetRecentlyUsedAppList()), kFailed);
  int walked = 0;
  for (const tav::AppInfo& app : tav::GetAppList().value()) walked += app.app_index;
  EXPECT_EQ(walked, 0);
}

TEST_F(CppLists, EndBeforeTheFirstAppThatCannotBeRead) {
  test::MakeUnreadable(device, "c");
  int count = 0;
  tav_app_info_s* list = nullptr;
  ASSERT_EQ(tav_get_key_list("is_usb_app", 0, &list, &count), 0);
  const tav::AppList owner(list, static_cast<std::size_t>(count));
  ASSERT_EQ(owner.size(), 3U);
  EXPECT_STREQ(owner[0].app_id, "a");
  const tav::AppInfo cleared = {};
  EXPECT_EQ(std::memcmp(&owner[1], &cleared, sizeof(cleared)), 0);
  EXPECT_EQ(std::memcmp(&owner[2], &cleared, sizeof(cleared)), 0);

  EXPECT_EQ(Told(tav::GetKeyList("is_usb_app")), "0 a,");
  EXPECT_EQ(tav::GetKeyList("is_usb_app").value().size(), 1U);
}

// Where the rows are put in order, none of them comes before all have been read.
TEST_F(CppLists, AreEmptyWhenOneOfTheAppsInOrderCannotBeRead) {
  test::MakeUnreadable(device, "c");
  EXPECT_EQ(Told(tav::GetAppList()), kNothing);
  EXPECT_EQ(Told(tav::GetAppList({}, ViewMode::kLastDownloaded)), kNothing);
  EXPECT_EQ(Told(tav::GetAllAppList()), kNothing);
  EXPECT_EQ(Told(tav::GetRecentlyUsedAppList()), kNothing);
  EXPECT_EQ(Told(tav::GetAppListMs()), kFailed);
  EXPECT_EQ(Told(tav::GetAppCount()), "0 4");
}

TEST_F(CppLists, KeepAnAppWithoutAnIdAtTheirEnd) {
  device.Install(Of("", 9, 1, 2));
  EXPECT_EQ(Told(tav::GetAppList()), "0 a,b,c,d,,");
}

TEST_F(CppLists, AreWalkedOverAsTemporaries) {
  std::string ids;
  for (const tav::AppInfo& app : tav::GetAppList().value()) ids += tav::TextOf(app.app_id);
  EXPECT_EQ(ids, "abcd");
}

TEST_F(CppLists, AreBusyWithNoAppsWhileTheDatabaseIsBusy) {
  const auto writer = test::BusyWriter(device);
  EXPECT_EQ(Told(tav::GetAppList()), kBusy);
  EXPECT_EQ(Told(tav::GetAppListMs()), kBusy);
  EXPECT_EQ(Told(tav::GetAppCount()), "-2 0");
}

}  // namespace
