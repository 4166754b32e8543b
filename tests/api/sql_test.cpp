// SPDX-License-Identifier: Apache-2.0
//
// The statements as SQLite receives them: text, values and their order, and the sequence of
// calls.
#include <gtest/gtest.h>

#include <algorithm>

#include "support/device.h"
#include "support/sqlite_recorder.h"
#include "tav_db_api_inner.h"

namespace {

using test::App;
using test::CallsToSqlite;
using test::kSelectApps;
using Calls = test::SqliteCalls;

class Statements : public ::testing::Test {
 protected:
  Statements() { device.Install(App("warm")); }

  test::Device device;
  tav_app_info_s info;
};

TEST_F(Statements, OpenTheDatabaseReadOnlyAndUnsynchronisedOnce) {
  const Calls calls = CallsToSqlite([&] {
    tav_get_app_info("a", &info);
    tav_get_app_info("b", &info);
  });
  ASSERT_FALSE(calls.empty());
  EXPECT_EQ(calls.front(), "open 32769");
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "open 32769"), 1);
}

TEST_F(Statements, OfALookupById) {
  tav_get_app_info("warm", &info);
  EXPECT_EQ(
      CallsToSqlite([&] { tav_get_app_info("it's", &info); }),
      (Calls{std::string(kSelectApps) + " where (id = ? or tizen_id = ?)  and install_state = ? and"
                                        " is_app_available = ? and is_need_reset = ? ",
             "1 'it's' -1", "2 'it's' -1", "3 3", "4 1", "5 0", "finalize"}));
}

TEST_F(Statements, OfALookupOfASpecialId) {
  tav_get_app_info("warm", &info);
  for (const std::string id : {"org.tizen.browser", "org.tizen.netflix-app"}) {
    EXPECT_EQ(CallsToSqlite([&] { tav_get_app_info_by_tizenid(id.c_str(), &info); }),
              (Calls{std::string(kSelectApps) +
                         " where tizen_id = ? and install_state = ? and is_app_available = ?"
                         " and is_need_reset = ? ",
                     "1 '" + id + "' -1", "2 3", "3 1", "4 0", "finalize"}));
  }
}

TEST_F(Statements, OfALookupByRunTitle) {
  tav_get_app_info("warm", &info);
  EXPECT_EQ(CallsToSqlite([&] { tav_get_app_info_by_runtitle("T", &info); }),
            (Calls{std::string(kSelectApps) +
                       " where run_title = ?  and install_state = ? and is_app_available = ?"
                       " and is_need_reset = ? ",
                   "1 'T' -1", "2 3", "3 1", "4 0", "finalize"}));
  EXPECT_EQ(CallsToSqlite([&] { GetAppInfoByRuntitle(&info, "T"); }),
            (Calls{std::string(kSelectApps) +
                       " where run_title = ? and install_state = ? and is_app_available = ?"
                       " and is_need_reset = ? ",
                   "1 'T' -1", "2 3", "3 1", "4 0", "finalize"}));
}

TEST_F(Statements, OfALookupByAnyName) {
  tav_get_app_info("warm", &info);
  EXPECT_EQ(CallsToSqlite([&] { m_tav_get_app_info("N", &info); }),
            (Calls{std::string(kSelectApps) +
                       " where (id = ?  or tizen_id = ? or pkgname = ?)  and install_state = ?"
                       " and is_app_available = ? and is_need_reset = ? ",
                   "1 'N' -1", "2 'N' -1", "3 'N' -1", "4 3", "5 1", "6 0", "finalize"}));
}

TEST_F(Statements, ThatCannotBePreparedAreFollowedByTheHealthCheckOnItsOwnConnection) {
  device.Sql("drop table widgetinfo");
  EXPECT_EQ(CallsToSqlite([&] { tav_get_app_info_by_runtitle("T", &info); }),
            (Calls{"open 32769",
                   std::string(kSelectApps) +
                       " where run_title = ?  and install_state = ? and is_app_available = ?"
                       " and is_need_reset = ? ",
                   "open 32769", "PRAGMA integrity_check;", "finalize",
                   "select name from sqlite_master where type = 'table';", "finalize"}));
}

}  // namespace
