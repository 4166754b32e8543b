// SPDX-License-Identifier: Apache-2.0
//
// The statements as SQLite receives them: text, values and their order, and the sequence of
// calls. The functions below stand before SQLite's own and pass every call on.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "support/device.h"
#include "tav_db_api_inner.h"

namespace {

using test::App;
using Calls = std::vector<std::string>;

Calls g_calls;
bool g_is_recording = false;
int g_depth = 0;  // SQLite calls itself while it prepares; those calls are its own

template <typename Function>
Function* Sqlite(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

void Record(const std::string& call) {
  if (g_is_recording && g_depth == 0) g_calls.push_back(call);
}

}  // namespace

extern "C" {

int sqlite3_open_v2(const char* file, sqlite3** database, int flags, const char* vfs) {
  Record("open " + std::to_string(flags) + (vfs == nullptr ? "" : vfs));
  return Sqlite<decltype(sqlite3_open_v2)>("sqlite3_open_v2")(file, database, flags, vfs);
}

int sqlite3_prepare_v2(sqlite3* database, const char* sql, int length, sqlite3_stmt** statement,
                       const char** tail) {
  Record(sql);
  ++g_depth;
  const int result = Sqlite<decltype(sqlite3_prepare_v2)>("sqlite3_prepare_v2")(
      database, sql, length, statement, tail);
  --g_depth;
  return result;
}

int sqlite3_bind_text(sqlite3_stmt* statement, int parameter, const char* text, int length,
                      void (*release)(void*)) {
  Record(std::to_string(parameter) + " '" + text + "' " + std::to_string(length) +
         (release == SQLITE_STATIC ? "" : " copied"));
  return Sqlite<decltype(sqlite3_bind_text)>("sqlite3_bind_text")(statement, parameter, text,
                                                                  length, release);
}

int sqlite3_bind_int(sqlite3_stmt* statement, int parameter, int value) {
  Record(std::to_string(parameter) + " " + std::to_string(value));
  return Sqlite<decltype(sqlite3_bind_int)>("sqlite3_bind_int")(statement, parameter, value);
}

int sqlite3_finalize(sqlite3_stmt* statement) {
  Record("finalize");
  return Sqlite<decltype(sqlite3_finalize)>("sqlite3_finalize")(statement);
}

}  // extern "C"

namespace {

constexpr char kSelect[] =
    "select id,title,run_title,pannel_icon_path,firstscreen_icon_path,version,install_date,"
    "tizen_id,size,app_index,app_featured,is_support_voice,is_support_gesture,is_removable,"
    "is_display,is_lock,install_source_type,is_usb_app,is_need_update,is_updated,"
    "is_multi_screen2,limit_age,is_age_auth,app_type,icon_path,install_path,is_hidden,is_network,"
    "is_premium_game,pkgname,widget_category,use_count,install_state,is_need_login,is_ticker,"
    "is_multi_tasking,install_type,use_gamepad,hbbTV,hybrid_app,reserved_string_1,"
    "reserved_string_2,reserved_tinyint_1,reserved_tinyint_2,reserved_tinyint_3,"
    "reserved_tinyint_4,reserved_tinyint_5,reserved_tinyint_7,reserved_string_3,"
    "reserved_string_4,reserved_tinyint_8,reserved_string_5,reserved_string_6,reserved_int_1,"
    "reserved_string_9,reserved_tinyint_10,reserved_string_10,reserved_string_11,"
    "reserved_tinyint_11,reserved_string_16,reserved_string_14,reserved_string_18,tavorder,"
    "reserved_string_19,reserved_string_20,reserved_tinyint_15,reserved_tinyint_16,"
    "reserved_tinyint_17,reserved_string_21,reserved_tinyint_19,reserved_string_24"
    " from widgetinfo";

class Statements : public ::testing::Test {
 protected:
  Statements() { device.Install(App("warm")); }

  template <typename Call>
  static Calls Sent(const Call& call) {
    g_calls.clear();
    g_is_recording = true;
    call();
    g_is_recording = false;
    return g_calls;
  }

  test::Device device;
  tav_app_info_s info;
};

TEST_F(Statements, OpenTheDatabaseReadOnlyAndUnsynchronisedOnce) {
  const Calls calls = Sent([&] {
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
      Sent([&] { tav_get_app_info("it's", &info); }),
      (Calls{std::string(kSelect) + " where (id = ? or tizen_id = ?)  and install_state = ? and"
                                    " is_app_available = ? and is_need_reset = ? ",
             "1 'it's' -1", "2 'it's' -1", "3 3", "4 1", "5 0", "finalize"}));
}

TEST_F(Statements, OfALookupOfASpecialId) {
  tav_get_app_info("warm", &info);
  for (const std::string id : {"org.tizen.browser", "org.tizen.netflix-app"}) {
    EXPECT_EQ(Sent([&] { tav_get_app_info_by_tizenid(id.c_str(), &info); }),
              (Calls{std::string(kSelect) +
                         " where tizen_id = ? and install_state = ? and is_app_available = ?"
                         " and is_need_reset = ? ",
                     "1 '" + id + "' -1", "2 3", "3 1", "4 0", "finalize"}));
  }
}

TEST_F(Statements, OfALookupByRunTitle) {
  tav_get_app_info("warm", &info);
  EXPECT_EQ(Sent([&] { tav_get_app_info_by_runtitle("T", &info); }),
            (Calls{std::string(kSelect) +
                       " where run_title = ?  and install_state = ? and is_app_available = ?"
                       " and is_need_reset = ? ",
                   "1 'T' -1", "2 3", "3 1", "4 0", "finalize"}));
  EXPECT_EQ(Sent([&] { GetAppInfoByRuntitle(&info, "T"); }),
            (Calls{std::string(kSelect) +
                       " where run_title = ? and install_state = ? and is_app_available = ?"
                       " and is_need_reset = ? ",
                   "1 'T' -1", "2 3", "3 1", "4 0", "finalize"}));
}

TEST_F(Statements, OfALookupByAnyName) {
  tav_get_app_info("warm", &info);
  EXPECT_EQ(Sent([&] { m_tav_get_app_info("N", &info); }),
            (Calls{std::string(kSelect) +
                       " where (id = ?  or tizen_id = ? or pkgname = ?)  and install_state = ?"
                       " and is_app_available = ? and is_need_reset = ? ",
                   "1 'N' -1", "2 'N' -1", "3 'N' -1", "4 3", "5 1", "6 0", "finalize"}));
}

TEST_F(Statements, ThatCannotBePreparedAreFollowedByTheHealthCheckOnItsOwnConnection) {
  device.Sql("drop table widgetinfo");
  EXPECT_EQ(Sent([&] { tav_get_app_info_by_runtitle("T", &info); }),
            (Calls{"open 32769",
                   std::string(kSelect) +
                       " where run_title = ?  and install_state = ? and is_app_available = ?"
                       " and is_need_reset = ? ",
                   "open 32769", "PRAGMA integrity_check;", "finalize",
                   "select name from sqlite_master where type = 'table';", "finalize"}));
}

}  // namespace
