// SPDX-License-Identifier: Apache-2.0
//
// The list engine itself: the reader of multi-screen records over the caller's array, and the
// pointer that a list does not use.
#include "tav_db_api/tav_db_client_app_list.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include "support/device.h"

namespace {

using test::App;
using Ids = std::vector<std::string>;

class AppListEngine : public ::testing::Test {
 protected:
  AppListEngine() { std::memset(records, 'x', sizeof(records)); }

  int Read(int count, const std::string& where, const std::vector<_TAVDB_BIND_T>& binds = {}) {
    const TavLock lock(g_Mute);
    return GetAppsMSList(records, count, where, binds);
  }
  // The ids of the array; a record that was not touched is all "x".
  Ids ReadIds() const {
    Ids ids;
    for (const tav_app_ms_s& record : records) {
      const bool is_untouched = record.app_id[TAV_TEXT_SIZE - 1] == 'x';
      ids.emplace_back(is_untouched ? "untouched" : record.app_id);
    }
    return ids;
  }

  test::Device device;
  test::Log& log = device.GetLog();
  tav_app_ms_s records[4];
};

TEST_F(AppListEngine, FillsAsManyShortRecordsAsThereAreRowsAndZeroesTheRest) {
  device.InstallAll({App("a").Set("is_multi_screen2", 5), App("b")});
  EXPECT_EQ(Read(3, " order by id"), 0);
  EXPECT_EQ(ReadIds(), (Ids{"a", "b", "", "untouched"}));
  EXPECT_EQ(records[0].is_multi_screen2, 5);
  EXPECT_EQ(records[1].is_multi_screen2, 0);
  EXPECT_EQ(records[2].is_multi_screen2, 0);
  EXPECT_TRUE(log.Has("sql:select id,is_multi_screen2 from widgetinfo order by id"));
}

TEST_F(AppListEngine, StepsOverTheRowsThatTheShortRecordsDoNotHold) {
  device.InstallAll({App("a"), App("b"), App("c"), App("d")});
  EXPECT_EQ(Read(2, " order by id desc"), 0);
  EXPECT_EQ(ReadIds(), (Ids{"d", "c", "untouched", "untouched"}));
  EXPECT_EQ(log.Count("SQLITE_ROW : has another row ready"), 4);
  EXPECT_TRUE(log.Has("SQLITE_DONE : has finished executing"));
  EXPECT_EQ(log.Count("set app_info success"), 2);
}

TEST_F(AppListEngine, FailsWithoutAnyRowForShortRecords) {
  EXPECT_EQ(Read(2, ""), -1);
  EXPECT_EQ(ReadIds(), (Ids{"", "", "untouched", "untouched"}));
}

TEST_F(AppListEngine, BindsTheValuesOfShortRecordsInOrder) {
  device.InstallAll({App("a").Index(1).Type(2), App("b").Index(2).Type(1)});
  std::vector<_TAVDB_BIND_T> binds;
  save_db_bind(binds, 2);
  save_db_bind(binds, 1);
  EXPECT_EQ(Read(4, " where app_index = ? and app_type = ?", binds), 0);
  EXPECT_EQ(ReadIds(), (Ids{"b", "", "", ""}));
}

TEST_F(AppListEngine, LeavesShortRecordsAloneWhenTheQueryCannotBePrepared) {
  EXPECT_EQ(Read(2, " where no_such_column = 1"), -1);
  EXPECT_EQ(ReadIds(), (Ids{"untouched", "untouched", "untouched", "untouched"}));
}

TEST_F(AppListEngine, NeedsOnlyThePointerOfTheKindOfRecordAskedFor) {
  device.Install(App("a"));
  const tav_app_filter_s every_app = {65535, 0, 65535};
  const TavLock lock(g_Mute);
  int count = 0;
  tav_app_info_s* full = nullptr;
  ASSERT_EQ(GetAppList(every_app, TAV_APP_VIEWMODE_TITLE, -1, 0, false, &count, &full, nullptr), 0);
  const MallocPtr<tav_app_info_s> full_owner(full);
  EXPECT_EQ(count, 1);
  EXPECT_STREQ(full->app_id, "a");

  tav_app_ms_s* brief = nullptr;
  ASSERT_EQ(GetAppList(every_app, TAV_APP_VIEWMODE_TITLE, -1, 0, true, &count, nullptr, &brief), 0);
  const MallocPtr<tav_app_ms_s> brief_owner(brief);
  EXPECT_EQ(count, 1);
  EXPECT_STREQ(brief->app_id, "a");

  EXPECT_EQ(GetAppList(every_app, TAV_APP_VIEWMODE_TITLE, -1, 0, true, &count, &full, nullptr), -1);
  EXPECT_EQ(GetAppList(every_app, TAV_APP_VIEWMODE_TITLE, -1, 0, false, &count, nullptr, &brief),
            -1);
}

}  // namespace
