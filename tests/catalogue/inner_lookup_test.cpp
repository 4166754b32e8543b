// SPDX-License-Identifier: Apache-2.0
//
// The lookup of one inner record: its statement, what it leaves alone, and copies of records.
#include <gtest/gtest.h>

#include <chrono>

#include "inner_members.h"
#include "support/device.h"
#include "support/sqlite_recorder.h"
#include "support/writer.h"
#include "tav_db_api/tav_db_client_inner.h"

namespace {

using test::App;
using test::MembersOf;
using Members = std::map<std::string, std::string>;

constexpr char kRating[] = "db/appstore/ratingvalue";

class InnerLookup : public ::testing::Test {
 protected:
  // A record with a value of its own in every member, none of them a default or a column's.
  static _APPS_INNER_INFO_T Filled() {
    _APPS_INNER_INFO_T app;
    for (const auto& text : test::kInnerTexts) app.*text.member = std::string("old ") + text.name;
    int next = -1000;
    for (const auto& number : test::kInnerNumbers) app.*number.member = next--;
    for (const auto& flag : test::kInnerFlags) app.*flag.member = true;
    return app;
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(InnerLookup, AsksForTheAppByFiveNamesAndWhetherItIsThere) {
  _APPS_INNER_INFO_T app;
  EXPECT_EQ(GetAppInnerInfo("another", &app), -1);  // opens the database
  const test::SqliteCalls expected = {
      std::string(test::kSelectApps) +
          " where (id = ?  or tizen_id = ? or pkgname = ? or hybrid_app = ?"
          " or reserved_string_16 = ?)  and install_state = ? and is_app_available = ?"
          " and is_need_reset = ? ",
      "1 'it''s' -1",
      "2 'it''s' -1",
      "3 'it''s' -1",
      "4 'it''s' -1",
      "5 'it''s' -1",
      "6 3",
      "7 1",
      "8 0",
      "finalize"};
  EXPECT_EQ(test::CallsToSqlite([&] { GetAppInnerInfo("it''s", &app); }), expected);
  device.InstallAll({App("it''s"), App("b").Package("it''s")});
  EXPECT_EQ(test::CallsToSqlite([&] { GetAppInnerInfo("it''s", &app); }), expected);
  EXPECT_EQ(app.strAppID, "it''s");
}

TEST_F(InnerLookup, SaysWhatItIsAskedForAndWhatCameOfIt) {
  device.Install(App("a"));
  _APPS_INNER_INFO_T app;
  EXPECT_EQ(GetAppInnerInfo("a", &app), 0);
  EXPECT_EQ(log.Count("Start, app_id:[a]"), 1);
  EXPECT_EQ(log.Count("set app_info success"), 1);
  EXPECT_EQ(log.Count("Finish app_id:[a],ret[0]"), 1);
  EXPECT_EQ(GetAppInnerInfo("b", &app), -1);
  EXPECT_EQ(log.Count("Start, app_id:[b]"), 1);
  EXPECT_EQ(log.Count("set app_info success"), 1);
  EXPECT_EQ(log.Count("Finish app_id:[b],ret[-1]"), 1);
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  EXPECT_EQ(GetAppInnerInfo("a", &app), -2);
  EXPECT_EQ(log.Count("Finish app_id:[a],ret[-2]"), 1);
}

TEST_F(InnerLookup, FailsWhenItsStatementCannotBePrepared) {
  device.Install(App("a")).Sql("alter table widgetinfo rename to aside");
  _APPS_INNER_INFO_T app = Filled();
  EXPECT_EQ(GetAppInnerInfo("a", &app), -1);
  EXPECT_EQ(MembersOf(app), MembersOf(Filled()));
  EXPECT_TRUE(log.HasError("unknown type 1"));
  EXPECT_TRUE(log.Has("Finish app_id:[a],ret[-1]"));
  device.Sql("alter table aside rename to widgetinfo");
  EXPECT_EQ(GetAppInnerInfo("a", &app), 0);
}

TEST_F(InnerLookup, LeavesARecordThatWasFilledBeforeAloneWhenNothingMatches) {
  device.Install(App("a"));
  _APPS_INNER_INFO_T app = Filled();
  EXPECT_EQ(GetAppInnerInfo("b", &app), -1);
  EXPECT_EQ(MembersOf(app), MembersOf(Filled()));
}

TEST_F(InnerLookup, LeavesARecordThatWasFilledBeforeAloneWhenItIsRefused) {
  device.Install(App("a")).FactoryReset(1);
  _APPS_INNER_INFO_T app = Filled();
  EXPECT_EQ(GetAppInnerInfo("a", &app), -1);
  EXPECT_EQ(MembersOf(app), MembersOf(Filled()));
}

TEST_F(InnerLookup, WritesEveryMemberButTheSourceOfARecordThatWasFilledBefore) {
  device.Install(App("a").Set("install_source_type", 5));
  _APPS_INNER_INFO_T app = Filled();
  ASSERT_EQ(GetAppInnerInfo("a", &app), 0);
  Members expected = MembersOf({});
  expected["strAppID"] = "a";
  expected["iInstallState"] = "3";
  expected["iSourceType"] = MembersOf(Filled())["iSourceType"];
  EXPECT_EQ(MembersOf(app), expected);
}

TEST_F(InnerLookup, TakesTheFirstRowWhenAnIdIsThePackageOfAnotherAppToo) {
  device.InstallAll({App("first").Package("shared"), App("shared"), App("last").TizenId("shared")});
  _APPS_INNER_INFO_T app;
  EXPECT_EQ(GetAppInnerInfo("shared", &app), 0);
  EXPECT_EQ(app.strAppID, "first");
  device.Sql("delete from widgetinfo where id = 'first'");
  EXPECT_EQ(GetAppInnerInfo("shared", &app), 0);
  EXPECT_EQ(app.strAppID, "shared");
  device.Sql("delete from widgetinfo where id = 'shared'");
  EXPECT_EQ(GetAppInnerInfo("shared", &app), 0);
  EXPECT_EQ(app.strAppID, "last");
}

TEST_F(InnerLookup, PassesOverTheFirstRowWhenItsAppIsNotThere) {
  device.InstallAll({App("first").Package("shared").Unavailable(), App("shared")});
  _APPS_INNER_INFO_T app;
  EXPECT_EQ(GetAppInnerInfo("shared", &app), 0);
  EXPECT_EQ(app.strAppID, "shared");
}

class InnerListLocks : public InnerLookup {
 protected:
  InnerListLocks() {
    device.InstallAll({App("five").AgeLimit(99).Set("is_lock", 5), App("zero").AgeLimit(99),
                       App("minus").AgeLimit(-1).Set("is_lock", -1)});
  }
  static std::map<std::string, int> Listed() {
    std::vector<_APPS_INNER_INFO_T> apps;
    EXPECT_EQ(GetTAVAppList("", "", true, apps), 0);
    std::map<std::string, int> locks;
    for (const auto& app : apps) locks[app.strAppID] = app.iIsLock;
    return locks;
  }
  const std::map<std::string, int> as_read = {{"five", 5}, {"zero", 0}, {"minus", -1}};
};

TEST_F(InnerListLocks, StayAsReadWhenTheSettingSetsNoLimit) {
  for (const char* setting : {"OFF", "ALL", "", "9", "+"}) {
    device.Setting(kRating, setting);
    EXPECT_EQ(Listed(), as_read) << setting;
  }
}

TEST_F(InnerListLocks, StayAsReadWhenTheSettingCannotBeRead) {
  EXPECT_EQ(Listed(), as_read);
  EXPECT_TRUE(log.HasError("failed to get db/appstore/ratingvalue value"));
}

TEST_F(InnerListLocks, BecomeOneOrZeroWhenTheSettingSetsALimit) {
  device.Setting(kRating, "99+");
  EXPECT_EQ(Listed(), (std::map<std::string, int>{{"five", 1}, {"zero", 1}, {"minus", 1}}));
  device.Setting(kRating, "100+");
  EXPECT_EQ(Listed(), (std::map<std::string, int>{{"five", 1}, {"zero", 0}, {"minus", 1}}));
}

TEST_F(InnerListLocks, FollowALimitThatIsNoNumberAsZero) {
  device.Setting(kRating, "teen");
  EXPECT_EQ(Listed(), (std::map<std::string, int>{{"five", 1}, {"zero", 1}, {"minus", 1}}));
  device.Sql("update widgetinfo set is_lock = 0");
  EXPECT_EQ(Listed(), (std::map<std::string, int>{{"five", 1}, {"zero", 1}, {"minus", 0}}));
}

TEST_F(InnerLookup, GivesARecordWhoseCopiesAreDeep) {
  device.Install(test::AppWithEveryColumnSet("a").Title(std::string(5000, 't')));
  _APPS_INNER_INFO_T app;
  ASSERT_EQ(GetAppInnerInfo("a", &app), 0);
  const Members members = MembersOf(app);
  _APPS_INNER_INFO_T copy = app;
  _APPS_INNER_INFO_T assigned;
  assigned = app;
  for (const auto& text : test::kInnerTexts) {
    for (char& byte : app.*text.member) byte = 'x';
  }
  app = {};
  EXPECT_EQ(MembersOf(copy), members);
  EXPECT_EQ(MembersOf(assigned), members);
  const _APPS_INNER_INFO_T moved = std::move(copy);
  EXPECT_EQ(MembersOf(moved), members);
}

}  // namespace
