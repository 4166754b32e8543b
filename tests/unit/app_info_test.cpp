// SPDX-License-Identifier: Apache-2.0
//
// The two drivers and the last-download order.
#include "tav_db_api/tav_db_client_app_info.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <random>

#include "support/device.h"
#include "support/writer.h"

namespace {

using test::App;
using Ids = std::vector<std::string>;
using Indexes = std::vector<int>;

constexpr char kEverything[] = " order by id";

Indexes AfterSorting(const Indexes& before) {
  std::vector<tav_app_info_s> list(before.size());
  for (std::size_t i = 0; i < before.size(); ++i) list[i].app_index = before[i];
  sort_applist_lastdownload(list.data(), static_cast<int>(list.size()));
  Indexes after;
  for (const tav_app_info_s& app : list) after.push_back(app.app_index);
  return after;
}

TEST(LastDownloadOrder, MovesTheDownloadedAppsAtTheEndToTheFrontLastOneFirst) {
  EXPECT_EQ(AfterSorting({5, 310, 7, 320, 330}), (Indexes{330, 320, 5, 310, 7}));
}

TEST(LastDownloadOrder, ReversesAListOfDownloadedAppsAlone) {
  EXPECT_EQ(AfterSorting({300, 301, 302}), (Indexes{302, 301, 300}));
}

TEST(LastDownloadOrder, LeavesAListAloneThatEndsWithABuiltInApp) {
  EXPECT_EQ(AfterSorting({400, 300, 299}), (Indexes{400, 300, 299}));
  EXPECT_EQ(AfterSorting({400, 300, 0, 0}), (Indexes{400, 300, 0, 0}));
  EXPECT_EQ(AfterSorting({5}), (Indexes{5}));
}

TEST(LastDownloadOrder, MovesNothingForACountOfZeroOrLess) {
  sort_applist_lastdownload(nullptr, 0);
  tav_app_info_s one = {};
  one.app_index = 300;
  sort_applist_lastdownload(&one, -1);
  EXPECT_EQ(one.app_index, 300);
}

TEST(LastDownloadOrder, IsTheOneThatCopyingRecordByRecordGives) {
  std::mt19937 random(20260314);
  for (int round = 0; round < 500; ++round) {
    Indexes before(random() % 12);
    for (int& index : before) index = 295 + static_cast<int>(random() % 10);
    Indexes expected;
    std::size_t cursor = before.size();
    while (cursor > 0 && before[cursor - 1] > 299) expected.push_back(before[--cursor]);
    expected.insert(expected.end(), before.begin(), before.begin() + static_cast<long>(cursor));
    EXPECT_EQ(AfterSorting(before), expected);
  }
}

class Drivers : public ::testing::Test {
 protected:
  // Runs the list driver over an array that held something else before.
  int List(int count, bool last_download = false, const std::string& condition = kEverything) {
    const TavLock lock(g_Mute);
    tav_app_info_s before;
    std::memset(&before, 'x', sizeof(before));
    list.assign(static_cast<std::size_t>(std::max(count, 0)), before);
    return GetAppsTableList(list.data(), count, condition, 0, {}, last_download);
  }
  Ids ListedIds() const {
    Ids ids;
    for (const tav_app_info_s& app : list) ids.emplace_back(app.app_id);
    return ids;
  }

  test::Device device;
  test::Log& log = device.GetLog();
  std::vector<tav_app_info_s> list;
};

TEST_F(Drivers, SelectTheSeventyOneColumnsInTheirOrder) {
  const std::string& text = SelectApps();
  EXPECT_EQ(text.substr(0, 40), "select id,title,run_title,pannel_icon_pa");
  const std::string end =
      ",reserved_string_21,reserved_tinyint_19,reserved_string_24 from widgetinfo";
  EXPECT_EQ(text.substr(text.size() - end.size()), end);
  EXPECT_EQ(std::count(text.begin(), text.end(), ','), 70);
  EXPECT_NE(text.find(",reserved_tinyint_11,reserved_string_16,reserved_string_14,"
                      "reserved_string_18,tavorder,reserved_string_19,reserved_string_20,"
                      "reserved_tinyint_15,"),
            std::string::npos);
}

TEST_F(Drivers, FillAsManyRecordsAsTheArrayHoldsAndStepOverTheRest) {
  for (const char* id : {"a", "b", "c", "d", "e"}) device.Install(App(id));
  EXPECT_EQ(List(3), 0);
  EXPECT_EQ(ListedIds(), (Ids{"a", "b", "c"}));
  EXPECT_EQ(log.Count("set app_info success"), 3);
  EXPECT_TRUE(log.Has("SQLITE_DONE : has finished executing"));
  EXPECT_TRUE(log.Has("sizeof(Column)/30-1 = 70"));
}

TEST_F(Drivers, ZeroTheRecordsThatNoRowFills) {
  device.Install(App("a"));
  EXPECT_EQ(List(3), 0);
  EXPECT_EQ(ListedIds(), (Ids{"a", "", ""}));
  const tav_app_info_s zero = {};
  EXPECT_EQ(std::memcmp(&list[1], &zero, sizeof(zero)), 0);
  EXPECT_EQ(std::memcmp(&list[2], &zero, sizeof(zero)), 0);
}

TEST_F(Drivers, TakeACountOfZeroOrLess) {
  device.Install(App("a"));
  EXPECT_EQ(List(0), 0);
  EXPECT_EQ(List(-5, true), 0);
}

TEST_F(Drivers, ApplyTheLastDownloadOrderToTheWholeArray) {
  device.Install(App("a").Index(1)).Install(App("b").Index(300)).Install(App("c").Index(301));
  EXPECT_EQ(List(3, true), 0);
  EXPECT_EQ(ListedIds(), (Ids{"c", "b", "a"}));
  EXPECT_TRUE(log.Has("view mode : last download"));
  EXPECT_EQ(List(4, true), 0);
  EXPECT_EQ(ListedIds(), (Ids{"a", "b", "c", ""}));
}

TEST_F(Drivers, LeaveTheArrayAloneWhenTheQueryCannotBePrepared) {
  EXPECT_EQ(List(1, true, " where no_such_column = 1"), -1);
  EXPECT_EQ(list[0].app_id[0], 'x');
  EXPECT_EQ(list[0].launch_type, 0x78787878);
}

TEST_F(Drivers, ReportABusyListAndStillApplyTheOrder) {
  device.Install(App("a"));
  ASSERT_EQ(List(1), 0);  // from now on the schema is known, so that the busy step comes first
  log.Forget();
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  EXPECT_EQ(List(1, true), -2);
  EXPECT_EQ(ListedIds(), Ids{""});
  EXPECT_TRUE(log.Has("Get DB fail:sql busy"));
  EXPECT_TRUE(log.Has("view mode : last download"));
}

TEST_F(Drivers, WriteTwoLinesOfEachRecord) {
  device.Install(App("a").Title("Clock").Set("use_count", -1));
  ASSERT_EQ(List(1), 0);
  const std::vector<std::string> lines = log.Messages();
  ASSERT_GE(lines.size(), 2U);
  EXPECT_EQ(lines[lines.size() - 2],
            "app_id = a,app_index = 0,app_title = Clock,app_version = ,app_tizen_id = "
            ",app_runtitle = ,app_featured = 0,is_removable = 0,is_lock = 0,is_need_update = 0"
            ",is_updated = 0,is_usb_app = 0,is_hidden = 0,is_network = 0,install_date = "
            ",installState = 3,gamepad = ,app_type = 0,is_need_login = 0"
            ",installed_source_type = 0,is_multi_tasking = 0,is_age_auth = 0,app_age_limit = 0"
            ",ambient_screen_support = ,is_icon_mutlilang_support = 0,launch_type = 0"
            ",app_icon_path = ,app_installed_path = ,app_panel_icon_path = "
            ",firstscreen_icon_dir = ,ambient_icon_path = ");
  EXPECT_EQ(lines.back(),
            "app_widget_category = ,type = ,hbbtv = ,native_id = ,waiting_screen_type = "
            ",launch_user_data = ,content_id = ,use_count = 4294967295,is_display = 0"
            ",is_multi_screen2 = 0,is_need_uninstall = 0,is_transparent_support = 0"
            ",is_partial_overlay_support = 0,is_websdi_support = 0,is_disk_cache = 0"
            ",is_force_launch_support = 0,is_premium_game = 0");
}

TEST_F(Drivers, DoNothingForANullRecord) {
  const TavLock lock(g_Mute);
  AgeRating rating;
  m_GetWidgetInfo(nullptr, rating);
  EXPECT_TRUE(log.Lines().empty());
}

}  // namespace
