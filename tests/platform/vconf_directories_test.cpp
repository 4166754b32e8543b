// SPDX-License-Identifier: Apache-2.0
// Watches whose directories come, go and are replaced.
#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>

#include <cerrno>

#include "failing_calls.h"
#include "watching.h"

namespace {

namespace fs = std::filesystem;

// A directory with the watched key, made elsewhere.
class WatchedDirectories : public Device {
 protected:
  WatchedDirectories() : m_watching(kWatchedKey, Record, &calls) {}

  // Runs the context until this many changes were told, and nothing more is to come.
  bool IsTold(const Calls& all) {
    return RunUntilCalls(calls, all.size()) && RunUntilQuiet() && calls == all;
  }
  // Makes another device beside this one, whose key has the value, and returns its path.
  fs::path Another(const std::string& name, int value) const {
    WriteFile(name + "/" + kWatchedFile, "int\n" + std::to_string(value) + "\n");
    return Root() / name;
  }

  Calls calls;

 private:
  const Watching m_watching;
};

TEST_F(WatchedDirectories, AreNotMade) {
  EXPECT_TRUE(fs::is_empty(Root()));
}

TEST_F(WatchedDirectories, AreWatchedOnceTheyAreMade) {
  vconf_set_int(kWatchedKey, 1);
  EXPECT_TRUE(IsTold({"memory/tav/watched=1"}));
  vconf_set_int(kWatchedKey, 2);
  EXPECT_TRUE(IsTold({"memory/tav/watched=1", "memory/tav/watched=2"}));
}

TEST_F(WatchedDirectories, AreWatchedOnceTheyAreMadeOneByOne) {
  for (const char* directory : {"vconf", "vconf/memory", "vconf/memory/tav"}) {
    fs::create_directory(Root() / directory);
    ASSERT_TRUE(RunUntilQuiet());
  }
  EXPECT_EQ(calls, Calls{});
  WriteFile(kWatchedFile, "int\n3\n");
  EXPECT_TRUE(IsTold({"memory/tav/watched=3"}));
}

TEST_F(WatchedDirectories, OfARemovedDeviceAreNotMadeAgain) {
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  fs::remove_all(Root());
  while (g_main_context_iteration(nullptr, FALSE) != FALSE) continue;
  EXPECT_FALSE(fs::exists(Root()));
}

TEST_F(WatchedDirectories, OfARemovedDeviceAreWatchedWhenItIsThereAgain) {
  for (int value = 1; value <= 3; ++value) {
    vconf_set_int(kWatchedKey, value);
    ASSERT_TRUE(RunUntilCalls(calls, static_cast<size_t>(value)));
    fs::remove_all(Root());
    if (value == 2) continue;  // nobody notices that it was gone
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) continue;
  }
  fs::create_directory(Root());
  EXPECT_TRUE(IsTold({"memory/tav/watched=1", "memory/tav/watched=2", "memory/tav/watched=3"}));
}

TEST_F(WatchedDirectories, AreWatchedWhenAnotherOneWasMovedInTheirPlace) {
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  const fs::path another = Another("another", 2);
  for (const char* directory : {"vconf", "vconf/memory", "vconf/memory/tav"}) {
    calls.clear();
    fs::rename(Root() / directory, Root() / "before");
    fs::rename(another / directory, Root() / directory);
    EXPECT_TRUE(IsTold({"memory/tav/watched=2"})) << directory;
    vconf_set_int(kWatchedKey, 3);
    EXPECT_TRUE(IsTold({"memory/tav/watched=2", "memory/tav/watched=3"})) << directory;
    // The one that went is none of ours any more.
    WriteFile((fs::path("before") / fs::relative(kWatchedFile, directory)).string(), "int\n9\n");
    EXPECT_TRUE(IsTold({"memory/tav/watched=2", "memory/tav/watched=3"})) << directory;
    fs::remove_all(Root() / "before");
    Another("another", 2);
  }
}

TEST_F(WatchedDirectories, AreWatchedWhenTwoWereExchanged) {
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  const fs::path another = Another("another", 2) / "vconf";
  const fs::path ours = Root() / "vconf";
  ASSERT_EQ(renameat2(AT_FDCWD, another.c_str(), AT_FDCWD, ours.c_str(), RENAME_EXCHANGE), 0);
  EXPECT_TRUE(IsTold({"memory/tav/watched=1", "memory/tav/watched=2"}));
}

TEST_F(WatchedDirectories, AreWatchedWhenTheWholeDeviceWasReplaced) {
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  const fs::path elsewhere = Root().string() + "-elsewhere";
  fs::rename(Another("another", 2), elsewhere);
  fs::rename(Root(), Root().string() + "-before");
  fs::rename(elsewhere, Root());
  EXPECT_TRUE(IsTold({"memory/tav/watched=1", "memory/tav/watched=2"}));
  fs::remove_all(Root().string() + "-before");
}

TEST_F(WatchedDirectories, ThatOthersMakeBesideThemAreNoChange) {
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  fs::create_directories(Root() / "vconf/memory/tav/below");
  fs::create_directories(Root() / "vconf/memory/other/below");
  fs::create_directories(Root() / "other");
  fs::remove_all(Root() / "vconf/memory/other");
  EXPECT_TRUE(IsTold({"memory/tav/watched=1"}));
}

TEST_F(WatchedDirectories, ThatCannotBeWatchedAgainAreSaidInTheLog) {
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  fs::remove_all(Root() / "vconf");
  g_failing_calls.inotify_add_watch = ENOSPC;
  while (g_main_context_iteration(nullptr, FALSE) != FALSE) continue;
  EXPECT_EQ(TakeLog(), "E/VCONF: cannot watch memory/tav/watched: No space left on device\n");
}

class NewWatches : public Device {
 protected:
  static void AreRefused(const char* line) {
    EXPECT_EQ(vconf_notify_key_changed(kWatchedKey, Record, nullptr), VCONF_ERROR);
    EXPECT_EQ(TakeLog(), line);
    EXPECT_EQ(vconf_ignore_key_changed(kWatchedKey, Record), VCONF_ERROR);
    TakeLog();
    Calls calls;
    const Watching watching(kWatchedKey, Record, &calls);
    vconf_set_int(kWatchedKey, 1);
    EXPECT_TRUE(RunUntilCalls(calls, 1));
  }
};

TEST_F(NewWatches, AreRefusedWithoutAnInotifyInstance) {
  g_failing_calls.inotify_init = EMFILE;
  AreRefused("E/VCONF: inotify: Too many open files\n");
}

TEST_F(NewWatches, AreRefusedWhenTheirDirectoryCannotBeWatched) {
  g_failing_calls.inotify_add_watch = ENOSPC;
  AreRefused("E/VCONF: cannot watch memory/tav/watched: No space left on device\n");
  Calls calls;
  const Watching another("other", Record, &calls);
  g_failing_calls.inotify_add_watch = ENOSPC;
  AreRefused("E/VCONF: cannot watch memory/tav/watched: No space left on device\n");
  vconf_set_int("other", 2);
  EXPECT_TRUE(RunUntilCalls(calls, 1));
}

TEST_F(NewWatches, MayBeginBelowARelativeRootAndOneThatIsNotThere) {
  fs::current_path(Root());
  setenv("TAV_DEVICE_ROOT", "no/such/device", 1);
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  EXPECT_TRUE(fs::exists(Root() / "no/such/device" / kWatchedFile));
  fs::current_path("/");
  setenv("TAV_DEVICE_ROOT", "/no-such-device", 1);
  const Watching nowhere("other", Record, &calls);
  EXPECT_FALSE(fs::exists("/no-such-device"));
  setenv("TAV_DEVICE_ROOT", Root().c_str(), 1);
}

}  // namespace
