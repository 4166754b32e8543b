// SPDX-License-Identifier: Apache-2.0
//
// Registering and unregistering callbacks: results, the order of the checks, the lines of the log
// and what the platform is asked for.
#include <gtest/gtest.h>

#include "settings/watching.h"

namespace {

using test::Ignore;
using test::Notify;
using test::TakeWatchCalls;
using test::Texts;
using test::WatchCalls;
using test::WatchedSetting;
using test::Written;

class Registration : public test::WatchingEach {
 protected:
  Registration() { log.Forget(); }

  // What a call writes, all of it under the name of the function that was called.
  template <typename Call>
  Texts Lines(const std::string& function, const Call& call) {
    log.Forget();
    call();
    for (const auto& line : log.Lines()) {
      EXPECT_EQ(line.function, function);
      EXPECT_EQ(line.file, "tav_db_api_watch.cpp");
    }
    return Written(log);
  }
  Texts Adding(int callback, void* data, int result = 0) {
    return Lines(setting.add_function, [&] { EXPECT_EQ(setting.add(callback, data), result); });
  }
  Texts Removing(int callback, int result = 0) {
    return Lines(setting.remove_function, [&] { EXPECT_EQ(setting.remove(callback), result); });
  }

  std::string WatchLine() const {
    return std::string("I register vconf cb for key ") + setting.name;
  }
  std::string AddLine(int callback) const {
    return "I cb for panel_display_time registered " + setting.Address(callback);
  }
  std::string IgnoreLine() const {
    return std::string("I unregister vconf cb for ") + setting.name;
  }
  std::string RemoveLine(int callback) const {
    return "I cb for tav_vconf_cb_list unregistered " + setting.Address(callback);
  }
};

TEST_P(Registration, AsksThePlatformForTheFirstCallbackAlone) {
  EXPECT_EQ(Adding(1, &first), (Texts{WatchLine(), AddLine(1)}));
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Notify(setting.name, &first)});
  EXPECT_EQ(Adding(2, &second), Texts{AddLine(2)});
  EXPECT_EQ(Adding(3, nullptr), Texts{AddLine(3)});
  EXPECT_EQ(TakeWatchCalls(), WatchCalls());
}

TEST_P(Registration, AsksThePlatformWithTheFirstUserDataAlsoWhenItIsNull) {
  EXPECT_EQ(Adding(1, nullptr), (Texts{WatchLine(), AddLine(1)}));
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Notify(setting.name, nullptr)});
}

TEST_P(Registration, OfACallbackThatIsRegisteredKeepsItsUserDataAndItsPlace) {
  ASSERT_EQ(setting.add(1, &first), 0);
  ASSERT_EQ(setting.add(2, &second), 0);
  TakeWatchCalls();
  EXPECT_EQ(Adding(1, &third), Texts{"W already registered cb " + setting.Address(1)});
  EXPECT_EQ(Adding(1, &first), Texts{"W already registered cb " + setting.Address(1)});
  EXPECT_EQ(Adding(2, nullptr), Texts{"W already registered cb " + setting.Address(2)});
  EXPECT_EQ(TakeWatchCalls(), WatchCalls());
  EXPECT_EQ(DeliveredAfter(5),
            (Texts{"1 first " + setting.Value(5), "2 second " + setting.Value(5)}));
  // One entry each.
  EXPECT_EQ(setting.remove(1), 0);
  EXPECT_EQ(setting.remove(1), -1);
  EXPECT_EQ(setting.remove(2), 0);
}

TEST_P(Registration, OfNoCallbackFailsWithoutAWord) {
  EXPECT_EQ(Adding(0, &first, -1), Texts());
  ASSERT_EQ(setting.add(1, &first), 0);
  TakeWatchCalls();
  EXPECT_EQ(Adding(0, &second, -1), Texts());
  EXPECT_EQ(TakeWatchCalls(), WatchCalls());
  EXPECT_EQ(DeliveredAfter(5), Texts{"1 first " + setting.Value(5)});
}

TEST_P(Registration, EndsOneByOneAndTheLastOneEndsTheWatch) {
  for (const int callback : {1, 2, 3}) ASSERT_EQ(setting.add(callback, &first), 0);
  TakeWatchCalls();
  EXPECT_EQ(Removing(2), Texts{RemoveLine(2)});
  EXPECT_EQ(Removing(1), Texts{RemoveLine(1)});
  EXPECT_EQ(TakeWatchCalls(), WatchCalls());
  EXPECT_EQ(Removing(3), (Texts{IgnoreLine(), RemoveLine(3)}));
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Ignore(setting.name)});
}

TEST_P(Registration, AsksThePlatformAnewAfterTheLastOneEnded) {
  for (test::Listener* listener : {&first, &second}) {
    EXPECT_EQ(Adding(1, listener), (Texts{WatchLine(), AddLine(1)}));
    EXPECT_EQ(Adding(2, &third), Texts{AddLine(2)});
    EXPECT_EQ(DeliveredAfter(5), (Texts{"1 " + listener->name + " " + setting.Value(5),
                                        "2 third " + setting.Value(5)}));
    EXPECT_EQ(Removing(1), Texts{RemoveLine(1)});
    EXPECT_EQ(Removing(2), (Texts{IgnoreLine(), RemoveLine(2)}));
    EXPECT_EQ(TakeWatchCalls(), (WatchCalls{Notify(setting.name, listener), Ignore(setting.name)}));
    EXPECT_EQ(DeliveredAfter(6), Texts());
  }
}

TEST_P(Registration, ThatEndedCanBeginAnewWithOtherUserDataAtTheEnd) {
  ASSERT_EQ(setting.add(1, &first), 0);
  ASSERT_EQ(setting.add(2, &second), 0);
  EXPECT_EQ(setting.remove(1), 0);
  EXPECT_EQ(setting.add(1, &third), 0);
  EXPECT_EQ(DeliveredAfter(5),
            (Texts{"2 second " + setting.Value(5), "1 third " + setting.Value(5)}));
}

TEST_P(Registration, CannotEndBeforeItBegan) {
  const Texts expected = {"W callback list is not initialized yet"};
  EXPECT_EQ(Removing(1, -1), expected);
  ASSERT_EQ(setting.add(1, &first), 0);
  ASSERT_EQ(setting.remove(1), 0);
  TakeWatchCalls();
  EXPECT_EQ(Removing(1, -1), expected);
  EXPECT_EQ(TakeWatchCalls(), WatchCalls());
}

TEST_P(Registration, CannotEndForACallbackThatIsNotRegisteredWhileOthersAre) {
  ASSERT_EQ(setting.add(1, &first), 0);
  TakeWatchCalls();
  EXPECT_EQ(Removing(2, -1), Texts{"E not registered cb " + setting.Address(2)});
  EXPECT_EQ(TakeWatchCalls(), WatchCalls());
  EXPECT_EQ(DeliveredAfter(5), Texts{"1 first " + setting.Value(5)});
}

TEST_P(Registration, CannotEndForNoCallbackWhetherOrNotThereAreOthers) {
  EXPECT_EQ(Removing(0, -1), Texts{"W invalid input"});
  ASSERT_EQ(setting.add(1, &first), 0);
  TakeWatchCalls();
  EXPECT_EQ(Removing(0, -1), Texts{"W invalid input"});
  EXPECT_EQ(TakeWatchCalls(), WatchCalls());
}

TEST_P(Registration, IsOfOneSettingAlone) {
  ASSERT_EQ(setting.add(1, &first), 0);
  for (const WatchedSetting& other : test::WatchedSettings()) {
    if (other.key == setting.key) continue;
    log.Forget();
    EXPECT_EQ(other.remove(1), -1);
    EXPECT_EQ(Written(log), Texts{"W callback list is not initialized yet"});
    EXPECT_EQ(other.add(1, &second), 0);
    EXPECT_EQ(other.remove(1), 0);
  }
  EXPECT_EQ(DeliveredAfter(5), Texts{"1 first " + setting.Value(5)});
}

INSTANTIATE_TEST_SUITE_P(OfEach, Registration, ::testing::ValuesIn(test::WatchedSettings()),
                         test::TitleOf);

}  // namespace
