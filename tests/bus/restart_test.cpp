// SPDX-License-Identifier: Apache-2.0
//
// A service or a bus that goes away and comes back while the host process lives.
#include <future>

#include "on_the_bus.h"

namespace {

using std::chrono::seconds;
using test::Service;

class Restart : public OnTheBus {
 protected:
  Service service{bus};
};

TEST_F(Restart, OfTheServiceIsServedByTheNextRequest) {
  ASSERT_EQ(tav_set_app_lock("clock", 1), 0);
  service.Kill();
  EXPECT_EQ(tav_set_app_lock("clock", 0), -1);
  service.Start();
  EXPECT_EQ(tav_set_app_lock("clock", 0), 0);
  EXPECT_EQ(IsLocked("clock"), 0);
}

TEST_F(Restart, OfTheServiceBetweenTwoRequestsIsNotNoticed) {
  ASSERT_EQ(tav_set_app_lock("clock", 1), 0);
  service.Stop();
  service.Start();
  EXPECT_EQ(tav_set_app_lock("clock", 0), 0);
}

TEST_F(Restart, OfTheBusIsServedByTheNextRequestAndTheClientIsKnownAgain) {
  ASSERT_EQ(tav_set_app_lock("clock", 1), 0);
  bus.WaitForOwner(ClientName());
  bus.Stop();
  service.Wait();
  bus.Start();
  service.Start();
  const Stopwatch watch;
  EXPECT_EQ(tav_set_app_lock("clock", 0), 0);
  EXPECT_LT(watch.Elapsed(), AtMost(seconds(8)));
  EXPECT_EQ(IsLocked("clock"), 0);
  const std::string owner = bus.WaitForOwner(ClientName());
  EXPECT_EQ(service.Calls("set_app_lock")[0].sender, owner);
  EXPECT_NE(bus.Introspect(ClientName(), ClientPath()).find("tavdbclient"), std::string::npos);
}

TEST_F(Restart, OfTheBusAfterRequestsThatFailedMeanwhileIsServedToo) {
  ASSERT_EQ(tav_set_app_lock("clock", 1), 0);
  bus.Stop();
  service.Wait();
  EXPECT_EQ(tav_set_app_lock("clock", 0), -1);
  EXPECT_EQ(tav_set_app_lock("clock", 0), -1);
  bus.Start();
  EXPECT_EQ(tav_set_app_lock("clock", 0), -1);  // a bus, but no service yet
  service.Start();
  EXPECT_EQ(tav_set_app_lock("clock", 0), 0);
  bus.WaitForOwner(ClientName());
}

TEST_F(Restart, OfTheBusManyTimesLeavesTheHostsThreadsAndFilesAsTheyWere) {
  const auto entries = [](const char* directory) {
    return std::distance(std::filesystem::directory_iterator(directory),
                         std::filesystem::directory_iterator());
  };
  ASSERT_EQ(tav_set_ticker_mode(1), 0);
  const auto threads = entries("/proc/self/task");
  const auto files = entries("/proc/self/fd");
  for (int round = 0; round < 8; ++round) {
    bus.Stop();
    service.Wait();
    bus.Start();
    service.Start();
    ASSERT_EQ(tav_set_ticker_mode(round), 0);
  }
  // GIO keeps a few threads for itself, and closes a socket a moment after the bus has. The
  // connections of the test's own peers end on the default context.
  EXPECT_LE(entries("/proc/self/task"), threads + 3);
  EXPECT_TRUE(test::WaitUntil([&] {
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) continue;
    return entries("/proc/self/fd") <= files + 2;
  })) << files
      << " files became " << entries("/proc/self/fd");
}

TEST_F(Restart, OfTheBusDuringACallFailsThatCallAtOnceAndServesTheNext) {
  ASSERT_EQ(tav_set_app_lock("clock", 1), 0);
  service.Fault("set_app_lock", "no-reply");
  service.Forget();
  const Stopwatch watch;
  auto request = std::async(std::launch::async, [] { return tav_set_app_lock("clock", 0); });
  ASSERT_TRUE(test::WaitUntil([&] { return !service.Calls("set_app_lock").empty(); }));
  bus.Stop();
  EXPECT_EQ(request.get(), -1);
  EXPECT_LT(watch.Elapsed(), AtMost(seconds(9)));
  service.Wait();
  bus.Start();
  service.Start();
  EXPECT_EQ(tav_set_app_lock("clock", 0), 0);
}

}  // namespace
