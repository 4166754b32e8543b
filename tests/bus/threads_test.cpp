// SPDX-License-Identifier: Apache-2.0
//
// Many threads that ask for changes at the same time.
#include <atomic>
#include <thread>

#include "on_the_bus.h"

namespace {

using test::Service;

class Threads : public OnTheBus {
 protected:
  static constexpr int kThreads = 8;
  static constexpr int kRequests = 200;

  Service service{bus};
};

TEST_F(Threads, GetAnAnswerToEachOfTheirRequestsFromAServiceWithRandomDelays) {
  service.Fault("*", "random-delay:2");
  std::atomic<int> succeeded{0};
  std::vector<std::thread> threads;
  for (int number = 0; number < kThreads; ++number) {
    threads.emplace_back([&, number] {
      for (int request = 0; request < kRequests; ++request) {
        int mode = 0;
        const int result =
            request % 2 == 0 ? tav_set_ticker_mode(number) : tav_get_ticker_mode(&mode);
        if (result == 0 && mode >= 0 && mode < kThreads) ++succeeded;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(succeeded, kThreads * kRequests);
  EXPECT_EQ(service.Calls("set_ticker_mode_to_launch").size() +
                service.Calls("get_ticker_mode_from_launch").size(),
            std::size_t{kThreads} * kRequests);
}

TEST_F(Threads, ShareOneConnectionAndOneNameFromTheFirstRequestOn) {
  std::vector<std::thread> threads;
  for (int number = 0; number < kThreads; ++number) {
    threads.emplace_back([] { EXPECT_EQ(tav_set_ticker_mode(1), 0); });
  }
  for (std::thread& thread : threads) thread.join();
  const std::string owner = bus.WaitForOwner(ClientName());
  for (const test::ServiceCall& call : service.Calls()) EXPECT_EQ(call.sender, owner);
  EXPECT_EQ(log.Count("got gdus connection success"), 1);
}

}  // namespace
