// SPDX-License-Identifier: Apache-2.0
//
// Changes of watched settings: who is told, what, and in which order.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "settings/watching.h"

namespace {

using test::Texts;
using test::WatchedSetting;
using test::Written;

class Change : public test::WatchingEach {
 protected:
  // The first lines of every delivery of this setting.
  Texts LinesOfADelivery(const Texts& further) const {
    Texts lines = {"I tav_vconf_notify_cb", std::string("I callback for key ") + setting.name};
    lines.insert(lines.end(), further.begin(), further.end());
    return lines;
  }
};

TEST_P(Change, IsToldToEveryCallbackInTheOrderOfRegistration) {
  ASSERT_EQ(setting.add(2, &second), 0);
  ASSERT_EQ(setting.add(3, &third), 0);
  ASSERT_EQ(setting.add(1, &first), 0);
  log.Forget();
  const std::string value = setting.Value(5);
  EXPECT_EQ(DeliveredAfter(5),
            (Texts{"2 second " + value, "3 third " + value, "1 first " + value}));
  EXPECT_EQ(Written(log),
            LinesOfADelivery({setting.CallLine(2), setting.CallLine(3), setting.CallLine(1)}));
  for (const auto& line : log.Lines()) EXPECT_EQ(line.file, "tav_db_api_watch.cpp");
  EXPECT_EQ(log.Lines().front().function, "tav_vconf_notify_cb");
}

TEST_P(Change, IsToldWithTheUserDataOfEachCallbackAlsoWhenItIsShared) {
  ASSERT_EQ(setting.add(1, &first), 0);
  ASSERT_EQ(setting.add(2, &first), 0);
  EXPECT_EQ(DeliveredAfter(5),
            (Texts{"1 first " + setting.Value(5), "2 first " + setting.Value(5)}));
}

TEST_P(Change, IsToldAlsoWhenTheValueIsWhatItWas) {
  setting.Set(device, 5);
  ASSERT_EQ(setting.add(1, &first), 0);
  EXPECT_EQ(Delivered(), Texts());  // registering tells nothing
  for (int turn = 0; turn < 3; ++turn) {
    EXPECT_EQ(DeliveredAfter(5), Texts{"1 first " + setting.Value(5)});
  }
}

TEST_P(Change, IsToldWithEachNewValue) {
  ASSERT_EQ(setting.add(1, &first), 0);
  for (const int number : {3, 2, 1, 0, -1, 1000000}) {
    EXPECT_EQ(DeliveredAfter(number), Texts{"1 first " + setting.Value(number)});
  }
}

TEST_P(Change, IsNotToldWhenTheSettingIsRemovedAndIsToldWhenItComesBack) {
  setting.Set(device, 5);
  ASSERT_EQ(setting.add(1, &first), 0);
  device.Unset(setting.name);
  EXPECT_EQ(Delivered(), Texts());
  EXPECT_EQ(DeliveredAfter(6), Texts{"1 first " + setting.Value(6)});
}

TEST_P(Change, IsToldToWhoIsLeft) {
  for (const int callback : {1, 2, 3}) ASSERT_EQ(setting.add(callback, &first), 0);
  ASSERT_EQ(setting.remove(1), 0);
  EXPECT_EQ(DeliveredAfter(5),
            (Texts{"2 first " + setting.Value(5), "3 first " + setting.Value(5)}));
  ASSERT_EQ(setting.remove(3), 0);
  EXPECT_EQ(DeliveredAfter(6), Texts{"2 first " + setting.Value(6)});
  ASSERT_EQ(setting.remove(2), 0);
  EXPECT_EQ(DeliveredAfter(7), Texts());
}

TEST_P(Change, IsNotToldToACallbackThatIsGoneBeforeItIsDelivered) {
  ASSERT_EQ(setting.add(1, &first), 0);
  ASSERT_EQ(setting.add(2, &second), 0);
  setting.Set(device, 5);
  ASSERT_EQ(setting.remove(1), 0);
  EXPECT_EQ(Delivered(), Texts{"2 second " + setting.Value(5)});
  setting.Set(device, 6);
  ASSERT_EQ(setting.remove(2), 0);
  EXPECT_EQ(Delivered(), Texts());
}

TEST_P(Change, IsToldToNobodyElsesCallbacks) {
  std::vector<test::Listener> listeners;
  const auto settings = test::WatchedSettings();
  for (const WatchedSetting& each : settings) listeners.emplace_back(each.name, told);
  for (std::size_t i = 0; i < settings.size(); ++i) {
    ASSERT_EQ(settings[i].add(1, &listeners[i]), 0);
  }
  device.Setting("memory/tav/app_change", 1).Setting("memory/tav/boot_status", 1);
  EXPECT_EQ(Delivered(), Texts());
  EXPECT_EQ(DeliveredAfter(5), Texts{std::string("1 ") + setting.name + " " + setting.Value(5)});
}

TEST_P(Change, FromAKeyWithoutCallbacksCallsNothing) {
  ASSERT_EQ(setting.add(1, &first), 0);
  ASSERT_EQ(setting.remove(1), 0);
  // As when the platform still tells what it was asked to ignore.
  ASSERT_EQ(test::RealNotify(setting.name, test::LibraryCallback(), &first), 0);
  log.Forget();
  EXPECT_EQ(DeliveredAfter(5), Texts());
  EXPECT_EQ(Written(log), LinesOfADelivery({"I nothing to call"}));
}

TEST_P(Change, FromAKeyThatIsNoneOfTheFourCallsNothing) {
  ASSERT_EQ(setting.add(1, &first), 0);
  const std::string name = setting.name;
  const std::string keys[] = {"memory/tav/app_change", name + "2", name.substr(0, name.size() - 1),
                              "x/" + name};
  for (const std::string& key : keys) {
    ASSERT_EQ(test::RealNotify(key, test::LibraryCallback(), &first), 0);
    log.Forget();
    EXPECT_EQ(Watching::DeliveredAfter(key, 5), Texts());
    EXPECT_EQ(Written(log), (Texts{"I tav_vconf_notify_cb", "I callback for key " + key,
                                   "W not supported key " + key}));
  }
}

TEST_P(Change, OfANodeWithoutANameCallsNothing) {
  ASSERT_EQ(setting.add(1, &first), 0);
  log.Forget();
  test::LibraryCallback()(nullptr, nullptr);
  EXPECT_EQ(Written(log), (Texts{"I tav_vconf_notify_cb", "I callback for key (null)",
                                 "W not supported key (null)"}));
}

TEST_P(Change, IsToldWithoutTheUserDataThatThePlatformHolds) {
  ASSERT_EQ(setting.add(1, &first), 0);
  ASSERT_EQ(test::RealIgnore(setting.name, test::LibraryCallback()), 0);
  ASSERT_EQ(test::RealNotify(setting.name, test::LibraryCallback(), &second), 0);
  EXPECT_EQ(DeliveredAfter(5), Texts{"1 first " + setting.Value(5)});
}

TEST_P(Change, ToAValueOfTheOtherTypeIsToldAsNothing) {
  ASSERT_EQ(setting.add(1, &first), 0);
  if (setting.is_text) {
    EXPECT_EQ(DeliveredAfter(5), Texts{"1 first org.example.app5"});
    EXPECT_EQ(Watching::DeliveredAfter(setting.name, 5), Texts{"1 first (null)"});
  } else {
    EXPECT_EQ(Watching::DeliveredAfter(setting.name, std::string("5")), Texts{"1 first 0"});
  }
}

INSTANTIATE_TEST_SUITE_P(OfEach, Change, ::testing::ValuesIn(test::WatchedSettings()),
                         test::TitleOf);

class InstalledApp : public test::Watching {};

TEST_F(InstalledApp, IsToldWithTextsOfAnyContent) {
  ASSERT_EQ(tav_register_installed_appid_changed_cb(test::TellText<1>, &first), 0);
  for (const std::string& value : {std::string("org.example.clock"), std::string(),
                                   std::string("Uhr äöü %s"), std::string(5000, 'x')}) {
    EXPECT_EQ(DeliveredAfter("memory/tav/app_install", value), Texts{"1 first " + value});
  }
}

int g_calls_with_null = 0;

void NoteNull(int /*value*/, void* data) {
  if (data == nullptr) ++g_calls_with_null;
}

TEST(AppSync, IsToldToCallbacksWithoutUserDataToo) {
  test::Device device;
  ASSERT_EQ(tav_register_appsync_start_changed_cb(NoteNull, nullptr), 0);
  device.Setting("memory/tav/appsync", 1);
  EXPECT_TRUE(test::RunUntil([] { return g_calls_with_null == 1; }));
}

}  // namespace
