// SPDX-License-Identifier: Apache-2.0
//
// The engine and the drivers while the database is kept: 100 attempts, 10 ms apart. Functions of
// SQLite and usleep stand here before the real ones, so that no test has to wait; a writer of its
// own shows that SQLite behaves as they do.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <functional>

#include "support/device.h"
#include "support/writer.h"
#include "tav_db_api/tav_db_client_app_info.h"
#include "tav_db_api/tav_db_client_connection.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using test::App;
using Sleeps = std::vector<useconds_t>;

constexpr int kForEver = 1000000;

// What one of SQLite's functions answers while a test scripts it: first some calls that are not
// disturbed, then busy ones, then undisturbed ones again.
struct Script {
  int undisturbed = 0;
  int busy = 0;
  int attempts = 0;

  bool IsBusyNow() {
    ++attempts;
    if (undisturbed > 0) {
      --undisturbed;
      return false;
    }
    return busy > 0 && busy-- > 0;
  }
};

bool g_is_scripted = false;
Script g_prepare;
Script g_step;
Sleeps g_sleeps;
std::function<void()> g_during_sleep;
int g_interruptions = 0;  // sleeps that a signal ends
std::function<void(int attempt, sqlite3*, sqlite3_stmt**)> g_during_busy_prepare;

// SQLite calls its own functions by their names; those calls are not the library's.
thread_local int g_depth = 0;

template <typename Function, typename... Arguments>
auto CallReal(const char* name, Arguments... arguments) {
  auto* function = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
  ++g_depth;
  const auto result = function(arguments...);
  --g_depth;
  return result;
}

bool IsScripted() {
  return g_is_scripted && g_depth == 0;
}

}  // namespace

extern "C" {

int sqlite3_prepare_v2(sqlite3* database, const char* sql, int length, sqlite3_stmt** statement,
                       const char** tail) {
  if (IsScripted() && g_prepare.IsBusyNow()) {
    *statement = nullptr;
    if (g_during_busy_prepare) g_during_busy_prepare(g_prepare.attempts, database, statement);
    return SQLITE_BUSY;
  }
  return CallReal<decltype(sqlite3_prepare_v2)>("sqlite3_prepare_v2", database, sql, length,
                                                statement, tail);
}

int sqlite3_step(sqlite3_stmt* statement) {
  if (IsScripted() && g_step.IsBusyNow()) return SQLITE_BUSY;
  return CallReal<decltype(sqlite3_step)>("sqlite3_step", statement);
}

int usleep(useconds_t microseconds) {
  if (!g_is_scripted) return CallReal<decltype(usleep)>("usleep", microseconds);
  g_sleeps.push_back(microseconds);
  if (g_during_sleep) g_during_sleep();
  if (g_interruptions == 0) return 0;
  --g_interruptions;
  errno = EINTR;
  return -1;
}

}  // extern "C"

namespace {

constexpr char kSelect[] = "select id from widgetinfo";

class BusyEngine : public ::testing::Test {
 protected:
  BusyEngine() { device.Install(App("org.example.clock")); }
  ~BusyEngine() override { g_is_scripted = false; }

  static void Play(const Script& prepare, const Script& step) {
    g_prepare = prepare;
    g_step = step;
    g_is_scripted = true;
  }
  static Sleeps Of10Milliseconds(std::size_t count) { return Sleeps(count, 10000); }
  static bool HasStatements() REQUIRES(g_Mute) {
    return g_pStmt != nullptr || sqlite3_next_stmt(g_pConnection, nullptr) != nullptr;
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(BusyEngine, GivesUpPreparingAfterAHundredAttempts) {
  const TavLock lock(g_Mute);
  Play({0, kForEver}, {});
  EXPECT_EQ(Prepare(kSelect), -2);
  EXPECT_EQ(g_prepare.attempts, 100);
  EXPECT_EQ(g_sleeps, Of10Milliseconds(99));
  EXPECT_EQ(g_pStmt, nullptr);
  EXPECT_EQ(log.Count("prepare return SQLITE_BUSY"), 100);
  EXPECT_EQ(log.Count("retry prepare"), 99);
  EXPECT_EQ(log.Count("prepare retry is up to MAX_RETRY_COUNT"), 1);
  EXPECT_FALSE(log.Has("finalize m_pStmt"));
}

TEST_F(BusyEngine, PreparesAtTheHundredthAttempt) {
  const TavLock lock(g_Mute);
  Play({0, 99}, {});
  EXPECT_EQ(Prepare(kSelect), 0);
  EXPECT_EQ(g_prepare.attempts, 100);
  EXPECT_EQ(g_sleeps, Of10Milliseconds(99));
  EXPECT_EQ(log.Count("prepare return SQLITE_BUSY"), 99);
  EXPECT_EQ(log.Count("retry prepare"), 99);
  EXPECT_FALSE(log.Has("prepare retry is up to MAX_RETRY_COUNT"));
  EXPECT_EQ(Step(), kStepRow);
  EXPECT_STREQ(GetStringFromResult(0), "org.example.clock");
  EXPECT_EQ(Step(), kStepDone);
}

TEST_F(BusyEngine, SleepsForWhatIsLeftWhenSignalsEndTheSleeps) {
  const TavLock lock(g_Mute);
  g_interruptions = kForEver;
  Play({0, 1}, {});
  const auto start = steady_clock::now();
  EXPECT_EQ(Prepare(kSelect), 0);
  EXPECT_GE(steady_clock::now() - start, milliseconds(10));
  EXPECT_EQ(g_sleeps.front(), 10000U);
  EXPECT_TRUE(std::is_sorted(g_sleeps.rbegin(), g_sleeps.rend()));
  EXPECT_GT(g_sleeps.back(), 0U);
}

TEST_F(BusyEngine, SleepsNoMoreWhenASignalComesAtTheEndOfTheTime) {
  const TavLock lock(g_Mute);
  g_interruptions = 1;
  g_during_sleep = [] {
    const auto end = steady_clock::now() + milliseconds(10);
    while (steady_clock::now() < end) continue;
  };
  Play({0, 1}, {});
  EXPECT_EQ(Prepare(kSelect), 0);
  EXPECT_EQ(g_sleeps, Of10Milliseconds(1));
}

TEST_F(BusyEngine, WaitsAsLongWhenSignalsArrive) {
  struct sigaction ignore = {};
  ignore.sa_handler = [](int) {};
  sigaction(SIGALRM, &ignore, nullptr);
  const itimerval each_millisecond = {{0, 1000}, {0, 1000}};
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(60));
  setitimer(ITIMER_REAL, &each_millisecond, nullptr);
  const auto start = steady_clock::now();
  {
    const TavLock lock(g_Mute);
    EXPECT_EQ(Prepare(kSelect), -2);
  }
  EXPECT_GE(steady_clock::now() - start, milliseconds(990));
  signal(SIGALRM, SIG_IGN);
  EXPECT_EQ(log.Count("retry prepare"), 99);
}

TEST_F(BusyEngine, FinalizesAStatementThatTheLastBusyAttemptHasLeft) {
  g_during_busy_prepare = [](int attempt, sqlite3* database, sqlite3_stmt** statement) {
    if (attempt != 100) return;
    CallReal<decltype(sqlite3_prepare_v2)>("sqlite3_prepare_v2", database, "select 1", -1,
                                           statement, nullptr);
  };
  const TavLock lock(g_Mute);
  Play({0, kForEver}, {});
  EXPECT_EQ(Prepare(kSelect), -2);
  EXPECT_FALSE(HasStatements());
  EXPECT_TRUE(log.Has("finalize m_pStmt"));
}

TEST_F(BusyEngine, GivesUpSteppingAfterAHundredAttempts) {
  const TavLock lock(g_Mute);
  ASSERT_EQ(Prepare(kSelect), 0);
  Play({}, {0, kForEver});
  EXPECT_EQ(Step(), kStepBusy);
  EXPECT_EQ(g_step.attempts, 100);
  EXPECT_EQ(g_sleeps, Of10Milliseconds(99));
  EXPECT_FALSE(HasStatements());
  EXPECT_EQ(log.Count("step return SQLITE_BUSY"), 100);
  EXPECT_EQ(log.Count("retry step"), 99);
  EXPECT_EQ(log.Count("step retry is up to MAX_RETRY_COUNT"), 1);
}

TEST_F(BusyEngine, StepsAtTheHundredthAttempt) {
  const TavLock lock(g_Mute);
  ASSERT_EQ(Prepare(kSelect), 0);
  Play({}, {0, 99});
  EXPECT_EQ(Step(), kStepRow);
  EXPECT_EQ(g_step.attempts, 100);
  EXPECT_EQ(g_sleeps, Of10Milliseconds(99));
  EXPECT_EQ(log.Count("step return SQLITE_BUSY"), 99);
  EXPECT_EQ(log.Count("retry step"), 99);
  EXPECT_FALSE(log.Has("step retry is up to MAX_RETRY_COUNT"));
  EXPECT_STREQ(GetStringFromResult(0), "org.example.clock");
  EXPECT_EQ(Step(), kStepDone);
}

TEST_F(BusyEngine, HasAHundredAttemptsForEachStepAnew) {
  device.Install(App("org.example.weather"));
  const TavLock lock(g_Mute);
  ASSERT_EQ(Prepare(kSelect), 0);
  for (int row = 0; row < 2; ++row) {
    Play({}, {0, 99});
    EXPECT_EQ(Step(), kStepRow);
  }
  Play({}, {0, 99});
  EXPECT_EQ(Step(), kStepDone);
  EXPECT_EQ(g_sleeps, Of10Milliseconds(3 * 99));
}

TEST_F(BusyEngine, EndsBusyWhenTheStatementBecameNullWhileItSlept) {
  const TavLock lock(g_Mute);
  ASSERT_EQ(Prepare(kSelect), 0);
  g_during_sleep = []() REQUIRES(g_Mute) {
    if (g_sleeps.size() != 3) return;
    sqlite3_finalize(g_pStmt);
    g_pStmt = nullptr;
  };
  Play({}, {0, kForEver});
  EXPECT_EQ(Step(), kStepBusy);
  EXPECT_EQ(g_step.attempts, 3);
  EXPECT_EQ(g_sleeps, Of10Milliseconds(3));
  EXPECT_TRUE(log.HasError("g_pStmt is NULL"));
  EXPECT_EQ(log.Count("step return SQLITE_BUSY"), 3);
  EXPECT_FALSE(log.Has("step retry is up to MAX_RETRY_COUNT"));
}

TEST_F(BusyEngine, PreparesLateWhenARealWriterIsDoneInTime) {
  const TavLock lock(g_Mute);
  const test::ExclusiveWriter writer(device.DatabaseFile(), milliseconds(200));
  EXPECT_EQ(Prepare(kSelect), 0);
  EXPECT_EQ(Step(), kStepRow);
  EXPECT_EQ(Step(), kStepDone);
  EXPECT_GE(log.Count("retry prepare"), 1);
  EXPECT_FALSE(log.Has("prepare retry is up to MAX_RETRY_COUNT"));
}

TEST_F(BusyEngine, StepsLateWhenARealWriterIsDoneInTime) {
  const TavLock lock(g_Mute);
  ASSERT_EQ(Prepare(kSelect), 0);
  const test::ExclusiveWriter writer(device.DatabaseFile(), milliseconds(200));
  EXPECT_EQ(Step(), kStepRow);
  EXPECT_STREQ(GetStringFromResult(0), "org.example.clock");
  EXPECT_EQ(Step(), kStepDone);
  EXPECT_GE(log.Count("retry step"), 1);
  EXPECT_FALSE(log.Has("step retry is up to MAX_RETRY_COUNT"));
}

class BusyListDriver : public ::testing::Test {
 protected:
  BusyListDriver() {
    device.Install(App("a").Index(300)).Install(App("b").Index(301)).Install(App("c").Index(302));
  }
  ~BusyListDriver() override { g_is_scripted = false; }

  // Lists with the last-download order while the step behind so many rows stays busy.
  int ListBusyBehind(int rows, std::size_t count) {
    tav_app_info_s before;
    std::memset(&before, 'x', sizeof(before));
    list.assign(count, before);
    const TavLock lock(g_Mute);
    g_prepare = {};
    g_step = {rows, kForEver};
    g_is_scripted = true;
    const int result =
        GetAppsTableList(list.data(), static_cast<int>(count), " order by app_index", 0, {}, true);
    g_is_scripted = false;
    return result;
  }
  std::vector<std::string> Ids() const {
    std::vector<std::string> ids;
    for (const tav_app_info_s& app : list) ids.emplace_back(app.app_id);
    return ids;
  }
  bool IsZero(std::size_t record) const {
    const tav_app_info_s zero = {};
    return std::memcmp(&list.at(record), &zero, sizeof(zero)) == 0;
  }
  bool HasRecordLines() const {
    const std::vector<std::string> messages = log.Messages();
    return std::any_of(messages.begin(), messages.end(), [](const std::string& message) {
      return message.compare(0, 9, "app_id = ") == 0 ||
             message.compare(0, 22, "app_widget_category = ") == 0;
    });
  }

  test::Device device;
  test::Log& log = device.GetLog();
  std::vector<tav_app_info_s> list;
};

TEST_F(BusyListDriver, KeepsTheRowsThatItReadAndZeroesTheRest) {
  EXPECT_EQ(ListBusyBehind(1, 3), -2);
  EXPECT_EQ(Ids(), (std::vector<std::string>{"a", "", ""}));
  EXPECT_EQ(list[0].app_index, 300);
  EXPECT_EQ(list[0].installState, 3);
  EXPECT_TRUE(IsZero(1));
  EXPECT_TRUE(IsZero(2));
  EXPECT_EQ(log.Count("set app_info success"), 1);
  EXPECT_TRUE(log.HasError("Get DB fail:sql busy"));
  EXPECT_TRUE(log.Has("view mode : last download"));
  EXPECT_FALSE(HasRecordLines());
}

TEST_F(BusyListDriver, PutsWhatItReadInTheOrderOfTheDownloads) {
  EXPECT_EQ(ListBusyBehind(2, 2), -2);
  EXPECT_EQ(Ids(), (std::vector<std::string>{"b", "a"}));
  EXPECT_TRUE(log.Has("view mode : last download"));
  EXPECT_FALSE(HasRecordLines());
}

TEST_F(BusyListDriver, LeavesAListOfEmptyRecordsWhenItIsBusyFromTheFirstRowOn) {
  EXPECT_EQ(ListBusyBehind(0, 2), -2);
  EXPECT_TRUE(IsZero(0));
  EXPECT_TRUE(IsZero(1));
  EXPECT_FALSE(HasRecordLines());
}

TEST_F(BusyListDriver, LeavesNoStatementBehind) {
  EXPECT_EQ(ListBusyBehind(1, 3), -2);
  const TavLock lock(g_Mute);
  EXPECT_EQ(g_pStmt, nullptr);
  EXPECT_EQ(sqlite3_next_stmt(g_pConnection, nullptr), nullptr);
}

}  // namespace
