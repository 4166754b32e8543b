// SPDX-License-Identifier: Apache-2.0
// Where the device's directories lie, and where the device itself does.
#include <pwd.h>
#include <tzplatform_config.h>
#include <unistd.h>

#include "device.h"
#include "failing_calls.h"
#include "threads.h"

namespace {

class DeviceDirectories : public Device {
 protected:
  static std::string Database() { return tzplatform_getenv(TZPLATFORM_DATABASE_DIRECTORY); }
};

TEST_F(DeviceDirectories, LieUnderTheDeviceRoot) {
  const std::string root = Root().string();
  EXPECT_EQ(tzplatform_getenv(static_cast<tzplatform_variable>(2)), root + "/data");
  EXPECT_EQ(tzplatform_getenv(static_cast<tzplatform_variable>(24)), root + "/dbspace");
  EXPECT_EQ(tzplatform_getenv(static_cast<tzplatform_variable>(27)), root + "/etc");
  EXPECT_EQ(TakeLog(), "");
}

TEST_F(DeviceDirectories, AreNullAndAnErrorInTheLogForAnyOtherNumber) {
  for (const int id : {-2147483647 - 1, -1, 0, 1, 3, 26, 28, 2147483647}) {
    EXPECT_EQ(tzplatform_getenv(static_cast<tzplatform_variable>(id)), nullptr) << id;
    EXPECT_EQ(TakeLog(),
              "E/TZPLATFORM_CONFIG: no directory has the number " + std::to_string(id) + "\n");
  }
}

TEST_F(DeviceDirectories, FollowAChangeOfTheRootAndKeepEarlierTexts) {
  const char* before = tzplatform_getenv(TZPLATFORM_DATABASE_DIRECTORY);
  setenv("TAV_DEVICE_ROOT", "/elsewhere", 1);
  EXPECT_EQ(Database(), "/elsewhere/dbspace");
  EXPECT_EQ(before, Root().string() + "/dbspace");
}

TEST_F(DeviceDirectories, AreTheSameTextEveryTime) {
  EXPECT_EQ(tzplatform_getenv(TZPLATFORM_DATA_DIRECTORY),
            tzplatform_getenv(TZPLATFORM_DATA_DIRECTORY));
}

TEST_F(DeviceDirectories, LieInTheUsersDataDirectoryWithoutARoot) {
  for (const char* none : {static_cast<const char*>(nullptr), ""}) {
    none == nullptr ? unsetenv("TAV_DEVICE_ROOT") : setenv("TAV_DEVICE_ROOT", none, 1);
    setenv("XDG_DATA_HOME", "/xdg/data", 1);
    EXPECT_EQ(Database(), "/xdg/data/tav-device/dbspace");
    setenv("XDG_DATA_HOME", "/xdg/other", 1);
    EXPECT_EQ(Database(), "/xdg/other/tav-device/dbspace");
  }
}

TEST_F(DeviceDirectories, LieInTheHomeDirectoryWithoutAUsableDataDirectory) {
  unsetenv("TAV_DEVICE_ROOT");
  setenv("HOME", "/home/viewer", 1);
  for (const char* unusable : {"", "relative/data"}) {
    setenv("XDG_DATA_HOME", unusable, 1);
    EXPECT_EQ(Database(), "/home/viewer/.local/share/tav-device/dbspace");
  }
}

TEST_F(DeviceDirectories, LieInTheHomeDirectoryOfTheUserWithoutAnyVariable) {
  for (const char* name : {"TAV_DEVICE_ROOT", "XDG_DATA_HOME", "HOME"}) unsetenv(name);
  const passwd* user = getpwuid(geteuid());
  const std::string home = user != nullptr ? user->pw_dir : "";
  EXPECT_EQ(Database(), home + "/.local/share/tav-device/dbspace");
  g_failing_calls.getpwuid = true;
  EXPECT_EQ(Database(), "/.local/share/tav-device/dbspace");
}

TEST_F(DeviceDirectories, MayBeAskedForByManyThreads) {
  const Threads threads(8, [&](int) {
    for (int turn = 0; turn < 1000; ++turn) {
      EXPECT_EQ(Database(), Root().string() + "/dbspace");
    }
  });
}

}  // namespace
