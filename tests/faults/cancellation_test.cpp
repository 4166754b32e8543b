// SPDX-License-Identifier: Apache-2.0
//
// Every call on a thread that is to be cancelled: the call is made, whole, and the thread ends at
// its own next cancellation point.
#include <gtest/gtest.h>
#include <pthread.h>

#include "faults/calls.h"
#include "faults/seeded_device.h"

namespace {

using test::Call;
using test::Outcome;

struct CancelledCall {
  const Call& call;
  Outcome outcome = {};
  bool has_returned = false;
};

void* MakeCallThenEnd(void* argument) {
  auto* cancelled = static_cast<CancelledCall*>(argument);
  int state;
  pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &state);  // but in the call
  pthread_cancel(pthread_self());
  cancelled->outcome = cancelled->call.run();
  cancelled->has_returned = true;
  pthread_setcancelstate(state, nullptr);
  pthread_testcancel();
  return nullptr;
}

class CallOnACancelledThread : public ::testing::TestWithParam<Call> {
 protected:
  // What the call came to there.
  Outcome Run() {
    CancelledCall cancelled{GetParam()};
    pthread_t thread;
    EXPECT_EQ(pthread_create(&thread, nullptr, MakeCallThenEnd, &cancelled), 0);
    void* result = nullptr;
    EXPECT_EQ(pthread_join(thread, &result), 0);
    EXPECT_TRUE(cancelled.has_returned);
    EXPECT_EQ(result, PTHREAD_CANCELED);
    return cancelled.outcome;
  }

  test::SeededDevice device{GetParam()};
};

TEST_P(CallOnACancelledThread, ReturnsAndThenTheThreadEnds) {
  const Outcome first = Run();  // also makes what is made once in a process
  const Outcome whole = GetParam().run();
  EXPECT_EQ(first, whole);
  EXPECT_EQ(Run(), whole);
  EXPECT_EQ(GetParam().run(), whole);
}

INSTANTIATE_TEST_SUITE_P(All, CallOnACancelledThread, ::testing::ValuesIn(test::EveryCall()),
                         test::NameOfCall);

}  // namespace
