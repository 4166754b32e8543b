// SPDX-License-Identifier: Apache-2.0
//
// The inner record: its defaults, the column of each member, and its lookup.
#include "tav_db_api/tav_db_client_inner.h"

#include <gtest/gtest.h>

#include <chrono>

#include "support/device.h"
#include "support/writer.h"
#include "tav_db_api/tav_db_client_inner_fields.h"

namespace {

using test::App;

class InnerRecord : public ::testing::Test {
 protected:
  _APPS_INNER_INFO_T Lookup(const std::string& id) {
    _APPS_INNER_INFO_T app;
    EXPECT_EQ(GetAppInnerInfo(id, &app), 0);
    return app;
  }
  // What the lookup makes of an app's lock with this setting.
  int LockWith(const std::string& setting, const App& app) {
    device.Setting("db/appstore/ratingvalue", setting);
    device.Sql("delete from widgetinfo").Install(app);
    return Lookup("a").iIsLock;
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(InnerRecord, IsEmptyAndZeroAtFirstButForItsSource) {
  const _APPS_INNER_INFO_T app;
  for (const auto& field : kInnerTexts) EXPECT_EQ(app.*field.member, "");
  for (const auto& field : kInnerIntegers) {
    EXPECT_EQ(app.*field.member, field.column == kInstallSourceType ? 1 : 0);
  }
  for (const auto& field : kInnerFlags) EXPECT_FALSE(app.*field.member);
}

TEST_F(InnerRecord, TakesEachMemberFromItsOwnColumnAndLeavesItsSource) {
  const App given = test::AppWithEveryColumnSet("a");
  device.Install(given);
  const _APPS_INNER_INFO_T app = Lookup("a");
  for (const auto& field : kInnerTexts) {
    const std::string column = Column[field.column];
    EXPECT_EQ(app.*field.member, column == "id" ? "a" : "text " + column) << column;
  }
  for (const auto& field : kInnerIntegers) {
    if (field.column == kInstallSourceType || field.column == kIsLock) continue;
    const std::string column = Column[field.column];
    const int expected = column == "install_state" ? 3 : std::get<int>(given.Values().at(column));
    EXPECT_EQ(app.*field.member, expected) << column;
  }
  for (const auto& field : kInnerFlags) EXPECT_TRUE(app.*field.member) << Column[field.column];
  EXPECT_EQ(app.iSourceType, 1);
}

TEST_F(InnerRecord, ReadsAFlagAsTrueForAnyValueButZero) {
  device.Install(App("a")
                     .Set("reserved_tinyint_10", -1)
                     .Set("reserved_tinyint_11", 0)
                     .Set("reserved_tinyint_15", 7));
  const _APPS_INNER_INFO_T app = Lookup("a");
  EXPECT_TRUE(app.bReserved10);
  EXPECT_FALSE(app.bReserved11);
  EXPECT_TRUE(app.bReserved15);
}

TEST_F(InnerRecord, HoldsATextOfAnyLength) {
  const std::string title(5000, 't');
  device.Install(App("a").Title(title));
  EXPECT_EQ(Lookup("a").strTitle, title);
}

TEST_F(InnerRecord, IsFoundByAnyOfItsFiveNames) {
  device.Install(App("id")
                     .TizenId("tizen")
                     .Package("package")
                     .Set("hybrid_app", "native")
                     .Set("reserved_string_16", "android"));
  for (const char* name : {"id", "tizen", "package", "native", "android"}) {
    EXPECT_EQ(Lookup(name).strAppID, "id");
    EXPECT_TRUE(log.Has("Finish app_id:[" + std::string(name) + "],ret[0]"));
  }
}

TEST_F(InnerRecord, IsTheFirstRowOfThoseThatMatch) {
  device.Install(App("b").Package("shared")).Install(App("a").Package("shared"));
  EXPECT_EQ(Lookup("shared").strAppID, "b");
}

TEST_F(InnerRecord, IsNotFoundWhenTheAppIsNotThereForCallers) {
  for (const App& app :
       {App("a").InstallState(2), App("a").Unavailable(), App("a").MarkedForReset()}) {
    device.Sql("delete from widgetinfo").Install(app);
    _APPS_INNER_INFO_T found;
    EXPECT_EQ(GetAppInnerInfo("a", &found), -1);
    EXPECT_EQ(found.strAppID, "");
  }
}

TEST_F(InnerRecord, IsRefusedWithItsReasonInTheOrderOfTheChecks) {
  _APPS_INNER_INFO_T app;
  device.FactoryReset(1).Write("opt/dbspace/pkgreinstall", "");
  EXPECT_EQ(GetAppInnerInfo("", nullptr), -1);
  EXPECT_TRUE(log.HasNotice("FactoryReset is true"));
  EXPECT_FALSE(log.Has("Pkgmgr is recovering"));
  device.FactoryReset(0);
  EXPECT_EQ(GetAppInnerInfo("", nullptr), -1);
  EXPECT_TRUE(log.HasError("Pkgmgr is recovering"));
  EXPECT_FALSE(log.Has("in param is NULL "));
  std::filesystem::remove(device.Root() / "opt/dbspace/pkgreinstall");
  EXPECT_EQ(GetAppInnerInfo("", nullptr), -1);
  EXPECT_TRUE(log.Has("in param is NULL "));
  EXPECT_FALSE(log.Has("strAppID is empty "));
  EXPECT_EQ(GetAppInnerInfo("", &app), -1);
  EXPECT_TRUE(log.Has("strAppID is empty "));
}

TEST_F(InnerRecord, IsLockedByTheAgeRule) {
  EXPECT_EQ(LockWith("18+", App("a").AgeLimit(18)), 1);
  EXPECT_EQ(LockWith("18+", App("a").AgeLimit(17)), 0);
  EXPECT_EQ(LockWith("18+", App("a").AgeLimit(17).Set("is_lock", 5)), 1);
}

TEST_F(InnerRecord, KeepsItsLockAsReadWhenTheSettingSetsNoLimit) {
  for (const char* setting : {"OFF", "ALL", "", "9"}) {
    EXPECT_EQ(LockWith(setting, App("a").AgeLimit(99).Set("is_lock", 5)), 5) << setting;
    EXPECT_EQ(LockWith(setting, App("a").AgeLimit(99)), 0) << setting;
  }
  device.Unset("db/appstore/ratingvalue");
  device.Sql("delete from widgetinfo").Install(App("a").AgeLimit(99).Set("is_lock", 5));
  EXPECT_EQ(Lookup("a").iIsLock, 5);
  EXPECT_TRUE(log.HasError("failed to get db/appstore/ratingvalue value"));
}

TEST_F(InnerRecord, IsBusyWhenItsDatabaseStaysBusy) {
  device.Install(App("a"));
  Lookup("a");
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  _APPS_INNER_INFO_T app;
  EXPECT_EQ(GetAppInnerInfo("a", &app), -2);
  EXPECT_TRUE(log.Has("Get DB fail:sql busy"));
}

}  // namespace
