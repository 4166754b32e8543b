// SPDX-License-Identifier: Apache-2.0
// Watches that share a main context, and the descriptors that they take.
#include <sys/resource.h>

#include <functional>
#include <memory>
#include <stdexcept>

#include "watching.h"

namespace {

class SharedContext : public Device {
 protected:
  // How many inotify instances this process has.
  static int Instances() {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
      std::error_code gone;
      if (std::filesystem::read_symlink(entry, gone) == "anon_inode:inotify") ++count;
    }
    return count;
  }

  // How many directories this process watches.
  static int WatchedDirectories() {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fdinfo")) {
      std::ifstream file(entry.path());
      for (std::string line; std::getline(file, line);) count += line.rfind("inotify wd:", 0) == 0;
    }
    return count;
  }

  static std::string Key(int number) {
    return "keys" + std::to_string(number % 4) + "/key" + std::to_string(number);
  }
};

TEST_F(SharedContext, HasOneInotifyInstanceForAllItsKeys) {
  Calls calls;
  for (int i = 0; i < 200; ++i) {
    ASSERT_EQ(vconf_notify_key_changed(Key(i).c_str(), Record, &calls), VCONF_OK);
    ASSERT_EQ(Instances(), 1);
  }
  GMainContext* another = g_main_context_new();
  g_main_context_push_thread_default(another);
  for (int i = 0; i < 20; ++i) {
    ASSERT_EQ(vconf_notify_key_changed(Key(i).c_str(), RecordToo, &calls), VCONF_OK);
    ASSERT_EQ(Instances(), 2);
  }
  for (int i = 0; i < 20; ++i) EXPECT_EQ(vconf_ignore_key_changed(Key(i).c_str(), RecordToo), 0);
  EXPECT_EQ(Instances(), 1);
  g_main_context_pop_thread_default(another);
  g_main_context_unref(another);

  vconf_set_int(Key(150).c_str(), 5);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  EXPECT_EQ(calls, Calls{Key(150) + "=5"});
  for (int i = 0; i < 200; ++i) EXPECT_EQ(vconf_ignore_key_changed(Key(i).c_str(), Record), 0);
  EXPECT_EQ(Instances(), 0);
}

TEST_F(SharedContext, WatchesNoDirectoryOfAWatchThatHasEnded) {
  for (int i = 0; i < 20; ++i) vconf_set_int(Key(i).c_str(), i);
  const Watching watching(Key(0).c_str(), Record, nullptr);
  const int before = WatchedDirectories();
  EXPECT_GT(before, 0);
  for (int i = 0; i < 20; ++i) {
    const Watching another(Key(i).c_str(), RecordToo, nullptr);
    EXPECT_EQ(WatchedDirectories(), before + (i % 4 == 0 ? 0 : 1)) << i;
  }
  EXPECT_EQ(WatchedDirectories(), before);
}

TEST_F(SharedContext, TellsANewWatchNothingOfWhatHappenedBefore) {
  Calls first;
  Calls second;
  vconf_set_int(kWatchedKey, 0);
  const Watching watching(kWatchedKey, Record, &first);
  vconf_set_int(kWatchedKey, 1);
  vconf_set_int("memory/tav/second", 1);
  const Watching too(kWatchedKey, RecordToo, &second);
  const Watching another("memory/tav/second", Record, &second);
  ASSERT_TRUE(RunUntilCalls(first, 1));
  ASSERT_TRUE(RunUntilQuiet());
  EXPECT_EQ(first, Calls{"memory/tav/watched=1"});
  EXPECT_EQ(second, Calls{});
}

TEST_F(SharedContext, TellsWhatHappenedBeforeAnotherWatchBeganOrEnded) {
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  vconf_set_int(kWatchedKey, 1);
  auto another = std::make_unique<Watching>("other", Record, nullptr);
  EXPECT_TRUE(RunUntilCalls(calls, 1));
  std::filesystem::remove_all(Root() / "vconf");
  vconf_set_int(kWatchedKey, 2);
  another.reset();
  EXPECT_TRUE(RunUntilCalls(calls, 2));
}

using Work = std::function<void(keynode_t*)>;
void DoWork(keynode_t* node, void* work) {
  (*static_cast<Work*>(work))(node);
}

TEST_F(SharedContext, TellsOthersWhileACallbackRunsItAndTheSameOneAfterwards) {
  Calls calls;
  const Watching other("other", Record, &calls);
  Work work = [&](keynode_t* node) {
    calls.push_back("begin");
    if (vconf_keynode_get_int(node) == 1) {
      vconf_set_int(kWatchedKey, 2);
      vconf_set_int("other", 3);
      EXPECT_TRUE(RunUntilCalls(calls, 2));
      EXPECT_TRUE(RunUntilQuiet());
    }
    calls.push_back("end");
  };
  const Watching watching(kWatchedKey, DoWork, &work);
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilCalls(calls, 5));
  EXPECT_EQ(calls, (Calls{"begin", "other=3", "end", "begin", "end"}));
}

// The last watch keeps the context, whose other sources may call back when they go with it.
TEST_F(SharedContext, GoesOutsideTheLockOfTheWatches) {
  Calls calls;
  ASSERT_EQ(vconf_notify_key_changed("other", RecordToo, &calls), VCONF_OK);
  GMainContext* context = g_main_context_new();
  g_main_context_push_thread_default(context);
  ASSERT_EQ(vconf_notify_key_changed(kWatchedKey, Record, &calls), VCONF_OK);
  int status = 1;
  GSource* source = g_idle_source_new();
  g_source_set_callback(
      source, [](gpointer) { return G_SOURCE_REMOVE; }, &status,
      [](gpointer result) {
        *static_cast<int*>(result) = vconf_ignore_key_changed("other", RecordToo);
      });
  g_source_attach(source, context);
  g_source_unref(source);
  g_main_context_pop_thread_default(context);
  g_main_context_unref(context);
  EXPECT_EQ(vconf_ignore_key_changed(kWatchedKey, Record), VCONF_OK);
  EXPECT_EQ(status, VCONF_OK);
}

TEST_F(SharedContext, TellsTheOthersWhenOneCallbackThrows) {
  Calls calls;
  Work work = [](keynode_t*) { throw 7; };
  const Watching careless(kWatchedKey, DoWork, &work);
  const Watching watching(kWatchedKey, Record, &calls);
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  EXPECT_EQ(TakeLog(), "E/VCONF: an exception of an unknown type\n");
}

// Does the work in a child that has so many descriptors left; true unless a signal ended it.
bool LivesWithDescriptors(int free, const std::function<bool()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    rlimit before = {};
    getrlimit(RLIMIT_NOFILE, &before);
    const int next = dup(STDIN_FILENO);
    close(next);
    const rlimit few = {static_cast<rlim_t>(next + free), before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    const bool is_right = work();
    setrlimit(RLIMIT_NOFILE, &before);
    Calls calls;
    const bool works_again = vconf_notify_key_changed("again", RecordToo, &calls) == VCONF_OK &&
                             vconf_set_int("again", 1) == VCONF_OK && RunUntilCalls(calls, 1);
    _exit(is_right && works_again ? 0 : 1);
  }
  int status = -1;
  return waitpid(child, &status, 0) == child && status == 0;
}

TEST_F(SharedContext, IsNotMadeWithTooFewDescriptors) {
  vconf_set_int(kWatchedKey, 1);
  for (int free = 0; free <= 16; ++free) {
    EXPECT_TRUE(LivesWithDescriptors(free, [&] {
      TakeLog();
      const int status = vconf_notify_key_changed(kWatchedKey, Record, nullptr);
      const std::string log = TakeLog();
      if (free >= 3) return status == VCONF_OK && log.empty();
      return status == VCONF_ERROR || status == VCONF_OK;
    })) << free;
  }
  EXPECT_TRUE(LivesWithDescriptors(1, [] {
    return vconf_notify_key_changed(kWatchedKey, Record, nullptr) == VCONF_ERROR &&
           TakeLog() ==
               "E/VCONF: too few file descriptors to watch a setting: Too many open "
               "files\n";
  }));
}

TEST_F(SharedContext, SurvivesEveryOtherCallWithTooFewDescriptors) {
  vconf_set_int(kWatchedKey, 1);
  for (int free = 0; free <= 16; ++free) {
    EXPECT_TRUE(LivesWithDescriptors(free, [&] {
      int value = 0;
      const bool is_read = vconf_get_int(kWatchedKey, &value) == VCONF_OK;
      const bool is_written = vconf_set_int(kWatchedKey, 2) == VCONF_OK;
      vconf_unset("none");
      return is_read == (free >= 1) && is_written == (free >= 1);
    })) << free;
  }
}

}  // namespace
