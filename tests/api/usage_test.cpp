// SPDX-License-Identifier: Apache-2.0
//
// Whether an app is recently or most used.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "api/log_texts.h"
#include "support/device.h"
#include "support/writer.h"
#include "tav_db_api.h"

namespace {

using test::App;
using test::kIsNull;
using Ids = std::vector<std::string>;

struct Usage {
  const char* name;
  int (*check)(const char* app_id);
  const char* closing;  // of the line that closes a call, between "app <id> " and the result
};

void PrintTo(const Usage& usage, std::ostream* out) {
  *out << usage.name;
}

const Usage kRecently = {"Recently", tav_check_is_recently_used_app,
                         ",check is recently used app ret:"};
const Usage kMost = {"Most", tav_check_is_most_used_app, ",check is most used app ret:"};

// An app whose use count and launch date put it at this rank; the higher, the more used.
App Used(const std::string& id, int rank) {
  return App(id).UseCount(rank).LaunchDate("2026-03-0" + std::to_string(rank));
}

class UsageTest : public ::testing::TestWithParam<Usage> {
 protected:
  static int Check(const char* id) { return GetParam().check(id); }
  // Those of the ids that are told to be used.
  static Ids Told(const Ids& ids) {
    Ids told;
    for (const std::string& id : ids) {
      const int result = Check(id.c_str());
      EXPECT_TRUE(result == 0 || result == -1) << id << " gave " << result;
      if (result == 0) told.push_back(id);
    }
    return told;
  }
  std::string Closing(const std::string& id, int result) const {
    return "app " + id + " " + GetParam().closing + std::to_string(result) + ".";
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_P(UsageTest, TellsTheFirstThreeAndNotTheFourth) {
  device.Install(Used("b", 2)).Install(Used("d", 4)).Install(Used("a", 1)).Install(Used("c", 3));
  EXPECT_EQ(Told({"a", "b", "c", "d"}), (Ids{"b", "c", "d"}));
}

TEST_P(UsageTest, TellsFewerWhenFewerWereUsed) {
  EXPECT_EQ(Told({"a"}), Ids());
  device.Install(Used("a", 1)).Install(Used("b", 2)).Install(App("never"));
  EXPECT_EQ(Told({"a", "b", "never", "none"}), (Ids{"a", "b"}));
}

TEST_P(UsageTest, NeverTellsAnAppWithoutAUseCount) {
  device.Install(App("zero").UseCount(0).LaunchDate("2026-03-09"))
      .Install(App("negative").UseCount(-1).LaunchDate("2026-03-09"))
      .Install(App("null").Null("use_count").LaunchDate("2026-03-09"))
      .Install(App("one").UseCount(1).LaunchDate("2026-03-01"));
  EXPECT_EQ(Told({"zero", "negative", "null", "one"}), Ids{"one"});
}

TEST_P(UsageTest, NeitherTellsNorCountsInvisibleApps) {
  device.Install(Used("hidden", 9).Hidden())
      .Install(Used("installing", 8).InstallState(2))
      .Install(Used("unavailable", 7).Unavailable())
      .Install(Used("marked for reset", 6).MarkedForReset())
      .Install(Used("stateless", 5).Null("install_state"))
      .Install(Used("a", 1))
      .Install(Used("b", 2))
      .Install(Used("c", 3));
  EXPECT_EQ(
      Told({"hidden", "installing", "unavailable", "marked for reset", "stateless", "a", "b", "c"}),
      (Ids{"a", "b", "c"}));
}

TEST_P(UsageTest, ComparesTheWholeId) {
  device.Install(Used("org.example.clock", 1).TizenId("t").Package("p").RunTitle("r"));
  EXPECT_EQ(Told({"org.example.cloc", "org.example.clock2", "Org.example.clock", "t", "p", "r", "%",
                  "org.example.clock"}),
            Ids{"org.example.clock"});
}

TEST_P(UsageTest, TakesQuotesPercentSignsAndSqlForData) {
  for (const char* id : {"it's", "50%s", "?", "x'; drop table widgetinfo; --", "a' or '1'='1"}) {
    device.Sql("delete from widgetinfo").Install(Used("other", 1));
    EXPECT_EQ(Check(id), -1) << id;
    device.Install(Used(id, 2));
    EXPECT_EQ(Check(id), 0) << id;
  }
}

TEST_P(UsageTest, RefusesNoIdWithoutTouchingTheDatabase) {
  EXPECT_EQ(Check(nullptr), -1);
  EXPECT_EQ(Check(""), -1);
  EXPECT_EQ(log.Messages(), (std::vector<std::string>{kIsNull, kIsNull}));
  EXPECT_TRUE(log.HasNotice(kIsNull));
}

TEST_P(UsageTest, RefusesDuringARecoveryOfThePackageManager) {
  device.Install(Used("a", 1)).Write("opt/dbspace/pkgreinstall", "");
  EXPECT_EQ(Check("a"), -1);
  EXPECT_TRUE(log.Has("Pkgmgr is recovering"));
  EXPECT_TRUE(log.Has(Closing("a", -1)));
  EXPECT_FALSE(log.Has("Connected to DB"));
  std::filesystem::remove(device.Root() / "opt/dbspace/pkgreinstall");
  EXPECT_EQ(Check("a"), 0);
}

TEST_P(UsageTest, TestsTheIdBeforeTheRecovery) {
  device.Write("opt/dbspace/pkgreinstall", "");
  EXPECT_EQ(Check(""), -1);
  EXPECT_FALSE(log.Has("Pkgmgr is recovering"));
}

TEST_P(UsageTest, AnswersDuringAFactoryReset) {
  device.Install(Used("a", 1));
  for (const int type : {1, 2}) {
    device.FactoryReset(type);
    EXPECT_EQ(Told({"a", "b"}), Ids{"a"});
  }
  EXPECT_FALSE(log.Has("FactoryReset is true"));
  EXPECT_FALSE(log.Has("factory reset[1]"));
}

TEST_P(UsageTest, SaysWhatItChecksAndWhatCameOfIt) {
  device.Install(Used("a", 1));
  EXPECT_EQ(Check("a"), 0);
  EXPECT_EQ(Check("b"), -1);
  const std::string order = std::string(GetParam().name) == "Most" ? "use_count" : "launch_date";
  EXPECT_TRUE(log.Has("check [a] is recently used app or not"));
  EXPECT_TRUE(
      log.Has("app id:a, strSql:select id from widgetinfo where is_need_reset = ?"
              " and is_app_available = ? and install_state = ? and is_hidden = ? and use_count > ? "
              " order by " +
              order + " desc limit ?"));
  EXPECT_TRUE(log.Has("[a] is recently(or most) used app"));
  EXPECT_TRUE(log.Has("[a] check db finish, result [0]"));
  EXPECT_TRUE(log.Has(Closing("a", 0)));
  EXPECT_TRUE(log.Has("[b] check db finish, result [-1]"));
  EXPECT_TRUE(log.Has(Closing("b", -1)));
  EXPECT_EQ(log.Messages('E'), std::vector<std::string>());
}

TEST_P(UsageTest, IsBusyWhileTheDatabaseIsKeptAndAnswersAfterwards) {
  device.Install(Used("a", 1));
  {
    const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
    EXPECT_EQ(Check("a"), -2);
    EXPECT_TRUE(log.HasError("Failed to prepare"));
    EXPECT_TRUE(log.Has(Closing("a", -2)));
  }
  EXPECT_EQ(Check("a"), 0);
  log.Forget();
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  EXPECT_EQ(Check("a"), -2);
  EXPECT_TRUE(log.Has("get app info fail:sql busy"));
  EXPECT_TRUE(log.Has(Closing("a", -2)));
}

TEST_P(UsageTest, FailsWithoutADatabaseAndReleasesTheLock) {
  device.Install(Used("a", 1));
  std::filesystem::rename(device.DatabaseFile(), device.Root() / "aside");
  EXPECT_EQ(Check("a"), -1);
  EXPECT_TRUE(log.HasError("Failed to prepare"));
  std::filesystem::rename(device.Root() / "aside", device.DatabaseFile());
  EXPECT_EQ(Check("a"), 0);
}

INSTANTIATE_TEST_SUITE_P(Used, UsageTest, ::testing::Values(kRecently, kMost),
                         [](const auto& usage) { return std::string(usage.param.name); });

// ---- What tells the two apart ----

class UsageOrder : public ::testing::Test {
 protected:
  UsageOrder() {
    device.Install(App("often, long ago").UseCount(100).LaunchDate("2026-01-01"))
        .Install(App("often").UseCount(90).LaunchDate("2026-01-02"))
        .Install(App("both").UseCount(80).LaunchDate("2026-03-01"))
        .Install(App("lately").UseCount(2).LaunchDate("2026-03-02"))
        .Install(App("once, today").UseCount(1).LaunchDate("2026-03-03"));
  }

  test::Device device;
};

TEST_F(UsageOrder, OfRecentUseIsTheLaunchDate) {
  EXPECT_EQ(tav_check_is_recently_used_app("once, today"), 0);
  EXPECT_EQ(tav_check_is_recently_used_app("lately"), 0);
  EXPECT_EQ(tav_check_is_recently_used_app("both"), 0);
  EXPECT_EQ(tav_check_is_recently_used_app("often"), -1);
  EXPECT_EQ(tav_check_is_recently_used_app("often, long ago"), -1);
}

TEST_F(UsageOrder, OfMostUseIsTheUseCountAsANumber) {
  EXPECT_EQ(tav_check_is_most_used_app("often, long ago"), 0);
  EXPECT_EQ(tav_check_is_most_used_app("often"), 0);
  EXPECT_EQ(tav_check_is_most_used_app("both"), 0);
  EXPECT_EQ(tav_check_is_most_used_app("lately"), -1);
  EXPECT_EQ(tav_check_is_most_used_app("once, today"), -1);
}

}  // namespace
