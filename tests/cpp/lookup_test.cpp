// SPDX-License-Identifier: Apache-2.0
//
// Single apps, through the C++ layer.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "answers.h"

namespace {

using tav::AppInfo;
using tav::Result;
using tav::Status;
using tav::TextOf;
using test::App;

bool IsZeroed(const AppInfo& info) {
  const AppInfo zeros = {};
  return std::memcmp(&info, &zeros, sizeof(info)) == 0;
}

class CppLookup : public ::testing::Test {
 protected:
  CppLookup() { device.Install(App("clock").TizenId("t.clock").RunTitle("Clock").Title("Ticks")); }

  static void ExpectFailure(const Result<AppInfo>& app, Status status) {
    EXPECT_EQ(app.status(), status);
    EXPECT_FALSE(app.has_value());
    EXPECT_TRUE(IsZeroed(*app));
  }

  test::Device device;
};

TEST_F(CppLookup, GivesTheRecordThatTheInterfaceGives) {
  device.Install(test::AppWithEveryColumnSet("full"));
  AppInfo expected;
  ASSERT_EQ(tav_get_app_info("full", &expected), 0);
  const Result<AppInfo> app = tav::GetAppInfo("full");
  EXPECT_EQ(app.status(), Status::kOk);
  EXPECT_EQ(std::memcmp(&*app, &expected, sizeof(expected)), 0);
  EXPECT_EQ(TextOf(app->app_title), "text title");
}

TEST_F(CppLookup, FindsAnAppByEachOfItsNames) {
  for (const Result<AppInfo>& app :
       {tav::GetAppInfo("clock"), tav::GetAppInfo("t.clock"), tav::GetAppInfoByTizenId("t.clock"),
        tav::GetAppInfoByRunTitle("Clock")}) {
    ASSERT_TRUE(app);
    EXPECT_EQ(TextOf(app->app_id), "clock");
    EXPECT_EQ(TextOf(app->app_title), "Ticks");
  }
  ExpectFailure(tav::GetAppInfoByRunTitle("clock"), Status::kFailed);
}

TEST_F(CppLookup, TakesTextsOfEveryKind) {
  const Result<tav::Text> id = tav::GetAppIdByRunTitle("Clock");
  EXPECT_TRUE(tav::GetAppInfo(std::string("clock")));
  EXPECT_TRUE(tav::GetAppInfo(*id));
  EXPECT_TRUE(tav::GetAppInfo(tav::GetAppIdByRunTitle("Clock").value()));
  const Result<AppInfo> app = tav::GetAppInfo("clock");
  EXPECT_TRUE(tav::GetAppInfo(app->app_id));
}

TEST_F(CppLookup, FailsForAnUnknownAnEmptyAndNoId) {
  ExpectFailure(tav::GetAppInfo("none"), Status::kFailed);
  ExpectFailure(tav::GetAppInfo(""), Status::kFailed);
  ExpectFailure(tav::GetAppInfo(nullptr), Status::kFailed);
  ExpectFailure(tav::GetAppInfoByTizenId(tav::Text()), Status::kFailed);
  ExpectFailure(tav::GetAppInfoByRunTitle(nullptr), Status::kFailed);
}

TEST_F(CppLookup, FailsDuringAFactoryReset) {
  device.FactoryReset(1);
  ExpectFailure(tav::GetAppInfo("clock"), Status::kFailed);
  EXPECT_TRUE(device.GetLog().Has("FactoryReset is true"));
}

TEST_F(CppLookup, IsBusyWithARecordOfZerosWhileTheDatabaseIsBusy) {
  const auto writer = test::BusyWriter(device);
  ExpectFailure(tav::GetAppInfo("clock"), Status::kBusy);
  ExpectFailure(tav::GetAppInfoByTizenId("clock"), Status::kBusy);
  ExpectFailure(tav::GetAppInfoByRunTitle("Clock"), Status::kBusy);
}

}  // namespace
