// SPDX-License-Identifier: Apache-2.0
//
// Every call in a child that was forked while a thread of its parent waited in a read: what needs
// the database or the service fails, and nothing hangs.
#include <gtest/gtest.h>
#include <unistd.h>

#include <condition_variable>
#include <mutex>
#include <thread>

#include "faults/calls.h"
#include "faults/seeded_device.h"
#include "soak/child.h"
#include "support/writer.h"

namespace {

std::mutex g_mutex;
std::condition_variable g_changed;
bool g_is_pausing = false;
bool g_may_go_on = false;

}  // namespace

// The pause of a read whose database is busy lasts as long as the test wants.
extern "C" int usleep(useconds_t /*microseconds*/) {
  std::unique_lock<std::mutex> lock(g_mutex);
  g_is_pausing = true;
  g_changed.notify_all();
  g_changed.wait(lock, [] { return g_may_go_on; });
  return 0;
}

namespace {

using test::Call;
using test::ForkedChild;
using test::Outcome;
using test::Require;

class CallInARefusedChild : public ::testing::TestWithParam<Call> {
 protected:
  CallInARefusedChild() : reader([] { tav_is_isp_app(test::kAppA); }) {
    std::unique_lock<std::mutex> lock(g_mutex);
    g_changed.wait(lock, [] { return g_is_pausing; });
  }
  ~CallInARefusedChild() override {
    writer.reset();
    {
      const std::lock_guard<std::mutex> lock(g_mutex);
      g_may_go_on = true;
      g_changed.notify_all();
    }
    reader.join();
  }

  const Call& call = GetParam();
  test::SeededDevice device{call};
  std::unique_ptr<test::ExclusiveWriter> writer = std::make_unique<test::ExclusiveWriter>(
      device.Get().DatabaseFile(), std::chrono::seconds(60));
  std::thread reader;
};

// One that were not refused would wait for ever, for the lock or in a pause.
TEST_P(CallInARefusedChild, FailsWhenItNeedsTheDatabaseOrTheService) {
  ForkedChild child([&] {
    const Outcome outcome = call.run();
    if (!call.has_bus && call.busy.empty()) return;
    Require(test::IsOneOf(call.failed, outcome, outcome),
            "status " + std::to_string(outcome.status));
  });
  EXPECT_EQ(child.Complaint(), "");
}

INSTANTIATE_TEST_SUITE_P(All, CallInARefusedChild, ::testing::ValuesIn(test::EveryCall()),
                         test::NameOfCall);

}  // namespace
