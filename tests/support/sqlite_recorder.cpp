// SPDX-License-Identifier: Apache-2.0
//
// The functions below stand before SQLite's own and pass every call on.
#include "support/sqlite_recorder.h"

#include <dlfcn.h>
#include <sqlite3.h>

#include <utility>

namespace test {
namespace {

SqliteCalls g_calls;
bool g_is_recording = false;
// SQLite calls itself while it prepares; those calls are its own.
thread_local int g_depth = 0;

std::string g_beginning;
std::function<void()> g_action;

template <typename Function>
Function* Sqlite(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

void Record(const std::string& call) {
  if (g_is_recording && g_depth == 0) g_calls.push_back(call);
}

void ActBefore(const std::string& sql) {
  if (!g_action || g_depth > 0 || sql.compare(0, g_beginning.size(), g_beginning) != 0) return;
  std::exchange(g_action, nullptr)();
}

}  // namespace

const char kSelectApps[] =
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

SqliteCalls CallsToSqlite(const std::function<void()>& body) {
  g_calls.clear();
  g_is_recording = true;
  body();
  g_is_recording = false;
  return g_calls;
}

void BeforePreparing(const std::string& beginning, std::function<void()> action) {
  g_beginning = beginning;
  g_action = std::move(action);
}

extern "C" {

int sqlite3_open_v2(const char* file, sqlite3** database, int flags, const char* vfs) {
  Record("open " + std::to_string(flags) + (vfs == nullptr ? "" : vfs));
  return Sqlite<decltype(sqlite3_open_v2)>("sqlite3_open_v2")(file, database, flags, vfs);
}

int sqlite3_prepare_v2(sqlite3* database, const char* sql, int length, sqlite3_stmt** statement,
                       const char** tail) {
  ActBefore(sql);
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

}  // namespace test
