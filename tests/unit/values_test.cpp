// SPDX-License-Identifier: Apache-2.0
//
// The readers of single values: their statements as SQLite runs them, their results, and what
// becomes of the value that they are given.
#include "tav_db_api/tav_db_client_values.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdlib>
#include <utility>

#include "support/device.h"
#include "tav_db_api.h"

namespace {

using test::App;
using Binds = std::vector<_TAVDB_BIND_T>;
using Texts = std::vector<std::string>;
// A result, and what the call left in the value that it was given.
using Number = std::pair<int, int>;
using Text = std::pair<int, std::string>;

constexpr int kNumberBefore = 4711;
constexpr char kTextBefore[] = "untouched";
constexpr char kUncountable[] = "update widgetinfo set use_count = -9223372036854775807 - 1";

int NoteStatement(unsigned, void* texts, void* traced, void*) {
  auto* statement = static_cast<sqlite3_stmt*>(traced);
  char* with_values = sqlite3_expanded_sql(statement);
  auto* noted = static_cast<Texts*>(texts);
  noted->emplace_back(sqlite3_sql(statement));
  noted->emplace_back(with_values);
  sqlite3_free(with_values);
  return 0;
}

class SingleValues : public ::testing::Test {
 protected:
  static Number Count(const std::string& where, int table_type = 0, const Binds& binds = {}) {
    const TavLock lock(g_Mute);
    int count = kNumberBefore;
    const int result = GetAppsTableCount(&count, where, table_type, binds);
    return {result, count};
  }
  static Number Int(const char* column, const std::string& where, int table_type = 0,
                    const Binds& binds = {}) {
    const TavLock lock(g_Mute);
    int value = kNumberBefore;
    const int result = GetIntValueByKey(&value, column, where, table_type, binds);
    return {result, value};
  }
  static Text Str(const char* column, const std::string& where, int table_type = 0,
                  const Binds& binds = {}) {
    const TavLock lock(g_Mute);
    char value[TAV_TEXT_SIZE] = "untouched";
    const int result = GetStrValueByKey(value, column, where, table_type, binds);
    return {result, value};
  }
  static Text Config(const char* name) {
    const TavLock lock(g_Mute);
    char* value = nullptr;
    const int result = GetConfigTableValue(name, &value);
    Text answer(result, value != nullptr ? value : kTextBefore);
    std::free(value);
    return answer;
  }
  static Binds Values(const std::string& text, int number) {
    Binds binds;
    save_db_bind(binds, text);
    save_db_bind(binds, number);
    return binds;
  }

  // The statement that SQLite runs in the call: its text, and its text with the values put in.
  template <typename Call>
  static Texts RunBy(const Call& call) {
    Texts texts;
    Trace(NoteStatement, &texts);
    call();
    Trace(nullptr, nullptr);
    return texts;
  }
  static void Trace(int (*note)(unsigned, void*, void*, void*), Texts* texts) {
    const TavLock lock(g_Mute);
    if (Connect(DatabasePath()) != 0) throw std::runtime_error("no connection");
    sqlite3_trace_v2(g_pConnection, note != nullptr ? SQLITE_TRACE_STMT : 0, note, texts);
  }

  // From here on the schema that the connection knows is no longer the file's: preparing still
  // succeeds, and the first step fails.
  void DropUnderTheOpenConnection(const std::string& table) {
    Count("");
    device.Sql("drop table " + table);
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

// ---- Counts ----

TEST_F(SingleValues, CountTheAppsThatMatch) {
  device.Install(App("a").Index(1)).Install(App("b").Index(2)).Install(App("c").Index(3));
  EXPECT_EQ(Count(""), Number(0, 3));
  EXPECT_EQ(Count(" where id <> ? and app_index > ?", 0, Values("c", 1)), Number(0, 1));
}

TEST_F(SingleValues, CountIsZeroAndASuccessWhenNothingMatches) {
  device.Install(App("a"));
  EXPECT_EQ(Count(" where id = 'b'"), Number(0, 0));
}

TEST_F(SingleValues, CountLeavesOutRowsWithoutAnId) {
  device.Install(App("a")).Install(App("b").Null("id"));
  EXPECT_EQ(Count(""), Number(0, 1));
}

TEST_F(SingleValues, CountReadsTheAppsTableWhateverTheTableType) {
  device.Install(App("a")).Configure("one", "1").Configure("two", "2");
  for (const int table_type : {0, 1, 2, -1}) {
    EXPECT_EQ(RunBy([&] {
                EXPECT_EQ(Count(" where id = ? and rating < ?", table_type, Values("a", 9)),
                          Number(0, 1));
              }),
              (Texts{"select count(id) from widgetinfo where id = ? and rating < ?",
                     "select count(id) from widgetinfo where id = 'a' and rating < 9"}));
  }
}

TEST_F(SingleValues, CountIsThatOfTheLastRow) {
  device.Install(App("a"));
  EXPECT_EQ(Count(" union all select 5"), Number(0, 5));
}

TEST_F(SingleValues, CountIsZeroAndASuccessWithoutAnyRow) {
  device.Install(App("a"));
  EXPECT_EQ(Count(" group by id having 0"), Number(0, 0));
}

TEST_F(SingleValues, CountIsZeroAndAFailureWhenTheFirstStepFails) {
  DropUnderTheOpenConnection("widgetinfo");
  EXPECT_EQ(Count(""), Number(-1, 0));
  EXPECT_TRUE(log.Has("unknown type 1"));
}

TEST_F(SingleValues, CountStandsWhenALaterStepFails) {
  device.Install(App("a")).Sql(kUncountable);
  EXPECT_EQ(Count(" union all select abs(use_count) from widgetinfo"), Number(0, 1));
  EXPECT_TRUE(log.Has("unknown type 1"));
}

// ---- Integers ----

TEST_F(SingleValues, IntIsTheColumnOfTheAppThatMatches) {
  device.Install(App("a").Set("rating", 5)).Install(App("b").Set("rating", -7));
  EXPECT_EQ(Int("rating", " where id = 'b'"), Number(0, -7));
  EXPECT_TRUE(log.Has("iValue =-7"));
  EXPECT_TRUE(log.Has("Get DB info finish:iValue:[-7]"));
}

TEST_F(SingleValues, IntReadsTheAppsTableWhateverTheTableType) {
  device.Install(App("it's").Set("rating", 5)).Configure("it's", "8");
  for (const int table_type : {0, 1, 2, -1}) {
    EXPECT_EQ(RunBy([&] {
                EXPECT_EQ(
                    Int("rating", " where  id = ? and rating < ? ", table_type, Values("it's", 9)),
                    Number(0, 5));
              }),
              (Texts{"  select rating  from widgetinfo where  id = ? and rating < ? ",
                     "  select rating  from widgetinfo where  id = 'it''s' and rating < 9 "}));
  }
}

TEST_F(SingleValues, IntReadsNullAsZero) {
  device.Install(App("a").Null("rating"));
  EXPECT_EQ(Int("rating", ""), Number(0, 0));
}

TEST_F(SingleValues, IntIsUntouchedWithoutARow) {
  device.Install(App("a").Set("rating", 5));
  EXPECT_EQ(Int("rating", " where id = 'b'"), Number(-1, kNumberBefore));
  EXPECT_FALSE(log.Has("Get DB info finish:iValue:[4711]"));
}

TEST_F(SingleValues, IntIsThatOfTheFirstRowAndTheOthersAreSteppedOver) {
  for (const int rating : {3, 4, 5}) {
    device.Install(App(std::to_string(rating)).Set("rating", rating));
  }
  EXPECT_EQ(Int("rating", " order by rating desc"), Number(0, 5));
  EXPECT_EQ(log.Count("SQLITE_ROW : has another row ready"), 3);
  EXPECT_EQ(log.Count("SQLITE_DONE : has finished executing"), 1);
  EXPECT_EQ(log.Count("iValue =5"), 1);
}

TEST_F(SingleValues, IntIsUntouchedWhenTheFirstStepFails) {
  DropUnderTheOpenConnection("widgetinfo");
  EXPECT_EQ(Int("rating", ""), Number(-1, kNumberBefore));
}

TEST_F(SingleValues, IntStandsWhenALaterStepFails) {
  device.Install(App("a")).Sql(kUncountable);
  EXPECT_EQ(Int("7", " union all select abs(use_count) from widgetinfo"), Number(0, 7));
  EXPECT_TRUE(log.Has("unknown type 1"));
}

// ---- Texts ----

TEST_F(SingleValues, StrIsTheColumnOfTheAppThatMatches) {
  device.Install(App("a").Package("one")).Install(App("b").Package("50%s"));
  EXPECT_EQ(Str("pkgname", " where id = 'b'"), Text(0, "50%s"));
  EXPECT_TRUE(log.Has("sql:  select pkgname  from widgetinfo where id = 'b'"));
  EXPECT_TRUE(log.Has("strValue =50%s"));
  EXPECT_TRUE(log.Has("Get DB finish:strValue:[50%s]"));
}

TEST_F(SingleValues, StrReadsTheAppsTableForEveryTableTypeButTwo) {
  device.Install(App("a").Package("p").Set("rating", 5)).Configure("a", "value");
  for (const int table_type : {0, 1, 3, -2}) {
    EXPECT_EQ(RunBy([&] {
                EXPECT_EQ(
                    Str("pkgname", " where id = ?  and rating = ?", table_type, Values("a", 5)),
                    Text(0, "p"));
              }),
              (Texts{"  select pkgname  from widgetinfo where id = ?  and rating = ?",
                     "  select pkgname  from widgetinfo where id = 'a'  and rating = 5"}));
  }
}

TEST_F(SingleValues, StrReadsTheConfigurationTableForTwoWhateverTheColumn) {
  device.Install(App("a").Package("p")).Configure("a", "value");
  Binds name;
  save_db_bind(name, "a");
  for (const char* column : {"", "pkgname", "no such column"}) {
    EXPECT_EQ(
        RunBy([&] { EXPECT_EQ(Str(column, "  where name  = ? ", 2, name), Text(0, "value")); }),
        (Texts{"  select value from TAVConfigTable  where name  = ? ",
               "  select value from TAVConfigTable  where name  = 'a' "}));
  }
  EXPECT_TRUE(log.Has("sql:  select value from TAVConfigTable  where name  = ? "));
}

TEST_F(SingleValues, StrIsCutAt127BytesAndWritesNothingBehindItsTerminator) {
  const std::pair<std::string, std::string> cuts[] = {
      {std::string(126, 'a'), std::string(126, 'a')},
      {std::string(127, 'a'), std::string(127, 'a')},
      {std::string(128, 'a'), std::string(127, 'a')},
      {std::string(200, 'a'), std::string(127, 'a')},
      {std::string(126, 'a') + "\u00e9", std::string(126, 'a') + "\xc3"}};
  for (const auto& [stored, cut] : cuts) {
    device.Configure("a", stored);
    std::string buffer(TAV_TEXT_SIZE + 8, 'x');
    const TavLock lock(g_Mute);
    EXPECT_EQ(GetStrValueByKey(buffer.data(), "", " where name = 'a'", 2, {}), 0);
    std::string expected = cut + '\0';
    expected.resize(buffer.size(), 'x');
    EXPECT_EQ(buffer, expected);
  }
}

TEST_F(SingleValues, StrReadsNullAsAnEmptyText) {
  device.Install(App("a").Null("pkgname"));
  EXPECT_EQ(Str("pkgname", ""), Text(0, ""));
}

TEST_F(SingleValues, StrIsUntouchedWithoutARow) {
  EXPECT_EQ(Str("pkgname", " where id = 'b'"), Text(-1, kTextBefore));
  EXPECT_EQ(Str("", " where name = 'b'", 2), Text(-1, kTextBefore));
}

TEST_F(SingleValues, StrIsThatOfTheFirstRowAndTheOthersAreSteppedOver) {
  device.Install(App("a")).Install(App("b")).Install(App("c"));
  EXPECT_EQ(Str("id", " order by id desc"), Text(0, "c"));
  EXPECT_EQ(log.Count("SQLITE_ROW : has another row ready"), 3);
  EXPECT_EQ(log.Count("SQLITE_DONE : has finished executing"), 1);
}

TEST_F(SingleValues, StrIsUntouchedWhenTheFirstStepFails) {
  DropUnderTheOpenConnection("TAVConfigTable");
  EXPECT_EQ(Str("", "", 2), Text(-1, kTextBefore));
}

TEST_F(SingleValues, StrStandsWhenALaterStepFails) {
  device.Install(App("a")).Sql(kUncountable);
  EXPECT_EQ(Str("id", " union all select abs(use_count) from widgetinfo"), Text(0, "a"));
  EXPECT_TRUE(log.Has("unknown type 1"));
}

// ---- Configuration values ----

TEST_F(SingleValues, ConfigIsTheValueUnderItsName) {
  device.Configure("ONE", "value").Configure("EMPTY", "");
  EXPECT_EQ(Config("ONE"), Text(0, "value"));
  EXPECT_EQ(Config("EMPTY"), Text(0, ""));
  EXPECT_TRUE(log.Has("sql select value from TAVConfigTable where name = ?"));
  EXPECT_TRUE(log.Has("Get DB finish:strName:[ONE],strValue:[value]"));
}

TEST_F(SingleValues, ConfigIsWholeHoweverLong) {
  const std::string large(100000, 'x');
  device.Configure("LARGE", large);
  EXPECT_EQ(Config("LARGE"), Text(0, large));
}

TEST_F(SingleValues, ConfigAsksWithTheNameAsItsOneValue) {
  device.Configure("it's", "value");
  EXPECT_EQ(RunBy([] { EXPECT_EQ(Config("it's"), Text(0, "value")); }),
            (Texts{"select value from TAVConfigTable where name = ?",
                   "select value from TAVConfigTable where name = 'it''s'"}));
}

TEST_F(SingleValues, ConfigIsUntouchedForANameThatIsMissing) {
  device.Configure("SYNC_STATE", "1");
  for (const char* name : {"", "sync_state", "SYNC", "SYNC_STAT_", "%", "x' or '1'='1"}) {
    EXPECT_EQ(Config(name), Text(-1, kTextBefore)) << name;
  }
}

TEST_F(SingleValues, ConfigReadsNullAsAnEmptyText) {
  device.Sql("insert into TAVConfigTable values ('a', null)");
  EXPECT_EQ(Config("a"), Text(0, ""));
}

TEST_F(SingleValues, ConfigIsThatOfTheFirstRowAndTheOthersAreSteppedOver) {
  device.Sql(
      "drop table TAVConfigTable; create table TAVConfigTable (name, value);"
      "insert into TAVConfigTable values ('a', 'first'), ('a', 'second'), ('a', 'third')");
  EXPECT_EQ(Config("a"), Text(0, "first"));
  EXPECT_EQ(log.Count("SQLITE_ROW : has another row ready"), 3);
  EXPECT_EQ(log.Count("SQLITE_DONE : has finished executing"), 1);
}

TEST_F(SingleValues, ConfigIsUntouchedWhenTheFirstStepFails) {
  device.Configure("a", "value");
  DropUnderTheOpenConnection("TAVConfigTable");
  EXPECT_EQ(Config("a"), Text(-1, kTextBefore));
}

}  // namespace
