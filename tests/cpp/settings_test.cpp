// SPDX-License-Identifier: Apache-2.0
//
// The settings and the configuration, through the C++ layer.
#include <gtest/gtest.h>
#include <vconf.h>

#include <string>

#include "answers.h"

namespace {

using tav::Status;
using test::Told;

struct Number {
  const char* key;
  tav::Result<int> (*read)();
};
struct Words {
  const char* key;
  tav::Result<tav::Text> (*read)();
};

constexpr Number kNumbers[] = {
    {"db/tav/app_sync_status", tav::GetTvSyncStatus},
    {"db/tav/factory_reset", tav::GetFactoryResetType},
    {"memory/tav/appsync", tav::GetAppsyncStartStatus},
    {"db/homedeck/reset/tavcore", tav::GetHomedeckResetStatus},
    {"memory/tav/boot_status", tav::GetTavBootStatus},
};
constexpr Words kWords[] = {
    {"db/comss/appkey", tav::GetAppkey},
    {"db/comss/kestranaversion", tav::GetKestranaVer},
    {"memory/tav/app_install", tav::GetInstalledAppId},
};

class CppSettings : public ::testing::Test {
 protected:
  test::Device device;
};

TEST_F(CppSettings, AreReadAnewEachTime) {
  int next = 10;
  for (const Number& number : kNumbers) {
    for (int turn = 0; turn < 2; ++turn) {
      device.Setting(number.key, ++next);
      EXPECT_EQ(Told(number.read()), "0 " + std::to_string(next)) << number.key;
    }
  }
  for (const Words& words : kWords) {
    for (const std::string value : {"first", ""}) {
      device.Setting(words.key, value);
      EXPECT_EQ(Told(words.read()), "0 " + value) << words.key;
    }
  }
}

TEST_F(CppSettings, FailWhenTheyAreMissingOrOfAnotherType) {
  for (const Number& number : kNumbers) {
    device.Setting(number.key, std::string("text"));
    EXPECT_EQ(Told(number.read()), "-1 0") << number.key;
    device.Unset(number.key);
    EXPECT_EQ(Told(number.read()), "-1 0") << number.key;
  }
  for (const Words& words : kWords) {
    device.Setting(words.key, 5);
    EXPECT_EQ(Told(words.read()), "-1 (none)") << words.key;
    device.Unset(words.key);
    EXPECT_EQ(Told(words.read()), "-1 (none)") << words.key;
  }
}

TEST_F(CppSettings, TellTheWatchersOfTheAppsToReload) {
  EXPECT_EQ(tav::SetAppChange(), Status::kOk);
  int value = 0;
  EXPECT_EQ(vconf_get_int("memory/tav/app_change", &value), 0);
  EXPECT_EQ(value, 1);
}

TEST_F(CppSettings, FailToTellWatchersWhenTheSettingCannotBeWritten) {
  device.Write("vconf/memory/tav", "in the way");
  EXPECT_EQ(tav::SetAppChange(), Status::kFailed);
}

TEST_F(CppSettings, OfTheConfigurationAreTextsOrNone) {
  device.Configure("NAME", "value").Configure("EMPTY", "");
  EXPECT_EQ(Told(tav::InnerConfig("NAME")), "value");
  EXPECT_EQ(Told(tav::InnerConfig("EMPTY")), "");
  EXPECT_EQ(Told(tav::InnerConfig("NONE")), "(none)");
  EXPECT_EQ(Told(tav::InnerConfig(nullptr)), "(none)");
}

TEST_F(CppSettings, OfTheConfigurationGiveTheStateOfTheSynchronisation) {
  EXPECT_EQ(Told(tav::GetTvSyncState()), "-1 0");
  device.Configure("SYNC_STATE", "2");
  EXPECT_EQ(Told(tav::GetTvSyncState()), "0 2");
  const auto writer = test::BusyWriter(device);
  EXPECT_EQ(Told(tav::GetTvSyncState()), "-2 0");
}

TEST_F(CppSettings, OfExtraAppsAreNoMore) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
  EXPECT_EQ(tav::GetExtraAppId(), Status::kFailed);
#pragma GCC diagnostic pop
}

}  // namespace
