// SPDX-License-Identifier: Apache-2.0
//
// The engine while another process keeps the database: 100 attempts, 10 ms apart.
#include <gtest/gtest.h>

#include <chrono>

#include "support/device.h"
#include "support/writer.h"
#include "tav_db_api/tav_db_client_connection.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr char kSelect[] = "select id from widgetinfo";

class BusyEngine : public ::testing::Test {
 protected:
  milliseconds Elapsed() const {
    return std::chrono::duration_cast<milliseconds>(steady_clock::now() - m_start);
  }

  test::Device device;
  test::Log& log = device.GetLog();

 private:
  steady_clock::time_point m_start = steady_clock::now();
};

TEST_F(BusyEngine, PreparesLateWhenTheWriterIsDoneInTime) {
  const TavLock lock(g_Mute);
  const test::ExclusiveWriter writer(device.DatabaseFile(), milliseconds(200));
  EXPECT_EQ(Prepare(kSelect), 0);
  EXPECT_EQ(Step(), kStepDone);
  EXPECT_GE(log.Count("retry prepare"), 1);
  EXPECT_FALSE(log.Has("prepare retry is up to MAX_RETRY_COUNT"));
}

TEST_F(BusyEngine, GivesUpPreparingAfterAHundredAttempts) {
  const TavLock lock(g_Mute);
  const test::ExclusiveWriter writer(device.DatabaseFile(), milliseconds(30000));
  EXPECT_EQ(Prepare(kSelect), -2);
  EXPECT_GE(Elapsed(), milliseconds(990));
  EXPECT_EQ(g_pStmt, nullptr);
  EXPECT_EQ(log.Count("prepare return SQLITE_BUSY"), 100);
  EXPECT_EQ(log.Count("retry prepare"), 99);
  EXPECT_EQ(log.Count("prepare retry is up to MAX_RETRY_COUNT"), 1);
}

TEST_F(BusyEngine, StepsLateWhenTheWriterIsDoneInTime) {
  device.Install(test::App("org.example.clock"));
  const TavLock lock(g_Mute);
  ASSERT_EQ(Prepare(kSelect), 0);
  const test::ExclusiveWriter writer(device.DatabaseFile(), milliseconds(200));
  EXPECT_EQ(Step(), kStepRow);
  EXPECT_STREQ(GetStringFromResult(0), "org.example.clock");
  EXPECT_EQ(Step(), kStepDone);
  EXPECT_GE(log.Count("retry step"), 1);
}

TEST_F(BusyEngine, GivesUpSteppingAfterAHundredAttempts) {
  const TavLock lock(g_Mute);
  ASSERT_EQ(Prepare(kSelect), 0);
  const test::ExclusiveWriter writer(device.DatabaseFile(), milliseconds(30000));
  EXPECT_EQ(Step(), kStepBusy);
  EXPECT_GE(Elapsed(), milliseconds(990));
  EXPECT_EQ(g_pStmt, nullptr);
  EXPECT_EQ(log.Count("step return SQLITE_BUSY"), 100);
  EXPECT_EQ(log.Count("retry step"), 99);
  EXPECT_EQ(log.Count("step retry is up to MAX_RETRY_COUNT"), 1);
}

}  // namespace
