// SPDX-License-Identifier: Apache-2.0
//
// What callbacks may do during their call: register and unregister, themselves too, set settings,
// throw.
#include <gtest/gtest.h>
#include <pthread.h>

#include <stdexcept>
#include <string>

#include "settings/watching.h"

namespace {

using test::Ignore;
using test::Notify;
using test::TakeWatchCalls;
using test::Texts;
using test::WatchCalls;
using test::Written;

// Three callbacks of each setting, of which one does something once.
class Callback : public test::WatchingEach {
 protected:
  void AddAll() {
    ASSERT_EQ(setting.add(1, &first), 0);
    ASSERT_EQ(setting.add(2, &second), 0);
    ASSERT_EQ(setting.add(3, &third), 0);
    TakeWatchCalls();
  }
  template <typename Work>
  static void Once(test::Listener& listener, const Work& work) {
    listener.then = [&listener, work] {
      const auto keep = std::move(listener.then);  // the work lives to its end
      listener.then = nullptr;
      work();
    };
  }
  void ExpectTold(int number, const Texts& callers) {
    Texts expected;
    for (const std::string& caller : callers) {
      expected.push_back(caller + " " + setting.Value(number));
    }
    EXPECT_EQ(DeliveredAfter(number), expected);
  }

  const Texts everybody = {"1 first", "2 second", "3 third"};
};

TEST_P(Callback, MayUnregisterItself) {
  AddAll();
  Once(second, [&] { EXPECT_EQ(setting.remove(2), 0); });
  ExpectTold(5, everybody);
  ExpectTold(6, {"1 first", "3 third"});
}

TEST_P(Callback, MayUnregisterALaterOneWhichIsNotCalledAnyMore) {
  AddAll();
  Once(first, [&] { EXPECT_EQ(setting.remove(2), 0); });
  log.Forget();
  ExpectTold(5, {"1 first", "3 third"});
  EXPECT_EQ(log.Count(setting.CallLine(2).substr(2)), 0);
  ExpectTold(6, {"1 first", "3 third"});
}

TEST_P(Callback, MayUnregisterAnEarlierOne) {
  AddAll();
  Once(third, [&] { EXPECT_EQ(setting.remove(1), 0); });
  ExpectTold(5, everybody);
  ExpectTold(6, {"2 second", "3 third"});
}

TEST_P(Callback, MayRegisterOthersWhichAreToldOfTheSameChange) {
  ASSERT_EQ(setting.add(1, &first), 0);
  Once(first, [&] { EXPECT_EQ(setting.add(2, &second), 0); });
  Once(second, [&] { EXPECT_EQ(setting.add(3, &third), 0); });
  TakeWatchCalls();
  ExpectTold(5, everybody);
  ExpectTold(6, everybody);
  EXPECT_EQ(TakeWatchCalls(), WatchCalls());
}

TEST_P(Callback, MayRegisterItselfAgainToNoEffect) {
  AddAll();
  Once(first, [&] { EXPECT_EQ(setting.add(1, &third), 0); });
  ExpectTold(5, everybody);
  ExpectTold(6, everybody);
}

TEST_P(Callback, ThatUnregistersAndRegistersItselfIsCalledOnceAndThenAtTheEnd) {
  AddAll();
  Once(first, [&] {
    EXPECT_EQ(setting.remove(1), 0);
    EXPECT_EQ(setting.add(1, &first), 0);
  });
  ExpectTold(5, everybody);
  ExpectTold(6, {"2 second", "3 third", "1 first"});
  EXPECT_EQ(TakeWatchCalls(), WatchCalls());
}

TEST_P(Callback, ThatRenewsItselfInEveryCallIsCalledOnceForEachChange) {
  AddAll();
  first.then = [&] {
    EXPECT_EQ(setting.remove(1), 0);
    EXPECT_EQ(setting.add(1, &first), 0);
  };
  third.then = [&] {
    EXPECT_EQ(setting.remove(3), 0);
    EXPECT_EQ(setting.add(3, &third), 0);
  };
  ExpectTold(5, everybody);
  ExpectTold(6, {"2 second", "1 first", "3 third"});
}

TEST_P(Callback, ThatUnregistersAndRegistersALaterOneMovesItToTheEnd) {
  AddAll();
  Once(first, [&] {
    EXPECT_EQ(setting.remove(2), 0);
    EXPECT_EQ(setting.add(2, &third), 0);
  });
  ExpectTold(5, {"1 first", "3 third", "2 third"});
  ExpectTold(6, {"1 first", "3 third", "2 third"});
}

TEST_P(Callback, MayUnregisterEverybodyAndNobodyIsCalledAnyMore) {
  AddAll();
  Once(first, [&] {
    for (const int callback : {3, 1, 2}) EXPECT_EQ(setting.remove(callback), 0);
  });
  ExpectTold(5, {"1 first"});
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Ignore(setting.name)});
  ExpectTold(6, {});
  EXPECT_EQ(setting.add(2, &second), 0);
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Notify(setting.name, &second)});
  ExpectTold(7, {"2 second"});
}

TEST_P(Callback, MayUnregisterEverybodyAndRegisterOneWhichIsToldOfTheSameChange) {
  AddAll();
  Once(second, [&] {
    for (const int callback : {1, 2, 3}) EXPECT_EQ(setting.remove(callback), 0);
    EXPECT_EQ(setting.add(3, &third), 0);
  });
  ExpectTold(5, everybody);
  EXPECT_EQ(TakeWatchCalls(), (WatchCalls{Ignore(setting.name), Notify(setting.name, &third)}));
  ExpectTold(6, {"3 third"});
}

TEST_P(Callback, ThatIsTheOnlyOneMayUnregisterItself) {
  ASSERT_EQ(setting.add(1, &first), 0);
  TakeWatchCalls();
  Once(first, [&] { EXPECT_EQ(setting.remove(1), 0); });
  ExpectTold(5, {"1 first"});
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Ignore(setting.name)});
  ExpectTold(6, {});
}

TEST_P(Callback, ThatIsTheOnlyOneMayRenewItself) {
  ASSERT_EQ(setting.add(1, &first), 0);
  TakeWatchCalls();
  for (const int number : {5, 6}) {
    Once(first, [&] {
      EXPECT_EQ(setting.remove(1), 0);
      EXPECT_EQ(setting.add(1, &first), 0);
    });
    ExpectTold(number, {"1 first"});
    EXPECT_EQ(TakeWatchCalls(), (WatchCalls{Ignore(setting.name), Notify(setting.name, &first)}));
  }
  ExpectTold(7, {"1 first"});
}

TEST_P(Callback, MayPassItsPlaceToAnother) {
  ASSERT_EQ(setting.add(1, &first), 0);
  Once(first, [&] {
    EXPECT_EQ(setting.remove(1), 0);
    EXPECT_EQ(setting.add(2, &second), 0);
  });
  ExpectTold(5, {"1 first", "2 second"});
  ExpectTold(6, {"2 second"});
}

TEST_P(Callback, MayRegisterManyWithoutDisturbingTheOthers) {
  AddAll();
  // Enough turns for the storage of the list to move.
  first.then = [&] {
    for (int turn = 0; turn < 100; ++turn) {
      EXPECT_EQ(setting.remove(3), 0);
      EXPECT_EQ(setting.add(3, &third), 0);
    }
  };
  ExpectTold(5, everybody);
  ExpectTold(6, everybody);
}

TEST_P(Callback, MaySetTheSettingAndIsToldOfIt) {
  AddAll();
  Once(second, [&] { setting.Set(device, 6); });
  setting.Set(device, 5);
  EXPECT_TRUE(test::RunUntil([&] { return told.size() == 6; }));
  Texts expected;
  for (const int number : {5, 6}) {
    for (const std::string& caller : everybody) {
      expected.push_back(caller + " " + setting.Value(number));
    }
  }
  EXPECT_EQ(told, expected);
}

TEST_P(Callback, MayWatchAndLeaveTheOtherSettings) {
  ASSERT_EQ(setting.add(1, &first), 0);
  const auto others = test::WatchedSettings();
  Once(first, [&] {
    for (const auto& other : others) {
      if (other.key == setting.key) continue;
      EXPECT_EQ(other.add(2, &second), 0);
    }
  });
  ExpectTold(5, {"1 first"});
  for (const auto& other : others) {
    if (other.key == setting.key) continue;
    other.Set(device, 6);
    EXPECT_EQ(Delivered(), Texts{"2 second " + other.Value(6)});
    Once(first, [&] { EXPECT_EQ(other.remove(2), 0); });
    ExpectTold(7, {"1 first"});
    other.Set(device, 8);
    EXPECT_EQ(Delivered(), Texts());
  }
}

TEST_P(Callback, ThatThrowsIsLoggedAndTheNextIsCalled) {
  AddAll();
  Once(first, [] { throw std::runtime_error("a careless callback"); });
  Once(second, [] { throw 7; });
  log.Forget();
  ExpectTold(5, everybody);
  EXPECT_EQ(Written(log),
            (Texts{"I tav_vconf_notify_cb", std::string("I callback for key ") + setting.name,
                   setting.CallLine(1), "E Call failed: a careless callback", setting.CallLine(2),
                   "E Call failed", setting.CallLine(3)}));
  ExpectTold(6, everybody);
}

TEST_P(Callback, ThatThrowsAfterItUnregisteredItselfIsGone) {
  AddAll();
  Once(first, [&] {
    EXPECT_EQ(setting.remove(1), 0);
    throw std::runtime_error("a careless callback");
  });
  ExpectTold(5, everybody);
  ExpectTold(6, {"2 second", "3 third"});
}

TEST_P(Callback, RunsWithoutBeingCancelled) {
  ASSERT_EQ(setting.add(1, &first), 0);
  int state = PTHREAD_CANCEL_ENABLE;
  Once(first, [&state] {
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &state);
    pthread_setcancelstate(state, nullptr);
  });
  ExpectTold(5, {"1 first"});
  EXPECT_EQ(state, PTHREAD_CANCEL_DISABLE);
}

INSTANTIATE_TEST_SUITE_P(OfEach, Callback, ::testing::ValuesIn(test::WatchedSettings()),
                         test::TitleOf);

}  // namespace
