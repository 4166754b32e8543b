// SPDX-License-Identifier: Apache-2.0
//
// Settings from a program in C, over the header's typed functions.
#include "settings/in_c.h"

#include <gtest/gtest.h>

#include "settings/watching.h"

namespace {

class SettingsInC : public test::Watching {};

TEST_F(SettingsInC, AreReadWithEveryGetter) {
  char text[256];
  read_in_c(text, sizeof text);
  EXPECT_STREQ(text, "-3 - - - - -1 0 -1 -1 -1 -1 -1 0");

  device.Setting("db/comss/appkey", "key")
      .Setting("db/comss/kestranaversion", "1.2.3")
      .Setting("memory/tav/app_install", "org.example.app")
      .Configure("NAME", "config")
      .Setting("db/tav/app_sync_status", 1)
      .FactoryReset(2)
      .Setting("memory/tav/appsync", 3)
      .Setting("db/homedeck/reset/tavcore", 4)
      .Setting("memory/tav/boot_status", 5)
      .Configure("SYNC_STATE", "6");
  read_in_c(text, sizeof text);
  EXPECT_STREQ(text, "0 key 1.2.3 org.example.app config 1 2 3 4 5 6 -1 0");
}

TEST_F(SettingsInC, AreWatchedAndLeft) {
  struct told_in_c heard = {};
  ASSERT_EQ(watch_in_c(&heard), 0);
  device.FactoryReset(1)
      .Setting("memory/tav/appsync", 2)
      .Setting("db/homedeck/reset/tavcore", 3)
      .Setting("memory/tav/app_install", "org.example.app");
  EXPECT_TRUE(test::RunUntil([&] { return heard.calls == 4; }));
  EXPECT_EQ(heard.factory_reset, 1);
  EXPECT_EQ(heard.appsync, 2);
  EXPECT_EQ(heard.homedeck_reset, 3);
  EXPECT_STREQ(heard.app, "org.example.app");

  ASSERT_EQ(leave_in_c(), 0);
  EXPECT_EQ(leave_in_c(), 4);
  device.Setting("memory/tav/appsync", 5).Setting("memory/tav/app_install", "org.example.other");
  Deliver();
  EXPECT_EQ(heard.calls, 4);
}

}  // namespace
