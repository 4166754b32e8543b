// SPDX-License-Identifier: Apache-2.0
//
// Requests in a child that was forked from a process that has used the bus, or has not.
#include <atomic>
#include <chrono>
#include <memory>

#include "bus/on_the_bus.h"
#include "platform/threads.h"
#include "soak/child.h"

namespace {

using test::ForkedChild;
using test::Require;
using test::Service;

constexpr char kRefusal[] = "the process that forked this one has used the bus, so this one cannot";

void RequireRead() {
  tav_app_info_s info;
  const int result = tav_get_app_info("clock", &info);
  Require(result == 0, "lookup: " + std::to_string(result));
}

// Every request fails, and none takes time.
void RequireRefusals() {
  const Stopwatch stopwatch;
  int mode = 77;
  Require(tav_get_ticker_mode(&mode) == -1 && mode == 77, "get_ticker_mode");
  Require(tav_set_ticker_mode(1) == -1, "set_ticker_mode");
  Require(tav_set_app_lock("clock", 1) == -1, "set_app_lock");
  Require(tav_set_app_rating("clock", 1) == -1, "set_app_rating");
  Require(tav_db_update_app_use_count("clock") == -1, "update_app_use_count");
  Require(tav_db_set_app_updated("clock") == -1, "set_app_updated");
  Require(stopwatch.Elapsed() < std::chrono::seconds(5), "too slow");
}

class ForkedRequests : public OnTheBus {};

TEST_F(ForkedRequests, AreRefusedAtOnceWhenTheParentHasUsedTheBus) {
  Service service(bus);
  ASSERT_EQ(tav_set_ticker_mode(1), 0);
  const std::string owner = bus.WaitForOwner(ClientName());
  ForkedChild child([] {
    RequireRefusals();
    RequireRead();
    RequireRefusals();
  });
  EXPECT_EQ(child.Complaint(), "");
  EXPECT_EQ(log.Count(kRefusal), 12);
  // The parent goes on as it was.
  EXPECT_EQ(tav_set_ticker_mode(3), 0);
  EXPECT_EQ(bus.Owner(ClientName()), owner);
  EXPECT_EQ(service.Calls("set_ticker_mode_to_launch").size(), 2U);
  EXPECT_EQ(log.Count("got gdus connection success"), 1);
}

TEST_F(ForkedRequests, AreRefusedWhenTheParentHasTriedInVain) {
  bus.Stop();
  ASSERT_EQ(tav_set_ticker_mode(1), -1);
  bus.Start();
  Service service(bus);
  EXPECT_EQ(ForkedChild(RequireRefusals).Complaint(), "");
  EXPECT_EQ(tav_set_ticker_mode(1), 0);
}

TEST_F(ForkedRequests, ConnectAnewWhenTheParentHasNotUsedTheBus) {
  RequireRead();
  int go[2];
  ASSERT_EQ(pipe(go), 0);
  // Forked first: what this process asks the bus on its own would be a use as well.
  ForkedChild child([&] {
    char byte;
    close(go[1]);
    Require(read(go[0], &byte, 1) == 1, "not told");
    Require(tav_set_ticker_mode(5) == 0, "set_ticker_mode");
    int mode = 0;
    Require(tav_get_ticker_mode(&mode) == 0 && mode == 5, "get_ticker_mode");
    RequireRead();
  });
  Service service(bus);
  const std::string name = "org.tizen.tv.tavcore.client.obj" + std::to_string(child.Id());
  ASSERT_EQ(write(go[1], "x", 1), 1);
  close(go[0]);
  close(go[1]);
  EXPECT_EQ(child.Complaint(), "");
  EXPECT_TRUE(log.Has("owning name " + name + "."));
  EXPECT_EQ(tav_set_ticker_mode(6), 0);
  bus.WaitForOwner(ClientName());
}

// What the host has had GLib do on a thread of GLib's leaves the child with threads that GLib
// believes in and that are not there.
TEST_F(ForkedRequests, EndInTimeWhenTheHostItselfHasUsedTheBusAndThreads) {
  Service service(bus);  // asks for its name, in this process
  {
    GTask* task = g_task_new(nullptr, nullptr, nullptr, nullptr);
    g_task_run_in_thread_sync(task, [](GTask* self, gpointer, gpointer, GCancellable*) {
      g_task_return_boolean(self, TRUE);
    });
    g_object_unref(task);
    ASSERT_TRUE(test::WaitUntil([] { return g_thread_pool_get_num_unused_threads() > 0; }));
  }
  const Stopwatch stopwatch;
  ForkedChild child([] {
    Require(tav_set_ticker_mode(1) == -1, "set_ticker_mode");
    RequireRead();
  });
  EXPECT_EQ(child.Complaint(), "");
  EXPECT_LT(stopwatch.Elapsed(), std::chrono::seconds(45));
  EXPECT_EQ(tav_set_ticker_mode(1), 0);
}

TEST_F(ForkedRequests, HangNoChildThatIsForkedInTheMiddleOfThem) {
  Service service(bus);
  service.Fault("*", "random-delay:2");
  ASSERT_EQ(tav_set_ticker_mode(1), 0);
  constexpr int kThreads = 4;
  std::atomic<bool> is_done{false};
  std::vector<std::string> complaints(kThreads);
  {
    const Threads threads(kThreads, [&](int number) {
      try {
        if (number == 0) {
          for (int i = 0; i < 30; ++i) {
            const std::string complaint = ForkedChild(RequireRefusals).Complaint();
            Require(complaint.empty(), "child " + std::to_string(i) + ": " + complaint);
          }
        } else {
          while (!is_done) Require(tav_set_ticker_mode(number) == 0, "set_ticker_mode");
        }
      } catch (const std::exception& error) {
        complaints[static_cast<std::size_t>(number)] = error.what();
      }
      if (number == 0) is_done = true;
    });
  }
  EXPECT_EQ(complaints, std::vector<std::string>(kThreads));
}

}  // namespace
