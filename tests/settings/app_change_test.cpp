// SPDX-License-Identifier: Apache-2.0
//
// The one setting that the library writes, and the question that has no answer any more.
#include <gtest/gtest.h>
#include <vconf.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "settings/watching.h"
#include "tav_db_api.h"

namespace {

using test::Texts;
using test::Written;

constexpr char kKey[] = "memory/tav/app_change";

int Value() {
  int value = -77;
  vconf_get_int(kKey, &value);
  return value;
}

class AppChange : public test::Watching {};

TEST_F(AppChange, SetsTheSettingToOneWhateverItWas) {
  EXPECT_EQ(tav_set_app_change(), 0);
  EXPECT_EQ(Value(), 1);
  for (const int before : {0, 1, 5}) {
    device.Setting(kKey, before);
    EXPECT_EQ(tav_set_app_change(), 0);
    EXPECT_EQ(Value(), 1);
  }
  device.Setting(kKey, "text");
  EXPECT_EQ(tav_set_app_change(), 0);
  EXPECT_EQ(Value(), 1);
}

TEST_F(AppChange, IsANoticeInTheLog) {
  log.Forget();
  EXPECT_EQ(tav_set_app_change(), 0);
  EXPECT_EQ(Written(log), Texts{"W Set app changed to vconf successfully."});
  EXPECT_EQ(log.Lines().at(0).function, "tav_set_app_change");
  EXPECT_EQ(log.Lines().at(0).colour, "\033[0;33m");
}

TEST_F(AppChange, IsToldToWatchersAtEveryCall) {
  const auto count = [](keynode_t* node, void* calls) {
    static_cast<Texts*>(calls)->push_back(std::to_string(vconf_keynode_get_int(node)));
  };
  ASSERT_EQ(test::RealNotify(kKey, count, &told), 0);
  for (int turn = 0; turn < 3; ++turn) {
    EXPECT_EQ(tav_set_app_change(), 0);
    EXPECT_EQ(Delivered(), Texts{"1"});
  }
  EXPECT_EQ(test::RealIgnore(kKey, count), 0);
}

TEST_F(AppChange, IsAnErrorWhereNoSettingCanBe) {
  device.Write("vconf/memory", "a file where a directory belongs");
  log.Forget();
  EXPECT_EQ(tav_set_app_change(), -1);
  EXPECT_EQ(Written(log), Texts{"E Set app changed to vconf fail."});
  EXPECT_EQ(log.Lines().at(0).function, "tav_set_app_change");

  std::filesystem::remove(device.Root() / "vconf/memory");
  EXPECT_EQ(tav_set_app_change(), 0);
  EXPECT_EQ(Value(), 1);
}

TEST_F(AppChange, NeedsNoDatabaseAndIsDoneDuringAResetAndARecovery) {
  std::filesystem::remove(device.DatabaseFile());
  device.Write("opt/dbspace/pkgreinstall", "");
  device.FactoryReset(1);
  EXPECT_EQ(tav_set_app_change(), 0);
  EXPECT_EQ(Value(), 1);
}

TEST_F(AppChange, ChangesNoOtherSetting) {
  EXPECT_EQ(tav_set_app_change(), 0);
  Texts files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(device.Root() / "vconf")) {
    if (!entry.is_regular_file()) continue;
    std::ifstream in(entry.path());
    files.push_back(entry.path().lexically_relative(device.Root() / "vconf").string() + " " +
                    std::string(std::istreambuf_iterator<char>(in), {}));
  }
  std::sort(files.begin(), files.end());
  EXPECT_EQ(files, (Texts{"db/tav/factory_reset int\n0\n", "memory/tav/app_change int\n1\n"}));
}

TEST_F(AppChange, HasNoExtraAppsToTellOf) {
  log.Forget();
  char* id = nullptr;
  EXPECT_EQ(tav_get_extra_appid(), -1);
  EXPECT_EQ(tav_get_extra_appid(&id), -1);
  EXPECT_EQ(tav_get_extra_appid(nullptr), -1);
  EXPECT_EQ(tav_get_extra_appid("a", 1, 2.5, &id), -1);
  EXPECT_EQ(id, nullptr);
  EXPECT_EQ(Written(log), Texts(4, "W deprecated api, doesnt support extra app in 5.0"));
  EXPECT_EQ(log.Lines().at(0).function, "tav_get_extra_appid");
}

}  // namespace
