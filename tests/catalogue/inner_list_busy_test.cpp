// SPDX-License-Identifier: Apache-2.0
//
// The list of inner records when its rows become busy. Functions of SQLite and usleep stand here
// before the real ones, so that they end where a test wants it.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <optional>
#include <string_view>

#include "support/device.h"
#include "tav_db_api/tav_db_client_inner.h"

namespace {

// After so many of the rows of whole apps the database is busy, for good.
std::optional<int> g_rows_before_busy;
bool g_prepare_is_busy = false;

constexpr std::string_view kBeginning = "select id,title,";

bool ReadsApps(const char* sql) {
  return sql != nullptr && std::string_view(sql).substr(0, kBeginning.size()) == kBeginning;
}

template <typename Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

int sqlite3_prepare_v2(sqlite3* database, const char* sql, int length, sqlite3_stmt** statement,
                       const char** tail) {
  if (g_prepare_is_busy && ReadsApps(sql)) {
    *statement = nullptr;
    return SQLITE_BUSY;
  }
  return Real<decltype(sqlite3_prepare_v2)>("sqlite3_prepare_v2")(database, sql, length, statement,
                                                                  tail);
}

int sqlite3_step(sqlite3_stmt* statement) {
  if (g_rows_before_busy && ReadsApps(sqlite3_sql(statement))) {
    if (*g_rows_before_busy == 0) return SQLITE_BUSY;
    --*g_rows_before_busy;
  }
  return Real<decltype(sqlite3_step)>("sqlite3_step")(statement);
}

int usleep(useconds_t microseconds) {
  if (g_rows_before_busy || g_prepare_is_busy) return 0;
  return Real<decltype(usleep)>("usleep")(microseconds);
}

}  // extern "C"

namespace {

using test::App;
using Ids = std::vector<std::string>;

class BusyInnerList : public ::testing::Test {
 protected:
  BusyInnerList() { device.InstallAll({App("a"), App("b"), App("c")}); }
  ~BusyInnerList() override {
    g_rows_before_busy.reset();
    g_prepare_is_busy = false;
  }

  // The ids of a list that held "before", and its result.
  std::pair<int, Ids> Listed() {
    std::vector<_APPS_INNER_INFO_T> apps(1);
    apps.front().strAppID = "before";
    const int result = GetTAVAppList("", "", true, apps);
    Ids ids;
    for (const auto& app : apps) ids.push_back(app.strAppID);
    return {result, ids};
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(BusyInnerList, HasTheRowsThatWereReadBeforeAndSucceeds) {
  g_rows_before_busy = 2;
  EXPECT_EQ(Listed(), std::pair(0, Ids({"before", "a", "b"})));
  EXPECT_TRUE(log.Has("Get DB fail:sql busy"));
  g_rows_before_busy.reset();
  EXPECT_EQ(Listed(), std::pair(0, Ids({"before", "a", "b", "c"})));
}

TEST_F(BusyInnerList, IsEmptyAndSucceedsWhenNoRowWasRead) {
  g_rows_before_busy = 0;
  EXPECT_EQ(Listed(), std::pair(0, Ids({"before"})));
  EXPECT_TRUE(log.Has("Get DB fail:sql busy"));
}

TEST_F(BusyInnerList, IsBusyWhenItsStatementCannotBePrepared) {
  g_prepare_is_busy = true;
  EXPECT_EQ(Listed(), std::pair(-2, Ids({"before"})));
  EXPECT_TRUE(log.Has("Finish ret[-2]"));
  g_prepare_is_busy = false;
  EXPECT_EQ(Listed(), std::pair(0, Ids({"before", "a", "b", "c"})));
}

}  // namespace
