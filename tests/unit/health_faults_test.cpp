// SPDX-License-Identifier: Apache-2.0
//
// The health check over answers that a file seldom brings SQLite to give. SQLite's functions
// stand here before the real ones and answer as a test scripts them; what is not scripted goes
// on to SQLite.
#include <dlfcn.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <map>
#include <optional>
#include <set>

#include "support/device.h"
#include "tav_db_api/tav_db_client_health.h"

namespace {

using Lines = std::vector<std::string>;

struct Answer {
  int result;
  const char* first_column = nullptr;
};

Answer Row(const char* text) {
  return {SQLITE_ROW, text};
}

// A statement that is prepared with a result, and answers its steps one after the other.
struct Script {
  int prepared = SQLITE_OK;
  std::vector<Answer> steps;
  std::size_t taken = 0;
};

std::optional<int> g_opened;
std::map<std::string, Script> g_scripts;  // by the text of the statement
std::set<sqlite3*> g_databases;           // those that were opened and not closed yet
std::set<sqlite3_stmt*> g_statements;
bool g_is_checking = false;
std::optional<int> g_looks;  // at a file, that succeed

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

bool IsTheChecks() {
  return g_is_checking && g_depth == 0;
}

Script* ScriptOf(sqlite3_stmt* statement) {
  if (!IsTheChecks()) return nullptr;
  const char* sql = sqlite3_sql(statement);
  const auto found = g_scripts.find(sql != nullptr ? sql : "");
  return found != g_scripts.end() && !found->second.steps.empty() ? &found->second : nullptr;
}

}  // namespace

extern "C" {

// The tests' stat, which looks for some files elsewhere, ends here.
int fstatat(int directory, const char* path, struct stat* status, int flags) noexcept {
  if (g_looks && (*g_looks)-- <= 0) return -1;
  return CallReal<decltype(fstatat)>("fstatat64", directory, path, status, flags);
}

int sqlite3_open_v2(const char* file, sqlite3** database, int flags, const char* vfs) {
  const int result =
      CallReal<decltype(sqlite3_open_v2)>("sqlite3_open_v2", file, database, flags, vfs);
  if (IsTheChecks()) g_databases.insert(*database);
  return IsTheChecks() ? g_opened.value_or(result) : result;
}

int sqlite3_close(sqlite3* database) {
  g_databases.erase(database);
  return CallReal<decltype(sqlite3_close)>("sqlite3_close", database);
}

int sqlite3_prepare_v2(sqlite3* database, const char* sql, int length, sqlite3_stmt** statement,
                       const char** tail) {
  const auto found = g_scripts.find(sql);
  if (IsTheChecks() && found != g_scripts.end() && found->second.prepared != SQLITE_OK) {
    *statement = nullptr;
    return found->second.prepared;
  }
  const int result = CallReal<decltype(sqlite3_prepare_v2)>("sqlite3_prepare_v2", database, sql,
                                                            length, statement, tail);
  if (IsTheChecks() && *statement != nullptr) g_statements.insert(*statement);
  return result;
}

int sqlite3_step(sqlite3_stmt* statement) {
  Script* script = ScriptOf(statement);
  if (script == nullptr) return CallReal<decltype(sqlite3_step)>("sqlite3_step", statement);
  return script->steps.at(script->taken++).result;
}

const unsigned char* sqlite3_column_text(sqlite3_stmt* statement, int column) {
  Script* script = ScriptOf(statement);
  if (script == nullptr) {
    return CallReal<decltype(sqlite3_column_text)>("sqlite3_column_text", statement, column);
  }
  const char* text = column == 0 ? script->steps.at(script->taken - 1).first_column : nullptr;
  return reinterpret_cast<const unsigned char*>(text);
}

int sqlite3_finalize(sqlite3_stmt* statement) {
  g_statements.erase(statement);
  return CallReal<decltype(sqlite3_finalize)>("sqlite3_finalize", statement);
}

}  // extern "C"

namespace {

constexpr char kIntegrity[] = "PRAGMA integrity_check;";
constexpr char kTables[] = "select name from sqlite_master where type = 'table';";

class HealthFaults : public ::testing::Test {
 protected:
  // The judgement, and that the check has let all its handles go.
  static bool IsValid() {
    g_is_checking = true;
    const bool is_valid = tavdb_check_is_valid();
    g_is_checking = false;
    EXPECT_TRUE(g_databases.empty());
    EXPECT_TRUE(g_statements.empty());
    return is_valid;
  }
  static void Play(const char* sql, const std::vector<Answer>& steps) {
    g_scripts[sql] = {SQLITE_OK, steps};
  }
  static void CannotPrepare(const char* sql, int result) { g_scripts[sql] = {result, {}}; }

  // All that the check says, errors and information apart.
  void ExpectSaid(const Lines& errors, const Lines& information) const {
    EXPECT_EQ(log.Messages('E'), errors);
    EXPECT_EQ(log.Messages('I'), information);
    EXPECT_EQ(log.Messages().size(), errors.size() + information.size());
  }
  void ExpectSaidOfASoundFileWithBothTables() const { ExpectSaid({}, {has_both, is_valid}); }

  test::Device device;
  test::Log& log = device.GetLog();
  const std::string file = device.DatabaseFile().string();
  const std::string has_both = file + " table status 1";
  const std::string has_not_both = file + " table status 0";
  const std::string is_valid = file + " is_valid [1] ";
  const std::string is_invalid = file + " is_valid [0] ";
  const std::string check_failed = file + " integrity_check failed";
  const std::string check_not_ok = file + " integrity_check not ok";
};

TEST_F(HealthFaults, RefuseADatabaseThatIsGoneAfterTheFirstLook) {
  g_looks = 1;
  EXPECT_FALSE(IsValid());
  ExpectSaid({"stat failed"}, {});
}

TEST_F(HealthFaults, RefuseADatabaseThatSqliteCannotOpenForItsDamage) {
  for (const int result : {11, 26}) {
    log.Forget();
    g_opened = result;
    EXPECT_FALSE(IsValid());
    ExpectSaid({"sqlite3_open_v2 ret " + std::to_string(result)}, {});
  }
}

TEST_F(HealthFaults, GoOnWithTheHandleAfterAnyOtherResultOfTheOpening) {
  for (const int result : {1, 5, 14}) {
    log.Forget();
    g_opened = result;
    EXPECT_TRUE(IsValid());
    ExpectSaidOfASoundFileWithBothTables();
  }
}

TEST_F(HealthFaults, RefuseADatabaseWhoseIntegrityCheckCannotBePrepared) {
  for (const int result : {1, 11, 14, 26}) {
    log.Forget();
    CannotPrepare(kIntegrity, result);
    EXPECT_FALSE(IsValid());
    ExpectSaid({check_failed + ", ret " + std::to_string(result), check_not_ok}, {});
  }
}

TEST_F(HealthFaults, TakeADatabaseForSoundWhoseIntegrityCheckIsBusy) {
  Play(kIntegrity, {{SQLITE_BUSY}});
  EXPECT_TRUE(IsValid());
  ExpectSaid({"sqlite3 busy, return valid"}, {has_both, is_valid});
}

TEST_F(HealthFaults, TakeADatabaseForSoundWhoseIntegrityCheckIsBusyBehindARow) {
  Play(kIntegrity, {Row("row 1 missing from index by_title"), {SQLITE_BUSY}});
  EXPECT_TRUE(IsValid());
  ExpectSaid({"sqlite3 busy, return valid"}, {has_both, is_valid});
}

TEST_F(HealthFaults, SkipRowsOfAnotherTextOrNoneBeforeTheOneThatIsOk) {
  Play(kIntegrity, {Row("row 1 missing from index by_title"), Row(nullptr), Row("OK"), Row("ok "),
                    Row(""), Row("ok")});
  EXPECT_TRUE(IsValid());
  EXPECT_EQ(g_scripts[kIntegrity].taken, 6U);
  ExpectSaidOfASoundFileWithBothTables();
}

TEST_F(HealthFaults, EndTheIntegrityCheckAtTheRowThatIsOk) {
  Play(kIntegrity, {Row("ok"), {SQLITE_CORRUPT}});
  EXPECT_TRUE(IsValid());
  EXPECT_EQ(g_scripts[kIntegrity].taken, 1U);
  ExpectSaidOfASoundFileWithBothTables();
}

TEST_F(HealthFaults, RefuseADatabaseWhoseIntegrityCheckEndsWithoutARowThatIsOk) {
  Play(kIntegrity, {Row("ok?"), Row(nullptr), {SQLITE_DONE}});
  EXPECT_FALSE(IsValid());
  ExpectSaid({"sqlite3 error 101", check_failed, check_not_ok}, {});
}

TEST_F(HealthFaults, RefuseADatabaseWhoseIntegrityCheckFails) {
  for (const int result : {1, 11, 26}) {
    log.Forget();
    Play(kIntegrity, {Row("row 1 missing from index by_title"), {result}});
    EXPECT_FALSE(IsValid());
    ExpectSaid({"sqlite3 error " + std::to_string(result), check_failed, check_not_ok}, {});
  }
}

TEST_F(HealthFaults, RefuseADatabaseWhoseTablesCannotBeAskedForItsDamage) {
  for (const int result : {11, 26}) {
    log.Forget();
    CannotPrepare(kTables, result);
    EXPECT_FALSE(IsValid());
    ExpectSaid({"sqlite3_prepare_v2 ret " + std::to_string(result)}, {is_invalid});
  }
}

TEST_F(HealthFaults, PassADatabaseWhoseTablesCannotBeAskedForAnyOtherReason) {
  for (const int result : {1, 5, 14}) {
    log.Forget();
    CannotPrepare(kTables, result);
    EXPECT_TRUE(IsValid());
    ExpectSaid({}, {is_valid});
  }
}

TEST_F(HealthFaults, PassADatabaseWhoseTablesAreKeptByItsWriter) {
  for (const std::vector<Answer>& steps :
       {std::vector<Answer>{{SQLITE_BUSY}}, {Row("widgetinfo"), {SQLITE_BUSY}}}) {
    log.Forget();
    Play(kTables, steps);
    EXPECT_TRUE(IsValid());
    ExpectSaid({}, {is_valid});
  }
}

TEST_F(HealthFaults, FindTheTablesWhateverComesBetweenThem) {
  Play(kTables, {Row("other"),
                 Row("TAVConfigTable"),
                 Row(nullptr),
                 Row("widgetinfo"),
                 Row("other"),
                 {SQLITE_DONE}});
  EXPECT_TRUE(IsValid());
  EXPECT_EQ(g_scripts[kTables].taken, 6U);
  ExpectSaidOfASoundFileWithBothTables();
}

TEST_F(HealthFaults, FindNoTableByAnotherSpelling) {
  for (const std::vector<Answer>& steps :
       {std::vector<Answer>{Row("WidgetInfo"), Row("TAVConfigTable"), {SQLITE_DONE}},
        {Row("widgetinfo2"), Row("TAVConfigTable"), {SQLITE_DONE}},
        {Row("widgetinfo"), Row("tavconfigtable"), {SQLITE_DONE}},
        {Row("widgetinfo"), Row("TAVConfig"), {SQLITE_DONE}},
        {Row(nullptr), {SQLITE_DONE}}}) {
    log.Forget();
    Play(kTables, steps);
    EXPECT_FALSE(IsValid());
    ExpectSaid({}, {has_not_both, is_invalid});
  }
}

TEST_F(HealthFaults, JudgeByTheTablesFoundBeforeAFailure) {
  Play(kTables, {Row("widgetinfo"), {SQLITE_CORRUPT}});
  EXPECT_FALSE(IsValid());
  ExpectSaid({}, {has_not_both, is_invalid});
  log.Forget();
  Play(kTables, {Row("widgetinfo"), Row("TAVConfigTable"), {SQLITE_CORRUPT}});
  EXPECT_TRUE(IsValid());
  ExpectSaidOfASoundFileWithBothTables();
}

}  // namespace
