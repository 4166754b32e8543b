// SPDX-License-Identifier: Apache-2.0
//
// The engine: connection, statement, values and rows.
#include "tav_db_api/tav_db_client_connection.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <stdexcept>

#include "support/device.h"

namespace {

using test::App;

class Engine : public ::testing::Test {
 protected:
  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(Engine, OpensTheFileOnceForManyQueries) {
  const TavLock lock(g_Mute);
  ASSERT_EQ(Prepare("select id from widgetinfo"), 0);
  EXPECT_EQ(Step(), kStepDone);
  ASSERT_EQ(Prepare("select id from widgetinfo"), 0);
  EXPECT_EQ(Step(), kStepDone);
  EXPECT_EQ(log.Count("Connected to DB"), 1);
  EXPECT_EQ(log.Count("Data base already connected"), 1);
}

TEST_F(Engine, KeepsTheFirstPathWhenAskedForAnother) {
  const TavLock lock(g_Mute);
  ASSERT_EQ(Connect(device.DatabaseFile()), 0);
  EXPECT_EQ(Connect("/nowhere/at/all"), 0);
  EXPECT_EQ(log.Count("Data base already connected"), 1);
}

TEST_F(Engine, OpensTheDatabaseForReadingOnlyAndWithoutSqlitesMutex) {
  const TavLock lock(g_Mute);
  ASSERT_EQ(Connect(device.DatabaseFile()), 0);
  EXPECT_EQ(sqlite3_db_readonly(g_pConnection, "main"), 1);
  EXPECT_EQ(sqlite3_db_mutex(g_pConnection), nullptr);
}

TEST_F(Engine, TriesToOpenAMissingFileAgainAtTheNextQuery) {
  const std::filesystem::path file = device.DatabaseFile();
  const std::filesystem::path aside = device.Root() / "aside";
  std::filesystem::rename(file, aside);
  const TavLock lock(g_Mute);
  EXPECT_EQ(Prepare("select id from widgetinfo"), -1);
  EXPECT_EQ(g_pConnection, nullptr);
  EXPECT_TRUE(log.HasError("Failed to connect to DB : unable to open database file"));
  EXPECT_TRUE(log.Has("Close DB "));
  EXPECT_TRUE(log.HasError(file.string() + " is not a file"));

  std::filesystem::rename(aside, file);
  EXPECT_EQ(Prepare("select id from widgetinfo"), 0);
  EXPECT_NE(g_pConnection, nullptr);
  EXPECT_EQ(Step(), kStepDone);
}

TEST_F(Engine, EndsAnOpenStatementWhenTheDatabaseCannotBeOpened) {
  std::filesystem::remove(device.DatabaseFile());
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(":memory:", &other), SQLITE_OK);
  const TavLock lock(g_Mute);
  ASSERT_EQ(sqlite3_prepare_v2(other, "select 1", -1, &g_pStmt, nullptr), SQLITE_OK);
  EXPECT_EQ(Connect(device.DatabaseFile()), -1);
  EXPECT_EQ(g_pStmt, nullptr);
  EXPECT_TRUE(log.Has("finalize g_pStmt "));
  EXPECT_EQ(sqlite3_close(other), SQLITE_OK);  // it is busy while it has a statement
}

TEST_F(Engine, ReportsABadStatementWithItsTextItsCodeAndTheFilesHealth) {
  const TavLock lock(g_Mute);
  EXPECT_EQ(Prepare("select nothing from nowhere"), -1);
  EXPECT_EQ(g_pStmt, nullptr);
  EXPECT_TRUE(log.Has("[select nothing from nowhere]"));
  EXPECT_TRUE(log.Has("unknown type 1"));
  EXPECT_TRUE(log.Has(device.DatabaseFile().string() + " is_valid [1] "));
}

TEST_F(Engine, BindsTextsAndIntegersInTheOrderOfTheirMarks) {
  const TavLock lock(g_Mute);
  std::vector<_TAVDB_BIND_T> binds;
  save_db_bind(binds, "one");
  save_db_bind(binds, 2);
  save_db_bind(binds, "three's % ; --");
  ASSERT_EQ(Prepare("select ?, ?, ?"), 0);
  tavdb_bind(binds);
  ASSERT_EQ(Step(), kStepRow);
  EXPECT_STREQ(GetStringFromResult(0), "one");
  EXPECT_EQ(GetIntegerFromResult(1), 2);
  EXPECT_STREQ(GetStringFromResult(2), "three's % ; --");
  EXPECT_EQ(Step(), kStepDone);
}

TEST_F(Engine, AppendsValuesWithTheTypeOfEach) {
  std::vector<_TAVDB_BIND_T> binds;
  save_db_bind(binds, "text");
  save_db_bind(binds, -7);
  ASSERT_EQ(binds.size(), 2U);
  EXPECT_EQ(binds[0].type, 1);
  EXPECT_EQ(binds[0].strValue, "text");
  EXPECT_EQ(binds[1].type, 2);
  EXPECT_EQ(binds[1].strValue, "");
  EXPECT_EQ(binds[1].intValue, -7);
}

TEST_F(Engine, RunsAQueryThatWasGivenMoreValuesThanItHasMarks) {
  const TavLock lock(g_Mute);
  std::vector<_TAVDB_BIND_T> binds;
  save_db_bind(binds, 1);
  save_db_bind(binds, "too many");
  ASSERT_EQ(Prepare("select ?"), 0);
  tavdb_bind(binds);
  ASSERT_EQ(Step(), kStepRow);
  EXPECT_EQ(GetIntegerFromResult(0), 1);
  EXPECT_EQ(Step(), kStepDone);
}

TEST_F(Engine, LeavesTheParameterOfAnUnknownTypeNull) {
  const TavLock lock(g_Mute);
  const std::vector<_TAVDB_BIND_T> binds = {{3, "three", 3}, {2, "", 4}};
  ASSERT_EQ(Prepare("select ? is null, ?"), 0);
  tavdb_bind(binds);
  ASSERT_EQ(Step(), kStepRow);
  EXPECT_EQ(GetIntegerFromResult(0), 1);
  EXPECT_EQ(GetIntegerFromResult(1), 4);
  EXPECT_EQ(Step(), kStepDone);
}

TEST_F(Engine, ReadsNullAsAnEmptyTextAndAsZero) {
  const TavLock lock(g_Mute);
  ASSERT_EQ(Prepare("select null, null, null"), 0);
  ASSERT_EQ(Step(), kStepRow);
  EXPECT_STREQ(GetStringFromResult(0), "");
  EXPECT_EQ(GetIntegerFromResult(1), 0);
  std::string value = "before";
  GetValueByDBPosition(2, value);
  EXPECT_EQ(value, "");
  EXPECT_EQ(Step(), kStepDone);
}

TEST_F(Engine, ReadsATextOfAnyLengthWhole) {
  const TavLock lock(g_Mute);
  const std::string text(100000, 'x');
  ASSERT_EQ(Prepare("select '" + text + "'"), 0);
  ASSERT_EQ(Step(), kStepRow);
  std::string value;
  GetValueByDBPosition(0, value);
  EXPECT_EQ(value, text);
  EXPECT_EQ(Step(), kStepDone);
}

TEST_F(Engine, HasNoStatementLeftAfterTheLastRow) {
  const TavLock lock(g_Mute);
  ASSERT_EQ(Prepare("select 1"), 0);
  EXPECT_EQ(Step(), kStepRow);
  EXPECT_NE(g_pStmt, nullptr);
  EXPECT_EQ(Step(), kStepDone);
  EXPECT_EQ(g_pStmt, nullptr);
  EXPECT_FALSE(log.Has("g_pStmt is NULL"));
  EXPECT_EQ(Step(), 1);
  EXPECT_TRUE(log.HasError("g_pStmt is NULL"));
}

TEST_F(Engine, EndsTheRowsWithTheCodeWhenATableVanishedUnderTheOpenConnection) {
  const TavLock lock(g_Mute);
  ASSERT_EQ(Prepare("select id from widgetinfo"), 0);
  ASSERT_EQ(Step(), kStepDone);
  device.Sql("drop table widgetinfo");
  ASSERT_EQ(Prepare("select id from widgetinfo"), 0);
  EXPECT_EQ(Step(), SQLITE_ERROR);
  EXPECT_EQ(g_pStmt, nullptr);
  EXPECT_TRUE(log.Has("unknown type 1"));
}

TEST_F(Engine, FinalizesAStatementWhoseRowsAreLeftEarly) {
  const TavLock lock(g_Mute);
  ASSERT_EQ(Prepare("select 1 union select 2"), 0);
  try {
    RowWalk rows;
    EXPECT_TRUE(rows.Next());
    throw std::runtime_error("in the middle of the rows");
  } catch (const std::runtime_error&) {
  }
  EXPECT_EQ(g_pStmt, nullptr);
  EXPECT_EQ(sqlite3_next_stmt(g_pConnection, nullptr), nullptr);
}

}  // namespace
