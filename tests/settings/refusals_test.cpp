// SPDX-License-Identifier: Apache-2.0
//
// A platform that refuses to begin a watch, or to end one.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "settings/watching.h"

namespace {

using test::Ignore;
using test::Notify;
using test::TakeWatchCalls;
using test::Texts;
using test::WatchCalls;
using test::Written;

class Refusal : public test::WatchingEach {
 protected:
  // A file where the setting's directory belongs: there is nothing to watch.
  void BlockDirectory() {
    std::filesystem::remove_all(Directory());
    std::filesystem::create_directories(Directory().parent_path());
    std::ofstream(Directory()) << "in the way";
  }
  void UnblockDirectory() { std::filesystem::remove(Directory()); }
  // The platform has nothing to end when it is asked.
  void EndWatchBeforehand() {
    ASSERT_EQ(test::RealIgnore(setting.name, test::LibraryCallback()), 0);
  }
  std::filesystem::path Directory() const {
    return (device.Root() / "vconf" / setting.name).parent_path();
  }

  const Texts refused = {std::string("I register vconf cb for key ") + setting.name,
                         "E failed to register callback"};
};

TEST_P(Refusal, OfTheFirstWatchStoresNothing) {
  BlockDirectory();
  log.Forget();
  EXPECT_EQ(setting.add(1, &first), -1);
  EXPECT_EQ(Written(log), refused);
  for (const auto& line : log.Lines()) EXPECT_EQ(line.function, setting.add_function);
  log.Forget();
  EXPECT_EQ(setting.remove(1), -1);
  EXPECT_EQ(Written(log), Texts{"W callback list is not initialized yet"});
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Notify(setting.name, &first)});
}

TEST_P(Refusal, IsFollowedByAQuestionAnewAtEveryAttempt) {
  BlockDirectory();
  for (const int callback : {1, 1, 2}) {
    log.Forget();
    EXPECT_EQ(setting.add(callback, &first), -1);
    EXPECT_EQ(Written(log), refused);
  }
  EXPECT_EQ(TakeWatchCalls(), WatchCalls(3, Notify(setting.name, &first)));

  UnblockDirectory();
  EXPECT_EQ(setting.add(1, &second), 0);
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Notify(setting.name, &second)});
  EXPECT_EQ(DeliveredAfter(5), Texts{"1 second " + setting.Value(5)});
}

TEST_P(Refusal, OfAWatchThatThePlatformHasAlreadyIsAFailureToo) {
  ASSERT_EQ(setting.add(1, &first), 0);
  ASSERT_EQ(setting.remove(1), 0);
  ASSERT_EQ(test::RealNotify(setting.name, test::LibraryCallback(), nullptr), 0);
  log.Forget();
  EXPECT_EQ(setting.add(1, &first), -1);
  EXPECT_EQ(Written(log), refused);
}

TEST_P(Refusal, OfOneSettingLeavesTheOthersAlone) {
  BlockDirectory();
  EXPECT_EQ(setting.add(1, &first), -1);
  UnblockDirectory();
  for (const auto& other : test::WatchedSettings()) {
    if (other.key == setting.key) continue;
    EXPECT_EQ(other.add(1, &second), 0);
    other.Set(device, 5);
    EXPECT_EQ(Delivered(), Texts{"1 second " + other.Value(5)});
  }
}

TEST_P(Refusal, OfLaterCallbacksDoesNotHappenSinceThePlatformIsNotAsked) {
  ASSERT_EQ(setting.add(1, &first), 0);
  BlockDirectory();
  EXPECT_EQ(setting.add(2, &second), 0);
  UnblockDirectory();
}

TEST_P(Refusal, ToEndTheWatchIsLoggedAndOtherwiseIgnored) {
  ASSERT_EQ(setting.add(1, &first), 0);
  EndWatchBeforehand();
  TakeWatchCalls();
  log.Forget();
  EXPECT_EQ(setting.remove(1), 0);
  EXPECT_EQ(Written(log),
            (Texts{std::string("I unregister vconf cb for ") + setting.name,
                   std::string("E failed to unregister cb for (") + setting.name + ")",
                   "I cb for tav_vconf_cb_list unregistered " + setting.Address(1)}));
  for (const auto& line : log.Lines()) EXPECT_EQ(line.function, setting.remove_function);
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Ignore(setting.name)});

  // The list is empty all the same, and the next callback begins a watch.
  log.Forget();
  EXPECT_EQ(setting.remove(1), -1);
  EXPECT_EQ(Written(log), Texts{"W callback list is not initialized yet"});
  EXPECT_EQ(setting.add(1, &second), 0);
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Notify(setting.name, &second)});
  EXPECT_EQ(DeliveredAfter(5), Texts{"1 second " + setting.Value(5)});
}

INSTANTIATE_TEST_SUITE_P(OfEach, Refusal, ::testing::ValuesIn(test::WatchedSettings()),
                         test::TitleOf);

}  // namespace
