// SPDX-License-Identifier: Apache-2.0
// Watches across a fork: the parent's are dead in the child, which may begin its own.
#include <fcntl.h>

#include "watching.h"

namespace {

class WatchesAndForks : public Device {
 protected:
  // Runs `body` in a child, which must find all right.
  template <typename Body>
  static pid_t Fork(const Body& body) {
    const pid_t child = fork();
    if (child != 0) return child;
    _exit(body() ? 0 : 1);
  }
  static bool Finish(pid_t child) {
    int status = -1;
    return waitpid(child, &status, 0) == child && status == 0;
  }
};

// Two processes that wait for each other.
class Baton {
 public:
  Baton() { EXPECT_EQ(pipe2(m_ends, O_CLOEXEC), 0); }
  Baton(const Baton&) = delete;
  Baton& operator=(const Baton&) = delete;
  ~Baton() {
    close(m_ends[0]);
    close(m_ends[1]);
  }
  bool Give() const { return write(m_ends[1], "", 1) == 1; }
  bool Take() const {
    char nothing = 0;
    return read(m_ends[0], &nothing, 1) == 1;
  }

 private:
  int m_ends[2];
};

TEST_F(WatchesAndForks, TellTheParentAllWhileAChildRunsItsContext) {
  constexpr int kChanges = 60;
  vconf_set_int(kWatchedKey, 0);
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  const Baton to_child;
  const Baton to_parent;
  const pid_t child = Fork([&] {
    for (int i = 0; i < kChanges; ++i) {
      if (!to_child.Take()) return false;
      while (g_main_context_iteration(nullptr, FALSE) != FALSE) continue;
      if (!to_parent.Give()) return false;
    }
    return calls.empty();
  });
  Calls all;
  for (int i = 1; i <= kChanges; ++i) {
    vconf_set_int(kWatchedKey, i);
    ASSERT_TRUE(to_child.Give() && to_parent.Take());
    all.push_back("memory/tav/watched=" + std::to_string(i));
    ASSERT_TRUE(RunUntilCalls(calls, all.size())) << i;
  }
  EXPECT_EQ(calls, all);
  EXPECT_TRUE(Finish(child));
}

TEST_F(WatchesAndForks, AreNotPolledInTheChildForEver) {
  vconf_set_int(kWatchedKey, 0);
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  vconf_set_int(kWatchedKey, 1);
  EXPECT_TRUE(Finish(Fork([&] {
    int rounds = 0;
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) ++rounds;
    return rounds <= 1 && g_main_context_pending(nullptr) == FALSE && calls.empty();
  })));
  ASSERT_TRUE(RunUntilCalls(calls, 1));
}

TEST_F(WatchesAndForks, OfTheChildTellItOfTheSameKeyAndLeaveTheParentsAlone) {
  vconf_set_int(kWatchedKey, 0);
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  for (int i = 1; i <= 3; ++i) {
    EXPECT_TRUE(Finish(Fork([&] {
      Calls mine;
      if (vconf_ignore_key_changed(kWatchedKey, Record) != VCONF_ERROR) return false;
      if (vconf_notify_key_changed(kWatchedKey, Record, &mine) != VCONF_OK) return false;
      vconf_set_int(kWatchedKey, i);
      const bool is_told = RunUntilCalls(mine, 1);
      return is_told && vconf_ignore_key_changed(kWatchedKey, Record) == VCONF_OK &&
             calls.size() + 1 == static_cast<size_t>(i);
    })));
    ASSERT_TRUE(RunUntilCalls(calls, static_cast<size_t>(i)));
  }
  EXPECT_EQ(calls, (Calls{"memory/tav/watched=1", "memory/tav/watched=2", "memory/tav/watched=3"}));
}

TEST_F(WatchesAndForks, MayBeginInAGrandchildToo) {
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  EXPECT_TRUE(Finish(Fork([&] {
    const Watching mine(kWatchedKey, RecordToo, &calls);
    return Finish(Fork([&] {
             Calls its;
             const Watching own(kWatchedKey, RecordToo, &its);
             vconf_set_int(kWatchedKey, 1);
             return RunUntilCalls(its, 1) && calls.empty();
           })) &&
           RunUntilCalls(calls, 1);
  })));
  EXPECT_TRUE(RunUntilCalls(calls, 1));
}

}  // namespace
