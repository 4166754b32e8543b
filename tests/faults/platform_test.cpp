// SPDX-License-Identifier: Apache-2.0
//
// Every call with every function of the platform that it uses failing in every way: the call
// ends as it says it may, and the next one gives what it always gives.
#include "faults/platform.h"

#include <gtest/gtest.h>

#include <iostream>

#include "faults/calls.h"
#include "faults/seeded_device.h"

namespace {

using test::Call;
using test::Outcome;
using test::PlatformFault;

class CallOnAFailingPlatform : public ::testing::TestWithParam<Call> {
 protected:
  ~CallOnAFailingPlatform() override { std::cout << injections << " functions have failed\n"; }

  Outcome Fail(const std::string& function, PlatformFault fault, int nth) {
    const test::FailingPlatform failing(function, fault, nth);
    ++injections;
    return call.run();
  }
  bool IsDocumented(const Outcome& outcome, const Outcome& whole) const {
    return outcome == whole || test::IsOneOf(call.failed, outcome, whole) ||
           test::IsOneOf(call.platform, outcome, whole);
  }

  const Call& call = GetParam();
  test::SeededDevice device{call};
  long injections = 0;
};

constexpr PlatformFault kFaults[] = {PlatformFault::kFails, PlatformFault::kFailsAfterWriting,
                                     PlatformFault::kGivesNull};

TEST_P(CallOnAFailingPlatform, EndsAsItSays) {
  call.run();
  Outcome whole;
  const auto calls = test::PlatformCalls([&] { whole = call.run(); });
  for (const auto& [function, count] : calls) {
    for (const PlatformFault fault : kFaults) {
      for (int nth = 0; nth <= count; ++nth) {
        const Outcome outcome = Fail(function, fault, nth);
        ASSERT_TRUE(IsDocumented(outcome, whole)) << function << ", call " << nth << ", fault "
                                                  << static_cast<int>(fault) << ": " << outcome;
        ASSERT_EQ(call.run(), whole) << "after " << function;
      }
    }
  }
}

TEST_P(CallOnAFailingPlatform, EndsAsItSaysAsTheFirstOfItsProcess) {
  std::vector<Outcome> outcomes;
  for (const char* function : {"tzplatform_getenv", "vconf_get_int", "dlog_print"}) {
    outcomes.push_back(Fail(function, PlatformFault::kFails, 0));
  }
  const Outcome whole = call.run();
  for (const Outcome& outcome : outcomes) {
    EXPECT_TRUE(IsDocumented(outcome, whole) || test::IsOneOf(call.broken, outcome, whole))
        << outcome;
  }
}

TEST_P(CallOnAFailingPlatform, DoesNotMindALogThatFails) {
  const Outcome whole = call.run();
  EXPECT_EQ(Fail("dlog_print", PlatformFault::kFails, 0), whole);
}

INSTANTIATE_TEST_SUITE_P(All, CallOnAFailingPlatform, ::testing::ValuesIn(test::EveryCall()),
                         test::NameOfCall);

}  // namespace
