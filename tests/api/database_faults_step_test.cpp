// SPDX-License-Identifier: Apache-2.0
//
// What the exported functions make of rows that end with a failure. The functions of SQLite and
// usleep stand here before the real ones, so that they end where a test wants it.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <optional>
#include <string_view>

#include "support/device.h"
#include "tav_db_api_inner.h"

namespace {

// What the statement for whole apps answers behind so many of its rows.
struct Failure {
  int rows;
  int result;
};

std::optional<Failure> g_failure;

bool ReadsApps(sqlite3_stmt* statement) {
  constexpr std::string_view kBeginning = "select id,title,";
  const char* sql = sqlite3_sql(statement);
  return sql != nullptr && std::string_view(sql).substr(0, kBeginning.size()) == kBeginning;
}

template <typename Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

int sqlite3_step(sqlite3_stmt* statement) {
  if (g_failure && ReadsApps(statement)) {
    if (g_failure->rows == 0) return g_failure->result;
    --g_failure->rows;
  }
  return Real<decltype(sqlite3_step)>("sqlite3_step")(statement);
}

int usleep(useconds_t microseconds) {
  return g_failure ? 0 : Real<decltype(usleep)>("usleep")(microseconds);
}

}  // extern "C"

namespace {

using test::App;

constexpr char kBusyText[] = "Get DB fail:sql busy";

struct Lookup {
  const char* name;
  int (*call)(tav_app_info_s* info);
};

void PrintTo(const Lookup& lookup, std::ostream* out) {
  *out << lookup.name;
}

const Lookup kLookups[] = {
    {"tav_get_app_info", [](tav_app_info_s* info) { return tav_get_app_info("key", info); }},
    {"tav_get_app_info_by_tizenid",
     [](tav_app_info_s* info) { return tav_get_app_info_by_tizenid("key", info); }},
    {"tav_get_app_info_by_runtitle",
     [](tav_app_info_s* info) { return tav_get_app_info_by_runtitle("key", info); }},
    {"m_tav_get_app_info", [](tav_app_info_s* info) { return m_tav_get_app_info("key", info); }},
    {"GetAppInfoByRuntitle",
     [](tav_app_info_s* info) { return GetAppInfoByRuntitle(info, "key"); }},
};

class FailingRows : public ::testing::TestWithParam<Lookup> {
 protected:
  FailingRows() {
    // Two rows for each lookup, so that one can fail behind the first.
    for (const char* id : {"first", "second"}) {
      device.Install(
          test::AppWithEveryColumnSet(id).InstallState(3).TizenId("key").RunTitle("key"));
    }
    EXPECT_EQ(GetParam().call(&whole), 0);
    EXPECT_STREQ(whole.app_id, "first");
    log.Forget();
    std::memset(&info, 'x', sizeof(info));
  }
  ~FailingRows() override { g_failure.reset(); }

  int FailBehind(int rows, int result) {
    g_failure = {rows, result};
    const int answer = GetParam().call(&info);
    g_failure.reset();
    return answer;
  }
  bool Holds(const tav_app_info_s& expected) const {
    return std::memcmp(&info, &expected, sizeof(info)) == 0;
  }
  bool HasRecordLines() const {
    for (const std::string& message : log.Messages()) {
      if (message.compare(0, 9, "app_id = ") == 0) return true;
    }
    return false;
  }

  test::Device device;
  test::Log& log = device.GetLog();
  tav_app_info_s whole;
  tav_app_info_s info;
};

TEST_P(FailingRows, BusyBehindTheFirstAreBusyWithTheRecordFilled) {
  EXPECT_EQ(FailBehind(1, SQLITE_BUSY), -2);
  EXPECT_TRUE(Holds(whole));
  EXPECT_TRUE(log.HasError(kBusyText));
  EXPECT_EQ(log.Count("step return SQLITE_BUSY"), 100);
  EXPECT_FALSE(HasRecordLines());
}

TEST_P(FailingRows, BusyBeforeTheFirstAreBusyWithTheRecordZeroed) {
  EXPECT_EQ(FailBehind(0, SQLITE_BUSY), -2);
  EXPECT_TRUE(Holds({}));
  EXPECT_TRUE(log.HasError(kBusyText));
  EXPECT_FALSE(HasRecordLines());
}

TEST_P(FailingRows, BrokenBehindTheFirstAreASuccess) {
  for (const int result : {SQLITE_ERROR, SQLITE_IOERR, SQLITE_CORRUPT}) {
    log.Forget();
    std::memset(&info, 'x', sizeof(info));
    EXPECT_EQ(FailBehind(1, result), 0);
    EXPECT_TRUE(Holds(whole));
    EXPECT_TRUE(log.Has("unknown type " + std::to_string(result)));
    EXPECT_TRUE(HasRecordLines());
  }
}

TEST_P(FailingRows, BrokenBeforeTheFirstAreAFailureWithTheRecordZeroed) {
  for (const int result : {SQLITE_ERROR, SQLITE_IOERR, SQLITE_CORRUPT}) {
    log.Forget();
    std::memset(&info, 'x', sizeof(info));
    EXPECT_EQ(FailBehind(0, result), -1);
    EXPECT_TRUE(Holds({}));
    EXPECT_TRUE(log.Has("unknown type " + std::to_string(result)));
    EXPECT_FALSE(HasRecordLines());
  }
}

TEST_P(FailingRows, DoNotHinderTheNextLookup) {
  for (const int rows : {0, 1}) {
    FailBehind(rows, SQLITE_BUSY);
    FailBehind(rows, SQLITE_CORRUPT);
  }
  EXPECT_EQ(GetParam().call(&info), 0);
  EXPECT_TRUE(Holds(whole));
}

INSTANTIATE_TEST_SUITE_P(All, FailingRows, ::testing::ValuesIn(kLookups),
                         [](const auto& lookup) { return std::string(lookup.param.name); });

class FailingList : public ::testing::Test {
 protected:
  FailingList() { device.Install(App("a").Index(300)).Install(App("b").Index(301)); }
  ~FailingList() override { g_failure.reset(); }

  // The answer of the call, its count and the ids of its list.
  std::string List(int rows, int failure) {
    g_failure = {rows, failure};
    tav_app_info_s untouched;
    tav_app_info_s* list = &untouched;
    int count = 77;
    std::string answer = std::to_string(tav_get_all_app_list(&list, &count));
    g_failure.reset();
    answer += " " + std::to_string(count);
    if (list == nullptr) return answer + " null";
    for (int i = 0; i < count; ++i) answer += std::string(" ") + list[i].app_id;
    std::free(list);
    return answer;
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(FailingList, GivesNothingWhenItIsBusyBehindItsFirstRow) {
  EXPECT_EQ(List(1, SQLITE_BUSY), "-2 0 null");
  EXPECT_TRUE(log.HasError(kBusyText));
  EXPECT_TRUE(log.Has("view mode : last download"));
}

TEST_F(FailingList, GivesWhatItReadWhenItsRowsBreak) {
  EXPECT_EQ(List(2, SQLITE_CORRUPT), "0 2 b a");
  EXPECT_EQ(List(1, SQLITE_CORRUPT), "0 2 a ");
}

}  // namespace
