// SPDX-License-Identifier: Apache-2.0
// Watches under load, across threads, and when the ground moves under them.
#include <fcntl.h>

#include "threads.h"
#include "watching.h"

namespace {

class WatchLimits : public Device {};

int ValueOf(const std::string& call) {
  return std::stoi(call.substr(call.find('=') + 1));
}

TEST_F(WatchLimits, ShowTheLastOfAThousandChangesOfAnotherProcess) {
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  {
    const Setter other(kWatchedKey, 1000);
    ASSERT_TRUE(RunUntil([&] { return !calls.empty() && ValueOf(calls.back()) == 1000; }));
  }
  for (size_t i = 1; i < calls.size(); ++i) EXPECT_LE(ValueOf(calls[i - 1]), ValueOf(calls[i]));
  EXPECT_LE(calls.size(), 1000U);
  EXPECT_EQ(TakeLog(), "");
}

TEST_F(WatchLimits, ShowTheLastOfAThousandChangesThatNobodyTookInBetween) {
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  { const Setter other(kWatchedKey, 1000); }
  ASSERT_TRUE(RunUntilQuiet());
  EXPECT_EQ(calls, Calls{"memory/tav/watched=1000"});
}

TEST_F(WatchLimits, ShowAChangeWhoseEventWasLostInAnOverflow) {
  vconf_set_int(kWatchedKey, 4);
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  int limit = 0;
  std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> limit;
  ASSERT_GT(limit, 0);
  // Two names in turn: the kernel joins equal events only.
  const std::string names[] = {(Root() / kWatchedFile).string() + ".a",
                               (Root() / kWatchedFile).string() + ".b"};
  for (int i = 0; i < limit + 10; ++i) {
    const int file = open(names[i % 2].c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_GE(file, 0);
    close(file);
  }
  vconf_set_int(kWatchedKey, 5);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  vconf_set_int(kWatchedKey, 6);
  ASSERT_TRUE(RunUntilCalls(calls, 2));
  EXPECT_EQ(calls, (Calls{"memory/tav/watched=5", "memory/tav/watched=6"}));
}

TEST_F(WatchLimits, OutliveTheirDirectory) {
  vconf_set_int(kWatchedKey, 1);
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  std::filesystem::remove_all(Root() / "vconf");
  ASSERT_TRUE(RunUntilQuiet());
  EXPECT_EQ(calls, Calls{});
  vconf_set_int(kWatchedKey, 2);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  EXPECT_EQ(calls, Calls{"memory/tav/watched=2"});

  // The new directory is there before anybody noticed that the old one went.
  std::filesystem::remove_all(Root() / "vconf");
  vconf_set_int(kWatchedKey, 3);
  ASSERT_TRUE(RunUntilCalls(calls, 2));
  EXPECT_EQ(calls, (Calls{"memory/tav/watched=2", "memory/tav/watched=3"}));
}

TEST_F(WatchLimits, StayOnTheDeviceWhereTheyBegan) {
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  setenv("TAV_DEVICE_ROOT", (Root() / "second").c_str(), 1);
  vconf_set_int(kWatchedKey, 2);
  ASSERT_TRUE(RunUntilQuiet());
  EXPECT_EQ(calls, Calls{});
  setenv("TAV_DEVICE_ROOT", Root().c_str(), 1);
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  EXPECT_EQ(calls, Calls{"memory/tav/watched=1"});
}

TEST_F(WatchLimits, CallOnTheThreadWhoseContextWasTheDefault) {
  std::atomic<bool> watching{false};
  std::thread worker([&] {
    GMainContext* context = g_main_context_new();
    g_main_context_push_thread_default(context);
    struct {
      std::thread::id thread;
      Calls calls;
    } seen;
    const auto record = [](keynode_t* node, void* data) {
      auto* record_of = static_cast<decltype(seen)*>(data);
      record_of->thread = std::this_thread::get_id();
      record_of->calls.push_back(Described(node));
    };
    EXPECT_EQ(vconf_notify_key_changed(kWatchedKey, record, &seen), VCONF_OK);
    watching = true;
    EXPECT_TRUE(RunUntilCalls(seen.calls, 1));
    EXPECT_EQ(seen.thread, std::this_thread::get_id());
    EXPECT_EQ(seen.calls, Calls{"memory/tav/watched=5"});
    EXPECT_EQ(vconf_ignore_key_changed(kWatchedKey, record), VCONF_OK);
    g_main_context_pop_thread_default(context);
    g_main_context_unref(context);
  });
  while (!watching) std::this_thread::yield();
  vconf_set_int(kWatchedKey, 5);
  worker.join();
}

void Count(keynode_t* /*node*/, void* count) {
  ++*static_cast<std::atomic<int>*>(count);
}

TEST_F(WatchLimits, BeginOnceWhenManyThreadsAskAtOnce) {
  std::atomic<int> calls{0};
  std::atomic<int> accepted{0};
  {
    const Threads threads(8, [&](int) {
      if (vconf_notify_key_changed(kWatchedKey, Count, &calls) == VCONF_OK) ++accepted;
    });
  }
  EXPECT_EQ(accepted, 1);
  vconf_set_int(kWatchedKey, 1);
  EXPECT_TRUE(RunUntilQuiet());
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(vconf_ignore_key_changed(kWatchedKey, Count), VCONF_OK);
}

TEST_F(WatchLimits, BeginAndEndOnManyThreadsWhileChangesAreTold) {
  std::atomic<int> calls{0};
  std::atomic<int> running{8};
  {
    const Threads threads(8, [&](int i) {
      const std::string key = "memory/thread" + std::to_string(i);
      for (int turn = 0; turn < 50; ++turn) {
        EXPECT_EQ(vconf_notify_key_changed(key.c_str(), Count, &calls), VCONF_OK);
        EXPECT_EQ(vconf_set_int(key.c_str(), turn), VCONF_OK);
        EXPECT_EQ(vconf_ignore_key_changed(key.c_str(), Count), VCONF_OK);
      }
      --running;
      g_main_context_wakeup(nullptr);
    });
    EXPECT_TRUE(RunUntil([&] { return running == 0; }));
  }
  EXPECT_EQ(TakeLog(), "");
}

}  // namespace
