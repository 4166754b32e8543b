// SPDX-License-Identifier: Apache-2.0
//
// A child that is forked while a call does not come to its end. usleep stands here before the
// real one, so that a read of a busy database pauses as long as the test wants.
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

#include "soak/child.h"
#include "support/device.h"
#include "support/writer.h"
#include "tav_db_api.h"

namespace {

std::mutex g_mutex;
std::condition_variable g_changed;
bool g_is_pausing = false;
bool g_may_go_on = false;
std::function<void()> g_instead;  // of a pause

}  // namespace

extern "C" int usleep(useconds_t /*microseconds*/) {
  if (g_instead) return g_instead(), 0;
  std::unique_lock<std::mutex> lock(g_mutex);
  g_is_pausing = true;
  g_changed.notify_all();
  g_changed.wait(lock, [] { return g_may_go_on; });
  return 0;
}

namespace {

using std::chrono::seconds;
using std::chrono::steady_clock;
using test::ForkedChild;
using test::Require;

int Lookup() {
  tav_app_info_s info;
  return tav_get_app_info("clock", &info);
}

TEST(ForkInACall, WaitsSomeSecondsForTheCallAndGivesAChildThatIsRefused) {
  test::Device device;
  device.Install(test::App("clock"));
  setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere", 1);
  ASSERT_EQ(Lookup(), 0);

  auto writer = std::make_unique<test::ExclusiveWriter>(device.DatabaseFile(), seconds(60));
  int result = 77;
  std::thread reader([&] { result = Lookup(); });
  {
    std::unique_lock<std::mutex> lock(g_mutex);
    g_changed.wait(lock, [] { return g_is_pausing; });
  }
  const auto start = steady_clock::now();
  ForkedChild child([] {
    const auto forked = steady_clock::now();
    Require(Lookup() == -1, "a lookup");
    int count = 0;
    Require(tav_get_app_count({65535, 0, 65535}, &count) == -1, "a count");
    Require(tav_set_ticker_mode(1) == -1, "a request");
    Require(ForkedChild([] { Require(Lookup() == -1, "its own lookup"); }).Complaint().empty(),
            "a child's child");
    Require(steady_clock::now() - forked < seconds(5), "not at once");
  });
  EXPECT_GE(steady_clock::now() - start, seconds(5));
  EXPECT_LT(steady_clock::now() - start, seconds(15));
  EXPECT_EQ(child.Complaint(), "");
  EXPECT_TRUE(device.GetLog().HasNotice(
      "forked in the middle of a call: the child cannot use the library"));
  EXPECT_TRUE(device.GetLog().HasError(
      "this process was forked in the middle of a call, and cannot use the database"));
  EXPECT_TRUE(device.GetLog().HasError(
      "this process was forked in the middle of a call, and cannot use the bus"));

  // The parent's call comes to its end as if nothing had been.
  writer.reset();
  {
    const std::lock_guard<std::mutex> lock(g_mutex);
    g_may_go_on = true;
    g_changed.notify_all();
  }
  reader.join();
  EXPECT_EQ(result, 0);
  EXPECT_EQ(ForkedChild([] { Require(Lookup() == 0, "a lookup"); }).Complaint(), "");
}

TEST(ForkInACall, WaitsForNobodyOnTheThreadOfTheCall) {
  test::Device device;
  device.Install(test::App("clock"));
  ASSERT_EQ(Lookup(), 0);
  auto writer = std::make_unique<test::ExclusiveWriter>(device.DatabaseFile(), seconds(60));
  const auto start = steady_clock::now();
  g_instead = [&] {
    EXPECT_EQ(ForkedChild([] {}).Complaint(), "");
    writer.reset();
  };
  EXPECT_EQ(Lookup(), 0);
  EXPECT_LT(steady_clock::now() - start, seconds(4));
  EXPECT_EQ(ForkedChild([] { Require(Lookup() == 0, "a lookup"); }).Complaint(), "");
}

}  // namespace
