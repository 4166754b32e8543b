// SPDX-License-Identifier: Apache-2.0
//
// The count of calls that a forked child finds.
#include <gtest/gtest.h>

#include <optional>

#include "platform/threads.h"
#include "soak/child.h"
#include "tav_db_api/tav_db_client_connection.h"

namespace {

using test::ForkedChild;
using test::Require;

bool IsRefused() {
  try {
    const TavRunningCall call;
  } catch (const std::exception&) {
    return true;
  }
  return false;
}

std::string RefusalsInAChild(bool expected) {
  return ForkedChild([&] {
           Require(IsRefused() == expected, "the first");
           Require(IsRefused() == expected, "a later one");
           Require(ForkedChild([&] { Require(IsRefused() == expected, ""); }).Complaint().empty(),
                   "in its child");
         })
      .Complaint();
}

TEST(RunningCall, CountsUntilTheLastHasEnded) {
  EXPECT_EQ(RefusalsInAChild(false), "");
  std::optional<TavRunningCall> first(std::in_place);
  std::optional<TavRunningCall> second(std::in_place);
  EXPECT_EQ(RefusalsInAChild(true), "");
  first.reset();
  EXPECT_EQ(RefusalsInAChild(true), "");
  second.reset();
  EXPECT_EQ(RefusalsInAChild(false), "");
  EXPECT_FALSE(IsRefused());
}

TEST(RunningCall, CountsThoseOfManyThreads) {
  constexpr int kCalls = 100000;
  {
    const Threads threads(4, [](int) {
      for (int i = 0; i < kCalls; ++i) const TavRunningCall call;
    });
  }
  EXPECT_EQ(RefusalsInAChild(false), "");
  const TavRunningCall call;
  EXPECT_EQ(RefusalsInAChild(true), "");
}

// What ends in the child ends nothing of the parent's count.
TEST(RunningCall, ThatForksRefusesItsChildForGood) {
  std::optional<TavRunningCall> call(std::in_place);
  const std::string complaint = ForkedChild([&] {
                                  call.reset();
                                  Require(IsRefused(), "after its end");
                                }).Complaint();
  EXPECT_EQ(complaint, "");
}

}  // namespace
