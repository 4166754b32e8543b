// SPDX-License-Identifier: Apache-2.0
// Watches of settings: what is told, to whom, and how watches begin and end.
#include <functional>
#include <stdexcept>

#include "watching.h"

namespace {

class Watches : public Device {};

TEST_F(Watches, TellAChangeOfThisProcess) {
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  vconf_set_int(kWatchedKey, 5);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  vconf_set_str(kWatchedKey, "five");
  ASSERT_TRUE(RunUntilCalls(calls, 2));
  EXPECT_EQ(calls, (Calls{"memory/tav/watched=5", "memory/tav/watched='five'"}));
}

TEST_F(Watches, TellAChangeOfAnotherProcess) {
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  const Setter other(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  EXPECT_EQ(calls, Calls{"memory/tav/watched=1"});
}

TEST_F(Watches, TellAValueThatIsSetAgain) {
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  for (size_t turn = 1; turn <= 3; ++turn) {
    vconf_set_int(kWatchedKey, 5);
    ASSERT_TRUE(RunUntilCalls(calls, turn));
  }
  EXPECT_EQ(calls, Calls(3, "memory/tav/watched=5"));
}

TEST_F(Watches, TellAnEditInPlace) {
  vconf_set_int(kWatchedKey, 5);
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  WriteFile(kWatchedFile, "int\n6\n");
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  EXPECT_EQ(calls, Calls{"memory/tav/watched=6"});
}

TEST_F(Watches, TellNothingOfOtherKeysOrAnUnset) {
  vconf_set_int(kWatchedKey, 5);
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  vconf_set_int("memory/tav/watche", 1);
  vconf_set_int("memory/tav/watched.too", 1);
  vconf_set_int("memory/watched", 1);
  vconf_unset(kWatchedKey);
  ASSERT_TRUE(RunUntilQuiet());
  EXPECT_EQ(calls, Calls{});
}

TEST_F(Watches, TellNothingOfAMalformedValueButLogIt) {
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  WriteFile(kWatchedFile, "int\nfive\n");
  ASSERT_TRUE(RunUntilQuiet());
  EXPECT_EQ(calls, Calls{});
  EXPECT_EQ(TakePriorities(), "E");
  vconf_set_int(kWatchedKey, 5);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
}

TEST_F(Watches, TellChangesInQuickSuccessionAsOne) {
  Calls calls;
  const Watching watching(kWatchedKey, Record, &calls);
  for (int value = 1; value <= 10; ++value) vconf_set_int(kWatchedKey, value);
  ASSERT_TRUE(RunUntilQuiet());
  EXPECT_EQ(calls, Calls{"memory/tav/watched=10"});
}

TEST_F(Watches, TellEveryCallbackOfAKeyAndEveryKeyOfACallback) {
  Calls first;
  Calls second;
  const Watching watchings[] = {
      {kWatchedKey, Record, &first}, {kWatchedKey, RecordToo, &second}, {"other", Record, &second}};
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilQuiet());
  vconf_set_int("other", 2);
  ASSERT_TRUE(RunUntilQuiet());
  EXPECT_EQ(first, Calls{"memory/tav/watched=1"});
  EXPECT_EQ(second, (Calls{"memory/tav/watched=1", "other=2"}));
}

TEST_F(Watches, AreRefusedForAPairThatIsWatchedAlready) {
  Calls first;
  Calls second;
  const Watching watching(kWatchedKey, Record, &first);
  EXPECT_EQ(vconf_notify_key_changed(kWatchedKey, Record, &second), VCONF_ERROR);
  EXPECT_EQ(TakePriorities(), "E");
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilQuiet());
  EXPECT_EQ(first.size(), 1U);
  EXPECT_EQ(second.size(), 0U);
}

TEST_F(Watches, AreRefusedWhereNoDirectoryCanBe) {
  WriteFile("vconf/memory", "");
  EXPECT_EQ(vconf_notify_key_changed(kWatchedKey, Record, nullptr), VCONF_ERROR);
  EXPECT_EQ(TakePriorities(), "E");
  EXPECT_EQ(vconf_ignore_key_changed(kWatchedKey, Record), VCONF_ERROR);
}

TEST_F(Watches, EndWithIgnoreAndCanBeginAnew) {
  Calls calls;
  { const Watching watching(kWatchedKey, Record, &calls); }
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilQuiet());
  EXPECT_EQ(calls, Calls{});
  EXPECT_EQ(vconf_ignore_key_changed(kWatchedKey, Record), VCONF_ERROR);
  EXPECT_EQ(TakePriorities(), "E");

  const Watching watching(kWatchedKey, Record, &calls);
  vconf_set_int(kWatchedKey, 2);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  EXPECT_EQ(calls, Calls{"memory/tav/watched=2"});
}

TEST_F(Watches, ThatEndTellNothingOfWhatIsPending) {
  Calls calls;
  {
    const Watching watching(kWatchedKey, Record, &calls);
    vconf_set_int(kWatchedKey, 1);
  }
  ASSERT_TRUE(RunUntilQuiet());
  EXPECT_EQ(calls, Calls{});
}

// A callback whose work is the test's.
using Work = std::function<void(keynode_t*)>;
void DoWork(keynode_t* node, void* work) {
  (*static_cast<Work*>(work))(node);
}

TEST_F(Watches, MayBeEndedByTheirOwnCallback) {
  Calls calls;
  Work work = [&](keynode_t* node) {
    EXPECT_EQ(vconf_ignore_key_changed(kWatchedKey, DoWork), VCONF_OK);
    vconf_set_int(kWatchedKey, 2);
    Record(node, &calls);  // the node is valid to the end of the call
  };
  ASSERT_EQ(vconf_notify_key_changed(kWatchedKey, DoWork, &work), VCONF_OK);
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilQuiet());
  EXPECT_EQ(calls, Calls{"memory/tav/watched=1"});
  EXPECT_EQ(vconf_ignore_key_changed(kWatchedKey, DoWork), VCONF_ERROR);
}

TEST_F(Watches, MayBeRenewedByTheirOwnCallback) {
  Calls calls;
  Work work = [&](keynode_t* node) {
    Record(node, &calls);
    EXPECT_EQ(vconf_ignore_key_changed(kWatchedKey, DoWork), VCONF_OK);
    EXPECT_EQ(vconf_notify_key_changed(kWatchedKey, DoWork, &work), VCONF_OK);
  };
  const Watching watching(kWatchedKey, DoWork, &work);
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  vconf_set_int(kWatchedKey, 2);
  ASSERT_TRUE(RunUntilCalls(calls, 2));
  EXPECT_EQ(calls, (Calls{"memory/tav/watched=1", "memory/tav/watched=2"}));
}

TEST_F(Watches, MayBeginInACallback) {
  Calls calls;
  Work work = [&](keynode_t*) {
    EXPECT_EQ(vconf_notify_key_changed("other", Record, &calls), VCONF_OK);
    vconf_set_int("other", 3);
  };
  const Watching watching(kWatchedKey, DoWork, &work);
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  EXPECT_EQ(calls, Calls{"other=3"});
  EXPECT_EQ(vconf_ignore_key_changed("other", Record), VCONF_OK);
}

TEST_F(Watches, MayBeEndedByACallbackThatRunsBeforeTheirs) {
  Calls calls;
  Work work = [&](keynode_t*) {
    EXPECT_EQ(vconf_ignore_key_changed(kWatchedKey, Record), VCONF_OK);
  };
  const Watching watching(kWatchedKey, DoWork, &work);
  ASSERT_EQ(vconf_notify_key_changed(kWatchedKey, Record, &calls), VCONF_OK);
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilQuiet());
  EXPECT_EQ(calls, Calls{});
}

TEST_F(Watches, TellACallbacksOwnChange) {
  Calls calls;
  Work work = [&](keynode_t* node) {
    Record(node, &calls);
    const int value = vconf_keynode_get_int(node);
    if (value < 3) vconf_set_int(kWatchedKey, value + 1);
  };
  const Watching watching(kWatchedKey, DoWork, &work);
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntilCalls(calls, 3));
  EXPECT_EQ(calls, (Calls{"memory/tav/watched=1", "memory/tav/watched=2", "memory/tav/watched=3"}));
}

TEST_F(Watches, SurviveACallbackThatThrows) {
  int calls = 0;
  Work work = [&](keynode_t*) {
    if (++calls == 1) throw std::runtime_error("a careless callback");
  };
  const Watching watching(kWatchedKey, DoWork, &work);
  vconf_set_int(kWatchedKey, 1);
  ASSERT_TRUE(RunUntil([&] { return calls == 1; }));
  EXPECT_EQ(TakeLog(), "E/VCONF: a careless callback\n");
  vconf_set_int(kWatchedKey, 2);
  ASSERT_TRUE(RunUntil([&] { return calls == 2; }));
}

}  // namespace
