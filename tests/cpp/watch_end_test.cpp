// SPDX-License-Identifier: Apache-2.0
//
// The ends of watches: in their destructors, by a move, and in the middle of a call.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <tav_db_api.hpp>
#include <type_traits>
#include <utility>

#include "settings/watching.h"

namespace {

using tav::Watch;
using test::Ignore;
using test::kReset;
using test::Notify;
using test::TakeWatchCalls;
using test::Texts;
using test::WatchCalls;

class CppWatchEnd : public test::Watching {
 protected:
  // Watches with a callable that notes its name, then does something.
  Watch Begin(
      const std::string& name, std::function<void()> then = [] {}) {
    // Part of the callable, so that what is used after its end is noticed.
    return tav::WatchFactoryResetType(
               [this, text = std::make_unique<std::string>(name), then = std::move(then)](int) {
                 told.push_back(*text);
                 then();
                 told.back() += " " + *text;
               })
        .value();
  }
  Texts Told(int value) { return DeliveredAfter(kReset, value); }
};

TEST_F(CppWatchEnd, ComesWithTheScope) {
  {
    const Watch watch = Begin("a");
    EXPECT_TRUE(static_cast<bool>(watch));
    TakeWatchCalls();
  }
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Ignore(kReset)});
  EXPECT_EQ(Told(4), Texts());
}

TEST_F(CppWatchEnd, ComesWithAResultThatIsDropped) {
  (void)tav::WatchFactoryResetType([&](int) { told.push_back("dropped"); });
  EXPECT_EQ(Told(4), Texts());
}

TEST_F(CppWatchEnd, TakesTheCallableAway) {
  auto data = std::make_shared<int>(1);
  Watch watch = tav::WatchFactoryResetType([data](int) {}).value();
  EXPECT_EQ(data.use_count(), 2);
  watch.reset();
  EXPECT_EQ(data.use_count(), 1);
  EXPECT_FALSE(static_cast<bool>(watch));
  watch.reset();
  EXPECT_EQ(Told(4), Texts());
}

TEST_F(CppWatchEnd, PassesOnByAMove) {
  Watch one = Begin("a");
  Watch two = std::move(one);
  EXPECT_FALSE(static_cast<bool>(one));  // NOLINT(bugprone-use-after-move): what it promises
  EXPECT_EQ(Told(4), Texts{"a a"});
  Watch other = Begin("b");
  other = std::move(two);
  EXPECT_EQ(Told(5), Texts{"a a"});
  Watch& same = other;
  other = std::move(same);
  EXPECT_EQ(Told(6), Texts{"a a"});
  static_assert(std::is_nothrow_move_constructible_v<Watch> &&
                std::is_nothrow_move_assignable_v<Watch> && std::is_nothrow_destructible_v<Watch>);
  static_assert(!std::is_copy_constructible_v<Watch> && !std::is_copy_assignable_v<Watch>);
  static_assert(!std::is_convertible_v<Watch, bool> && sizeof(Watch) == sizeof(void*));
}

TEST_F(CppWatchEnd, MayBeACallablesOwnDoingAndTheCallableLivesToItsEnd) {
  const Watch one = Begin("first");
  std::optional<Watch> watch;
  watch.emplace(Begin("a", [&] { watch.reset(); }));
  const Watch last = Begin("last");
  EXPECT_EQ(Told(4), (Texts{"first first", "a a", "last last"}));
  EXPECT_EQ(Told(5), (Texts{"first first", "last last"}));
}

TEST_F(CppWatchEnd, OfTheOnlyOneMayBeItsOwnDoing) {
  std::optional<Watch> watch;
  watch.emplace(Begin("a", [&] { watch.reset(); }));
  TakeWatchCalls();
  EXPECT_EQ(Told(4), Texts{"a a"});
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Ignore(kReset)});
  EXPECT_EQ(Told(5), Texts());
}

TEST_F(CppWatchEnd, OfOneThatThrowsLeavesTheOthersAndReleasesIt) {
  auto data = std::make_shared<int>(1);
  std::optional<Watch> watch;
  watch.emplace(Begin("a", [&watch, data] {
    watch.reset();
    throw std::runtime_error("a careless callable");
  }));
  const Watch other = Begin("b");
  EXPECT_EQ(Told(4), (Texts{"a", "b b"}));
  EXPECT_EQ(data.use_count(), 1);
  EXPECT_EQ(Told(5), Texts{"b b"});
}

TEST_F(CppWatchEnd, KeepsALaterOneFromBeingCalled) {
  Watch later;
  const Watch one = Begin("first", [&] { later.reset(); });
  later = Begin("later");
  EXPECT_EQ(Told(4), Texts{"first first"});
}

TEST_F(CppWatchEnd, MayBeThatOfAnEarlierOne) {
  Watch earlier = Begin("earlier");
  const Watch last = Begin("last", [&] { earlier.reset(); });
  EXPECT_EQ(Told(4), (Texts{"earlier earlier", "last last"}));
  EXPECT_EQ(Told(5), Texts{"last last"});
}

TEST_F(CppWatchEnd, OfAllInACallEndsThePlatformsWatch) {
  std::vector<Watch> watches;
  for (const char* name : {"a", "b", "c"}) {
    watches.push_back(Begin(name, [&] { watches.clear(); }));
  }
  TakeWatchCalls();
  EXPECT_EQ(Told(4), Texts{"a a"});
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Ignore(kReset)});
  EXPECT_EQ(Told(5), Texts());
}

TEST_F(CppWatchEnd, MayBeFollowedByAnotherBeginningWhichIsToldTheSameChangeOnce) {
  Watch watch;
  Watch successor;
  watch = Begin("a", [&] {
    watch.reset();
    successor = Begin("b");
  });
  TakeWatchCalls();
  EXPECT_EQ(Told(4), (Texts{"a a", "b b"}));
  EXPECT_EQ(TakeWatchCalls(), (WatchCalls{Ignore(kReset), Notify(kReset, nullptr)}));
  EXPECT_EQ(Told(5), Texts{"b b"});
}

TEST_F(CppWatchEnd, IsNotNeededForABeginningInACall) {
  std::vector<Watch> more;
  const Watch watch = Begin("a", [&] { more.push_back(Begin("more")); });
  EXPECT_EQ(Told(4), (Texts{"a a", "more more"}));
  EXPECT_EQ(Told(5), (Texts{"a a", "more more", "more more"}));
}

TEST_F(CppWatchEnd, OfACallableMayBeTheEndOfAnother) {
  auto inner = std::make_shared<Watch>(Begin("inner"));
  Watch outer = Begin("outer", [inner] {});
  inner.reset();
  EXPECT_EQ(Told(4), (Texts{"inner inner", "outer outer"}));
  outer.reset();
  EXPECT_EQ(Told(5), Texts());
}

TEST_F(CppWatchEnd, InACallMayBeTheEndOfAnotherToo) {
  auto inner = std::make_shared<Watch>(Begin("inner"));
  std::optional<Watch> outer;
  outer.emplace(Begin("outer", [&outer, inner] { outer.reset(); }));
  inner.reset();
  EXPECT_EQ(Told(4), (Texts{"inner inner", "outer outer"}));
  EXPECT_EQ(Told(5), Texts());
}

}  // namespace
