// SPDX-License-Identifier: Apache-2.0
//
// The lookups over databases that are missing, damaged or kept by their writer.
#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <future>

#include "support/device.h"
#include "support/writer.h"
#include "tav_db_api.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using test::App;

class DatabaseFaults : public ::testing::Test {
 protected:
  DatabaseFaults() {
    for (int i = 0; i < 200; ++i) device.Install(App("app" + std::to_string(i)));
    std::memset(&info, 'x', sizeof(info));
  }
  int Lookup() { return tav_get_app_info("app7", &info); }

  test::Device device;
  test::Log& log = device.GetLog();
  const std::string file = device.DatabaseFile().string();
  tav_app_info_s info;
};

TEST_F(DatabaseFaults, AnswersAfterAMissingFileHasAppeared) {
  std::filesystem::rename(file, file + ".aside");
  EXPECT_EQ(Lookup(), -1);
  EXPECT_EQ(info.app_id[0], 'x');
  EXPECT_TRUE(log.HasError(file + " is not a file"));
  std::filesystem::rename(file + ".aside", file);
  EXPECT_EQ(Lookup(), 0);
  EXPECT_STREQ(info.app_id, "app7");
}

TEST_F(DatabaseFaults, FailsOnAnEmptyFile) {
  std::filesystem::resize_file(file, 0);
  EXPECT_EQ(Lookup(), -1);
  EXPECT_TRUE(log.HasError("size of " + file + " is 0"));
}

TEST_F(DatabaseFaults, FailsOnADirectory) {
  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  EXPECT_EQ(Lookup(), -1);
  EXPECT_TRUE(log.HasError(file + " is not a file"));
}

TEST_F(DatabaseFaults, FailsOnAFileThatIsNoDatabase) {
  device.Write("dbspace/.tavcore.db", std::string(8192, 'g'));
  EXPECT_EQ(Lookup(), -1);
  EXPECT_TRUE(log.Has("unknown type 26"));
  EXPECT_TRUE(log.HasError(file + " integrity_check not ok"));
}

TEST_F(DatabaseFaults, FailsOnATruncatedDatabase) {
  std::filesystem::resize_file(file, 512);
  EXPECT_EQ(Lookup(), -1);
  EXPECT_TRUE(log.HasError(file + " integrity_check not ok"));
}

TEST_F(DatabaseFaults, FailsOnADatabaseWithoutTheAppsTable) {
  device.Sql("drop table widgetinfo");
  EXPECT_EQ(Lookup(), -1);
  EXPECT_EQ(info.app_id[0], 'x');
  EXPECT_TRUE(log.Has("unknown type 1"));
  EXPECT_TRUE(log.Has(file + " table status 0"));
}

TEST_F(DatabaseFaults, FailsOnADatabaseThatLacksAColumn) {
  device.Sql("alter table widgetinfo drop column tavorder");
  EXPECT_EQ(Lookup(), -1);
  EXPECT_EQ(info.app_id[0], 'x');
}

TEST_F(DatabaseFaults, SucceedsLateWhenTheWriterIsDoneInTime) {
  const auto start = steady_clock::now();
  const test::ExclusiveWriter writer(device.DatabaseFile(), milliseconds(300));
  EXPECT_EQ(Lookup(), 0);
  EXPECT_STREQ(info.app_id, "app7");
  EXPECT_GE(steady_clock::now() - start, milliseconds(290));
}

TEST_F(DatabaseFaults, IsBusyAfterASecondWithoutTouchingTheRecordOnTheFirstQuery) {
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  const auto start = steady_clock::now();
  EXPECT_EQ(Lookup(), -2);
  const auto elapsed = steady_clock::now() - start;
  EXPECT_GE(elapsed, milliseconds(990));
  EXPECT_LT(elapsed, std::chrono::seconds(20));
  EXPECT_EQ(info.app_id[0], 'x');
  EXPECT_TRUE(log.Has("prepare retry is up to MAX_RETRY_COUNT"));
}

TEST_F(DatabaseFaults, IsBusyAfterASecondWithTheRecordZeroedOnALaterQuery) {
  ASSERT_EQ(Lookup(), 0);
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  EXPECT_EQ(Lookup(), -2);
  const tav_app_info_s zero = {};
  EXPECT_EQ(std::memcmp(&info, &zero, sizeof(info)), 0);
  EXPECT_TRUE(log.Has("step retry is up to MAX_RETRY_COUNT"));
  EXPECT_TRUE(log.Has("Get DB fail:sql busy"));
}

TEST_F(DatabaseFaults, HoldsOtherCallersWhileItWaitsForABusyDatabase) {
  ASSERT_EQ(Lookup(), 0);
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  const auto start = steady_clock::now();
  auto other = std::async(std::launch::async, [] {
    tav_app_info_s mine;
    return tav_get_app_info("app8", &mine);
  });
  EXPECT_EQ(Lookup(), -2);
  EXPECT_EQ(other.get(), -2);
  // Two waits of a second, one behind the other.
  EXPECT_GE(steady_clock::now() - start, milliseconds(1980));
}

}  // namespace
