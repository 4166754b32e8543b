// SPDX-License-Identifier: Apache-2.0
//
// The state of the synchronisation: a text of the configuration table that is read as a number.
#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <filesystem>
#include <string>

#include "settings/watching.h"
#include "support/sqlite_recorder.h"
#include "support/writer.h"
#include "tav_db_api.h"

namespace {

using test::Texts;
using test::Written;

constexpr char kFailure[] = "query sql fail or have no required record in database ";

class SyncState : public ::testing::Test {
 protected:
  void ExpectState(int expected) {
    log.Forget();
    int state = 77;
    EXPECT_EQ(tav_get_tv_sync_state(&state), 0);
    EXPECT_EQ(state, expected);
    const Texts lines = Written(log);
    EXPECT_EQ(lines.front(), "I Start");
    EXPECT_EQ(lines.back(), "I Finish,iSyncState:[" + std::to_string(expected) + "] ");
    EXPECT_EQ(log.Lines().front().function, "tav_get_tv_sync_state");
    EXPECT_EQ(log.Lines().back().function, "tav_get_tv_sync_state");
    EXPECT_EQ(log.Messages('E'), Texts());
  }
  void ExpectStateOf(const std::string& value, int expected) {
    SCOPED_TRACE("\"" + value + "\"");
    device.Configure("SYNC_STATE", value);
    ExpectState(expected);
  }
  void ExpectFailure(int expected) {
    log.Forget();
    int state = 77;
    EXPECT_EQ(tav_get_tv_sync_state(&state), expected);
    EXPECT_EQ(state, 77);
    EXPECT_EQ(Written(log).front(), "I Start");
    EXPECT_EQ(Written(log).back(), std::string("E ") + kFailure);
    EXPECT_EQ(log.Lines().back().function, "tav_get_tv_sync_state");
    EXPECT_EQ(log.Count(kFailure), 1);
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(SyncState, IsTheNumberOfItsValue) {
  ExpectStateOf("0", 0);
  ExpectStateOf("7", 7);
  ExpectStateOf("-3", -3);
  ExpectStateOf("+4", 4);
  ExpectStateOf("2147483647", INT_MAX);
  ExpectStateOf("-2147483648", INT_MIN);
}

TEST_F(SyncState, IsReadWithTheBaseTenPastLeadingBlanksUpToTheFirstOddCharacter) {
  ExpectStateOf(" \t\n 12", 12);
  ExpectStateOf("12 ", 12);
  ExpectStateOf("12abc", 12);
  ExpectStateOf("010", 10);
  ExpectStateOf("0x10", 0);
  ExpectStateOf("1e3", 1);
  ExpectStateOf("2.9", 2);
}

TEST_F(SyncState, IsZeroForATextThatIsNoNumber) {
  ExpectStateOf("", 0);
  ExpectStateOf(" ", 0);
  ExpectStateOf("-", 0);
  ExpectStateOf("done", 0);
  ExpectStateOf("x5", 0);
}

TEST_F(SyncState, IsReadFromWhatTheDatabaseMakesATextOf) {
  device.Sql("insert into TAVConfigTable (name, value) values ('SYNC_STATE', 5)");
  ExpectState(5);
  device.Sql("update TAVConfigTable set value = null");
  ExpectState(0);
}

TEST_F(SyncState, IsReadFromTheFirst127Bytes) {
  ExpectStateOf(std::string(126, '0') + "5", 5);
  ExpectStateOf(std::string(126, ' ') + "42", 4);
  ExpectStateOf(std::string(127, ' ') + "5", 0);
  ExpectStateOf("6" + std::string(10000, 'x'), 6);
}

TEST_F(SyncState, IsAFailureWithoutItsValue) {
  ExpectFailure(-1);
  EXPECT_EQ(log.Messages('E'), Texts{kFailure});
  device.Configure("sync_state", "1").Configure("SYNC_STATE ", "2").Configure("OTHER", "3");
  ExpectFailure(-1);
  ExpectStateOf("4", 4);
}

TEST_F(SyncState, IsAFailureWithNowhereToPutIt) {
  device.Configure("SYNC_STATE", "7");
  log.Forget();
  EXPECT_EQ(tav_get_tv_sync_state(nullptr), -1);
  EXPECT_EQ(Written(log), (Texts{"I Start", "W in param is NULL "}));
  ExpectState(7);
}

TEST_F(SyncState, IsAskedWithOneStatement) {
  ExpectStateOf("7", 7);  // connects
  const test::SqliteCalls expected = {"  select value from TAVConfigTable  where name  = ? ",
                                      "1 'SYNC_STATE' -1", "finalize"};
  int state = 0;
  EXPECT_EQ(test::CallsToSqlite([&] { tav_get_tv_sync_state(&state); }), expected);
  device.Sql("delete from TAVConfigTable");
  EXPECT_EQ(test::CallsToSqlite([&] { tav_get_tv_sync_state(&state); }), expected);
  EXPECT_EQ(test::CallsToSqlite([] { tav_get_tv_sync_state(nullptr); }), test::SqliteCalls());
}

TEST_F(SyncState, IsKnownDuringAResetAndARecovery) {
  device.Write("opt/dbspace/pkgreinstall", "");
  device.FactoryReset(1);
  ExpectStateOf("7", 7);
}

TEST_F(SyncState, IsAFailureWithoutADatabaseUntilThereIsOne) {
  device.Configure("SYNC_STATE", "7");
  const std::string file = device.DatabaseFile().string();
  std::filesystem::rename(file, file + ".aside");
  ExpectFailure(-1);
  EXPECT_TRUE(log.HasError(file + " is not a file"));
  std::filesystem::rename(file + ".aside", file);
  ExpectState(7);
}

TEST_F(SyncState, IsAFailureWithoutTheTable) {
  device.Sql("drop table TAVConfigTable");
  ExpectFailure(-1);
  EXPECT_TRUE(log.HasError("unknown type 1"));
}

TEST_F(SyncState, IsBusyWhenTheFirstQueryFindsTheDatabaseHeldByItsWriter) {
  device.Configure("SYNC_STATE", "7");
  {
    const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
    ExpectFailure(-2);
    EXPECT_TRUE(log.HasError("prepare retry is up to MAX_RETRY_COUNT"));
  }
  ExpectState(7);
}

TEST_F(SyncState, IsBusyWhenALaterQueryFindsTheDatabaseHeldByItsWriter) {
  ExpectStateOf("7", 7);
  {
    const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
    ExpectFailure(-2);
    EXPECT_TRUE(log.HasError("Get DB fail:sql busy"));
  }
  ExpectState(7);
}

TEST_F(SyncState, HasNothingToDoWithTheStatusInTheSettings) {
  device.Configure("SYNC_STATE", "7").Setting("db/tav/app_sync_status", 3);
  ExpectState(7);
  int status = 0;
  EXPECT_EQ(tav_get_tv_sync_status(&status), 0);
  EXPECT_EQ(status, 3);
}

}  // namespace
