// SPDX-License-Identifier: Apache-2.0
//
// The two drivers and the last-download order.
#include "tav_db_api/tav_db_client_app_info.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <random>
#include <utility>

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

// A record line of the app: each label with the value of its column, and is_lock, which is
// computed.
std::string RecordLine(const App& app,
                       const std::vector<std::pair<const char*, const char*>>& labels) {
  std::string line;
  for (const auto& [label, column] : labels) {
    line += std::string(line.empty() ? "" : ",") + label + " = ";
    if (std::strcmp(label, "is_lock") == 0) {
      line += "1";
    } else if (const int* integer = std::get_if<int>(&app.Values().at(column))) {
      line += std::to_string(*integer);
    } else {
      line += std::get<std::string>(app.Values().at(column));
    }
  }
  return line;
}

std::vector<std::string> RecordLines(const App& app) {
  return {RecordLine(app, {{"app_id", "id"},
                           {"app_index", "app_index"},
                           {"app_title", "title"},
                           {"app_version", "version"},
                           {"app_tizen_id", "tizen_id"},
                           {"app_runtitle", "run_title"},
                           {"app_featured", "app_featured"},
                           {"is_removable", "is_removable"},
                           {"is_lock", ""},
                           {"is_need_update", "is_need_update"},
                           {"is_updated", "is_updated"},
                           {"is_usb_app", "is_usb_app"},
                           {"is_hidden", "is_hidden"},
                           {"is_network", "is_network"},
                           {"install_date", "install_date"},
                           {"installState", "install_state"},
                           {"gamepad", "reserved_string_1"},
                           {"app_type", "app_type"},
                           {"is_need_login", "is_need_login"},
                           {"installed_source_type", "install_source_type"},
                           {"is_multi_tasking", "is_multi_tasking"},
                           {"is_age_auth", "is_age_auth"},
                           {"app_age_limit", "limit_age"},
                           {"ambient_screen_support", "reserved_string_4"},
                           {"is_icon_mutlilang_support", "reserved_tinyint_8"},
                           {"launch_type", "reserved_int_1"},
                           {"app_icon_path", "icon_path"},
                           {"app_installed_path", "install_path"},
                           {"app_panel_icon_path", "icon_path"},
                           {"firstscreen_icon_dir", "icon_path"},
                           {"ambient_icon_path", "icon_path"}}),
          RecordLine(app, {{"app_widget_category", "widget_category"},
                           {"type", "install_type"},
                           {"hbbtv", "hbbTV"},
                           {"native_id", "hybrid_app"},
                           {"waiting_screen_type", "reserved_string_2"},
                           {"launch_user_data", "reserved_string_6"},
                           {"content_id", "reserved_string_9"},
                           {"use_count", "use_count"},
                           {"is_display", "is_display"},
                           {"is_multi_screen2", "is_multi_screen2"},
                           {"is_need_uninstall", "reserved_tinyint_1"},
                           {"is_transparent_support", "reserved_tinyint_2"},
                           {"is_partial_overlay_support", "reserved_tinyint_3"},
                           {"is_websdi_support", "reserved_tinyint_4"},
                           {"is_disk_cache", "reserved_tinyint_5"},
                           {"is_force_launch_support", "reserved_tinyint_7"},
                           {"is_premium_game", "is_premium_game"}})};
}

// The messages after those that every query ends with.
std::vector<std::string> MessagesAfterTheRows(const test::Log& log) {
  const std::vector<std::string> messages = log.Messages();
  const auto last = std::find(messages.rbegin(), messages.rend(), "finalize g_pStmt");
  return {last.base(), messages.end()};
}

// An app whose every logged value is another one, locked by its age alone.
App AppForItsLines(const std::string& id) {
  return test::AppWithEveryColumnSet(id)
      .InstallState(3)
      .Set("is_lock", 0)
      .Title("the title of " + id)
      .Set("widget_category", "the category of " + id);
}

TEST_F(Drivers, WriteTwoLinesOfEachRecord) {
  const App a = AppForItsLines("a");
  const App b = AppForItsLines("b");
  device.Setting("db/appstore/ratingvalue", "18+").Install(a).Install(b);
  ASSERT_EQ(List(2), 0);
  std::vector<std::string> lines = RecordLines(a);
  for (const std::string& line : RecordLines(b)) lines.push_back(line);
  EXPECT_EQ(MessagesAfterTheRows(log), lines);
}

TEST_F(Drivers, WriteTheUseCountWithoutASign) {
  const App a = AppForItsLines("a").UseCount(-1);
  device.Install(a);
  ASSERT_EQ(List(1), 0);
  const std::vector<std::string> lines = MessagesAfterTheRows(log);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_NE(lines[1].find(",use_count = 4294967295,is_display = "), std::string::npos) << lines[1];
}

TEST_F(Drivers, WriteTheTwoLinesOfTheirOneRecord) {
  const App a = AppForItsLines("a");
  device.Setting("db/appstore/ratingvalue", "18+").Install(a).Install(AppForItsLines("b"));
  const TavLock lock(g_Mute);
  tav_app_info_s info;
  ASSERT_EQ(GetAppsTableInfo(&info, kEverything, {}), 0);
  EXPECT_EQ(MessagesAfterTheRows(log), RecordLines(a));
  EXPECT_EQ(log.Messages('I').size(), log.Messages().size());
}

TEST_F(Drivers, WriteTheLinesOfEmptyRecordsToo) {
  ASSERT_EQ(List(1), 0);
  EXPECT_EQ(MessagesAfterTheRows(log).size(), 2U);
}

TEST_F(Drivers, DoNothingForANullRecord) {
  const TavLock lock(g_Mute);
  AgeRating rating;
  m_GetWidgetInfo(nullptr, rating);
  EXPECT_TRUE(log.Lines().empty());
}

}  // namespace
