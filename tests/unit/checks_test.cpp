// SPDX-License-Identifier: Apache-2.0
//
// The states of the platform in which reads are refused.
#include "tav_db_api/tav_db_client_checks.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/device.h"

namespace {

class PlatformState : public ::testing::Test {
 protected:
  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(PlatformState, IsAFactoryResetForTheValuesOneAndTwoAlone) {
  for (const int type : {1, 2}) {
    device.FactoryReset(type);
    EXPECT_EQ(CkeckIsFactoryReset(), 1) << type;
    EXPECT_TRUE(log.Has("factory reset[" + std::to_string(type) + "]"));
  }
  for (const int type : {0, 3, -1, 2147483647}) {
    device.FactoryReset(type);
    EXPECT_EQ(CkeckIsFactoryReset(), 0) << type;
  }
}

TEST_F(PlatformState, IsNoFactoryResetWhenTheSettingCannotBeRead) {
  device.Unset("db/tav/factory_reset");
  EXPECT_EQ(CkeckIsFactoryReset(), 0);
  EXPECT_TRUE(log.HasError("Failed to get vconf value key=(db/tav/factory_reset)"));
}

TEST_F(PlatformState, IsNoFactoryResetWhenTheSettingIsAText) {
  device.Setting("db/tav/factory_reset", "1");
  EXPECT_EQ(CkeckIsFactoryReset(), 0);
  EXPECT_TRUE(log.HasError("Failed to get vconf value key=(db/tav/factory_reset)"));
}

TEST_F(PlatformState, IsARecoveryWhileTheMarkerExistsWhateverItIs) {
  EXPECT_FALSE(CheckPkgmgrRecovering());
  EXPECT_FALSE(log.Has("/opt/dbspace/pkgreinstall exists"));

  device.Write("opt/dbspace/pkgreinstall", "");
  EXPECT_TRUE(CheckPkgmgrRecovering());
  EXPECT_TRUE(log.Has("/opt/dbspace/pkgreinstall exists"));

  const std::filesystem::path marker = device.Root() / "opt/dbspace/pkgreinstall";
  std::filesystem::remove(marker);
  EXPECT_FALSE(CheckPkgmgrRecovering());
  std::filesystem::create_directory(marker);
  EXPECT_TRUE(CheckPkgmgrRecovering());
}

TEST_F(PlatformState, RefusesWithItsReasonInTheLog) {
  EXPECT_FALSE(PlatformRefuses());
  EXPECT_TRUE(log.Messages('W').empty());
  device.FactoryReset(1);
  EXPECT_TRUE(PlatformRefuses());
  EXPECT_TRUE(log.HasNotice("FactoryReset is true"));
  device.FactoryReset(0).Write("opt/dbspace/pkgreinstall", "");
  EXPECT_TRUE(PlatformRefuses());
  EXPECT_TRUE(log.HasError("Pkgmgr is recovering"));
}

}  // namespace
