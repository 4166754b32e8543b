// SPDX-License-Identifier: Apache-2.0
//
// The readers of single values over a database that is kept by its writer or lacks a table.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdlib>

#include "support/device.h"
#include "support/writer.h"
#include "tav_db_api.h"
#include "tav_db_api/tav_db_client_values.h"

namespace {

using test::App;

constexpr char kGetDbFail[] = "Get DB fail:sql busy";

// A reader, and its answers: a result and, where it has one, the value that was 4711 or
// "untouched" before.
struct Reader {
  const char* name;
  std::string (*read)();
  const char* found;
  const char* prepare_failed;
  const char* prepare_busy;
  const char* step_busy;
  const char* busy_behind_the_first_row;
  const char* busy_text;
};

void PrintTo(const Reader& reader, std::ostream* out) {
  *out << reader.name;
}

std::string Answer(int result, const std::string& value) {
  return std::to_string(result) + " " + value;
}

std::string ReadCount() {
  const TavLock lock(g_Mute);
  int count = 4711;
  const int result = GetAppsTableCount(&count, "", 0, {});
  return Answer(result, std::to_string(count));
}

std::string ReadInt() {
  const TavLock lock(g_Mute);
  int value = 4711;
  const int result = GetIntValueByKey(&value, "rating", "", 0, {});
  return Answer(result, std::to_string(value));
}

std::string ReadStr() {
  const TavLock lock(g_Mute);
  char value[TAV_TEXT_SIZE] = "untouched";
  const int result = GetStrValueByKey(value, "pkgname", "", 0, {});
  return Answer(result, value);
}

std::string ReadConfigStr() {
  const TavLock lock(g_Mute);
  char value[TAV_TEXT_SIZE] = "untouched";
  const int result = GetStrValueByKey(value, "", "", 2, {});
  return Answer(result, value);
}

std::string ReadConfig() {
  const TavLock lock(g_Mute);
  char* value = nullptr;
  const int result = GetConfigTableValue("name", &value);
  const std::string answer = Answer(result, value != nullptr ? value : "untouched");
  std::free(value);
  return answer;
}

std::string ReadUsage() {
  const TavLock lock(g_Mute);
  return std::to_string(CheckIsRecentlyOrMostUsedApp("a", "select id from widgetinfo", {}));
}

// A row that was read stays read when the database becomes busy behind it; a count has a row
// only at its end.
const Reader kReaders[] = {
    {"Count", ReadCount, "0 2", "-1 4711", "-2 4711", "-2 0", "-2 0", kGetDbFail},
    {"Int", ReadInt, "0 5", "-1 4711", "-2 4711", "-2 4711", "-2 5", kGetDbFail},
    {"Str", ReadStr, "0 package", "-1 untouched", "-2 untouched", "-2 untouched", "-2 package",
     kGetDbFail},
    {"StrOfTheConfiguration", ReadConfigStr, "0 value", "-1 untouched", "-2 untouched",
     "-2 untouched", "-2 value", kGetDbFail},
    {"Config", ReadConfig, "0 value", "-1 untouched", "-2 untouched", "-2 untouched", "-2 value",
     kGetDbFail},
    {"Usage", ReadUsage, "0", "-1", "-2", "-2", "-2", "get app info fail:sql busy"},
};

class ValueFaults : public ::testing::TestWithParam<Reader> {
 protected:
  ValueFaults() {
    device.Install(App("a").Package("package").Set("rating", 5)).Install(App("b"));
    device.Sql(
        "drop table TAVConfigTable; create table TAVConfigTable (name, value);"
        "insert into TAVConfigTable values ('name', 'value'), ('name', 'second')");
  }
  static std::string Read() { return GetParam().read(); }
  static bool HasNoStatementLeft() {
    const TavLock lock(g_Mute);
    return g_pStmt == nullptr &&
           (g_pConnection == nullptr || sqlite3_next_stmt(g_pConnection, nullptr) == nullptr);
  }
  bool SaysFailedToPrepare() const { return log.HasError("Failed to prepare"); }
  static bool IsUsage() { return std::string(GetParam().name) == "Usage"; }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_P(ValueFaults, AnswersWhenThereIsNone) {
  EXPECT_EQ(Read(), GetParam().found);
  EXPECT_TRUE(HasNoStatementLeft());
  EXPECT_EQ(log.Messages('E'), std::vector<std::string>());
}

TEST_P(ValueFaults, PassesOnThatPreparingFailed) {
  device.Sql("drop table widgetinfo; drop table TAVConfigTable");
  EXPECT_EQ(Read(), GetParam().prepare_failed);
  EXPECT_TRUE(HasNoStatementLeft());
  EXPECT_TRUE(log.Has("unknown type 1"));
  EXPECT_EQ(SaysFailedToPrepare(), IsUsage());
}

TEST_P(ValueFaults, PassesOnThatThereIsNoDatabase) {
  std::filesystem::remove(device.DatabaseFile());
  EXPECT_EQ(Read(), GetParam().prepare_failed);
  EXPECT_EQ(SaysFailedToPrepare(), IsUsage());
}

TEST_P(ValueFaults, PassesOnThatPreparingStayedBusy) {
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  EXPECT_EQ(Read(), GetParam().prepare_busy);
  EXPECT_TRUE(HasNoStatementLeft());
  EXPECT_EQ(log.Count("prepare return SQLITE_BUSY"), 100);
  EXPECT_FALSE(log.Has(GetParam().busy_text));
  EXPECT_EQ(SaysFailedToPrepare(), IsUsage());
}

TEST_P(ValueFaults, IsBusyAtOnceWhenAStepStayedBusy) {
  ASSERT_EQ(Read(), GetParam().found);
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  EXPECT_EQ(Read(), GetParam().step_busy);
  EXPECT_TRUE(HasNoStatementLeft());
  EXPECT_EQ(log.Count("step return SQLITE_BUSY"), 100);
  EXPECT_EQ(log.Count(GetParam().busy_text), 1);
}

// Whether a row can be reached: the first one can, and from then on the database is busy.
void ReachTheFirstRowAlone(sqlite3_context* context, int, sqlite3_value**) {
  auto* is_reached = static_cast<bool*>(sqlite3_user_data(context));
  if (*is_reached) {
    sqlite3_result_error_code(context, SQLITE_BUSY);
  } else {
    sqlite3_result_int(context, 1);
  }
  *is_reached = true;
}

TEST_P(ValueFaults, IsBusyWhenAStepBehindTheFirstRowStayedBusy) {
  device.Sql(
      "alter table widgetinfo rename to apps; alter table TAVConfigTable rename to config;"
      "create view widgetinfo as select * from apps where is_reachable();"
      "create view TAVConfigTable as select * from config where is_reachable()");
  bool is_reached = false;
  {
    const TavLock lock(g_Mute);
    ASSERT_EQ(Connect(DatabasePath()), 0);
    ASSERT_EQ(sqlite3_create_function(g_pConnection, "is_reachable", 0, SQLITE_UTF8, &is_reached,
                                      ReachTheFirstRowAlone, nullptr, nullptr),
              SQLITE_OK);
  }
  EXPECT_EQ(Read(), GetParam().busy_behind_the_first_row);
  EXPECT_TRUE(HasNoStatementLeft());
  EXPECT_EQ(log.Count("step return SQLITE_BUSY"), 100);
  EXPECT_EQ(log.Count(GetParam().busy_text), 1);
}

INSTANTIATE_TEST_SUITE_P(All, ValueFaults, ::testing::ValuesIn(kReaders),
                         [](const auto& reader) { return std::string(reader.param.name); });

}  // namespace
