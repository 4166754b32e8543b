// SPDX-License-Identifier: Apache-2.0
//
// The two questions by run title. They test no state of the platform themselves: what a reset
// makes of them follows from the lookup that they use.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "api/log_texts.h"
#include "support/device.h"
#include "support/writer.h"
#include "tav_db_api.h"

namespace {

using test::App;
using test::kIsNull;
using test::kNoRecord;

constexpr char kIsEmpty[] = "runtitile is empty ";

class RunTitle : public ::testing::Test {
 protected:
  RunTitle() { device.Install(App("clock").RunTitle("Clock")); }

  // The result, and the id that was handed out or "untouched".
  static std::string IdOf(const char* run_title) {
    char before[] = "untouched";
    char* id = before;
    const int result = tav_get_appid_by_runtitle(run_title, &id);
    std::string answer = std::to_string(result) + " " + id;
    if (id != before) std::free(id);
    return answer;
  }
  // The result, and the status, which was 4711.
  static std::string StatusOf(const char* run_title) {
    int status = 4711;
    const int result = tav_check_app_installed_by_runtitle(run_title, &status);
    return std::to_string(result) + " " + std::to_string(status);
  }
  void StartRecovery() { device.Write("opt/dbspace/pkgreinstall", ""); }
  void EndRecovery() { std::filesystem::remove(device.Root() / "opt/dbspace/pkgreinstall"); }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(RunTitle, OfAnInstalledAppHasItsIdAndStatusZero) {
  EXPECT_EQ(IdOf("Clock"), "0 clock");
  EXPECT_EQ(StatusOf("Clock"), "0 0");
  EXPECT_TRUE(log.Has("Finish,runtitile:[Clock],status:[0]"));
  EXPECT_FALSE(log.Has(kNoRecord));
}

TEST_F(RunTitle, OfNoAppHasNoIdAndStatusOne) {
  EXPECT_EQ(IdOf("Weather"), "-1 untouched");
  EXPECT_TRUE(log.HasError(kNoRecord));
  EXPECT_EQ(StatusOf("Weather"), "0 1");
  EXPECT_TRUE(log.Has("Finish,runtitile:[Weather],status:[1]"));
}

TEST_F(RunTitle, OfAnInvisibleAppHasNoIdAndStatusOne) {
  for (const App& app : {App("a").InstallState(2), App("a").InstallState(4), App("a").Unavailable(),
                         App("a").MarkedForReset()}) {
    device.Sql("delete from widgetinfo").Install(App(app).RunTitle("A"));
    EXPECT_EQ(IdOf("A"), "-1 untouched");
    EXPECT_EQ(StatusOf("A"), "0 1");
  }
}

TEST_F(RunTitle, OfAHiddenAppHasItsIdAndStatusZero) {
  device.Install(App("hidden").RunTitle("Hidden").Hidden());
  EXPECT_EQ(IdOf("Hidden"), "0 hidden");
  EXPECT_EQ(StatusOf("Hidden"), "0 0");
}

TEST_F(RunTitle, HasNoIdAndStatusOneDuringAFactoryReset) {
  for (const int type : {1, 2}) {
    device.FactoryReset(type);
    log.Forget();
    EXPECT_EQ(IdOf("Clock"), "-1 untouched");
    EXPECT_TRUE(log.HasError(kNoRecord));
    EXPECT_EQ(StatusOf("Clock"), "0 1");
    EXPECT_TRUE(log.Has("Finish,runtitile:[Clock],status:[1]"));
    EXPECT_EQ(log.Count("FactoryReset is true"), 2);
  }
  EXPECT_FALSE(log.Has("Connected to DB"));
  device.FactoryReset(0);
  EXPECT_EQ(IdOf("Clock"), "0 clock");
  EXPECT_EQ(StatusOf("Clock"), "0 0");
}

TEST_F(RunTitle, HasNoIdAndStatusOneDuringARecoveryOfThePackageManager) {
  StartRecovery();
  EXPECT_EQ(IdOf("Clock"), "-1 untouched");
  EXPECT_EQ(StatusOf("Clock"), "0 1");
  EXPECT_EQ(log.Count("Pkgmgr is recovering"), 2);
  EXPECT_FALSE(log.Has("Connected to DB"));
  EndRecovery();
  EXPECT_EQ(IdOf("Clock"), "0 clock");
  EXPECT_EQ(StatusOf("Clock"), "0 0");
}

TEST_F(RunTitle, IsRefusedWhenAnArgumentIsNull) {
  EXPECT_EQ(IdOf(nullptr), "-1 untouched");
  EXPECT_EQ(StatusOf(nullptr), "-1 4711");
  EXPECT_EQ(tav_get_appid_by_runtitle("Clock", nullptr), -1);
  EXPECT_EQ(tav_check_app_installed_by_runtitle("Clock", nullptr), -1);
  EXPECT_EQ(log.Count(kIsNull), 4);
  EXPECT_TRUE(log.HasNotice(kIsNull));
  EXPECT_FALSE(log.Has("Connected to DB"));
  EXPECT_FALSE(log.Has("Finish,runtitile:[Clock],status:[1]"));
}

TEST_F(RunTitle, IsRefusedWhenItIsEmpty) {
  EXPECT_EQ(IdOf(""), "-1 untouched");
  EXPECT_EQ(log.Count(kIsEmpty), 1);
  EXPECT_EQ(StatusOf(""), "-1 4711");
  EXPECT_EQ(log.Count(kIsEmpty), 2);
  EXPECT_TRUE(log.HasNotice(kIsEmpty));
  EXPECT_FALSE(log.Has("Connected to DB"));
}

TEST_F(RunTitle, IsTestedForNullAndEmptyDuringAResetAsWell) {
  device.FactoryReset(1);
  StartRecovery();
  EXPECT_EQ(StatusOf(nullptr), "-1 4711");
  EXPECT_EQ(StatusOf(""), "-1 4711");
  EXPECT_EQ(IdOf(nullptr), "-1 untouched");
  EXPECT_EQ(log.Count(kIsNull), 2);
  EXPECT_EQ(log.Count(kIsEmpty), 1);
  EXPECT_FALSE(log.Has("FactoryReset is true"));
}

TEST_F(RunTitle, HasNoIdAndStatusOneWithoutADatabase) {
  std::filesystem::remove(device.DatabaseFile());
  EXPECT_EQ(IdOf("Clock"), "-1 untouched");
  EXPECT_EQ(StatusOf("Clock"), "0 1");
}

TEST_F(RunTitle, IsBusyWithoutAnIdAndWithStatusOneOnTheFirstQuery) {
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  EXPECT_EQ(IdOf("Clock"), "-2 untouched");
  EXPECT_TRUE(log.HasError(kNoRecord));
  EXPECT_EQ(StatusOf("Clock"), "-2 1");
  EXPECT_TRUE(log.Has("Finish,runtitile:[Clock],status:[1]"));
}

TEST_F(RunTitle, IsBusyWithoutAnIdAndWithStatusOneOnALaterQuery) {
  ASSERT_EQ(StatusOf("Clock"), "0 0");
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  EXPECT_EQ(IdOf("Clock"), "-2 untouched");
  EXPECT_EQ(StatusOf("Clock"), "-2 1");
}

}  // namespace
