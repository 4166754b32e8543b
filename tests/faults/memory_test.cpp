// SPDX-License-Identifier: Apache-2.0
//
// Every call with every one of its allocations failing: the call ends as it says it may, it
// keeps nothing, and the next one gives what it always gives, so the lock was given back.
#include "faults/memory.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <iostream>

#include "faults/calls.h"
#include "faults/seeded_device.h"

namespace {

using test::BlocksLeft;
using test::Call;
using test::Outcome;
using test::Shortage;
using test::Victims;

constexpr char kClientName[] = "org.tizen.tv.tavcore.client.obj";
constexpr long kMostAllocations = 100000;
constexpr int kMostThingsMadeOnce = 60;

class CallWithoutMemory : public ::testing::TestWithParam<Call> {
 protected:
  ~CallWithoutMemory() override { std::cout << shortages << " shortages of memory\n"; }

  Outcome FailAt(long nth, Shortage shortage) {
    const test::FailingMemory failing(nth, shortage);
    Outcome outcome = call.run();
    victims = test::LastVictims();
    if (!victims.IsNobody()) ++shortages;
    return outcome;
  }
  // SQLite without memory is a database that cannot be read, and a file that cannot be opened for
  // want of memory one that is not there, with what that entails.
  bool IsDocumented(const Outcome& outcome, Victims its_victims, const Outcome& whole) const {
    return outcome == whole || test::IsOneOf(call.failed, outcome, whole) ||
           (its_victims.c_library && test::IsOneOf(call.platform, outcome, whole)) ||
           (its_victims.sqlite && test::IsOneOf(call.broken, outcome, whole));
  }

  const Call& call = GetParam();
  test::SeededDevice device{call};
  Victims victims;
  long shortages = 0;
};

TEST_P(CallWithoutMemory, EndsAsItSaysAndKeepsNothing) {
  call.run();  // what is made once
  const Outcome whole = call.run();
  long blocks = BlocksLeft();
  for (long nth = 1; nth < kMostAllocations; ++nth) {
    const Outcome outcome = FailAt(nth, Shortage::kOnce);
    const bool is_over = victims.IsNobody();
    ASSERT_TRUE(IsDocumented(outcome, victims, whole)) << "allocation " << nth << ": " << outcome;
    ASSERT_EQ(call.run(), whole) << "after allocation " << nth;
    if (BlocksLeft() > blocks) {
      // Some things are made once, by the first failure of their kind.
      blocks = BlocksLeft();
      FailAt(nth, Shortage::kOnce);
      call.run();
    }
    ASSERT_LE(BlocksLeft(), blocks) << "left by allocation " << nth << ": " << outcome;
    if (is_over) return;
  }
  FAIL() << "the call does not come to its end";
}

// Whatever the call makes once for its process is not there yet, and is made step by step.
TEST_P(CallWithoutMemory, EndsAsItSaysAsTheFirstOfItsProcess) {
  std::vector<std::pair<Outcome, Victims>> outcomes;
  int restarts = 0;
  for (long nth = 1; nth < kMostAllocations; ++nth) {
    const long blocks = BlocksLeft();
    const Outcome outcome = FailAt(nth, Shortage::kFromThenOn);
    outcomes.emplace_back(outcome, victims);
    if (victims.IsNobody()) break;
    // What this call has made, the next one finds: its allocations are counted anew.
    if (BlocksLeft() <= blocks) continue;
    ASSERT_LT(++restarts, kMostThingsMadeOnce) << "allocation " << nth << " leaves blocks behind";
    nth = 0;
  }
  const Outcome whole = call.run();
  for (const auto& [outcome, its_victims] : outcomes) {
    EXPECT_TRUE(IsDocumented(outcome, its_victims, whole)) << outcome;
  }
  EXPECT_EQ(outcomes.back().first, whole);
  // Throws when the failures have left a client that is not seen on the bus.
  if (call.has_bus) device.GetBus()->WaitForOwner(kClientName + std::to_string(getpid()));
}

INSTANTIATE_TEST_SUITE_P(All, CallWithoutMemory, ::testing::ValuesIn(test::EveryCall()),
                         test::NameOfCall);

}  // namespace
