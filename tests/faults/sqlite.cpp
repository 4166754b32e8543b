// SPDX-License-Identifier: Apache-2.0
//
// The functions below stand before SQLite's own and the C library's.
#include "faults/sqlite.h"

#include <dlfcn.h>
#include <sqlite3.h>
#include <unistd.h>

#include <optional>
#include <set>

#include "faults/outcome.h"

namespace test {
namespace {

struct Plan {
  SqliteCall kind;
  int result;
  int nth;
  int how_many;
};

std::optional<Plan> g_plan;
int g_calls = 0;  // of the plan's kind, or of the kind that is counted
int g_failures = 0;
std::optional<SqliteCall> g_counted;
std::set<sqlite3_stmt*> g_statements;
std::set<sqlite3*> g_databases;
// SQLite calls itself while it opens and prepares; those calls are its own.
thread_local int t_depth = 0;

class InSqlite {
 public:
  InSqlite() { ++t_depth; }
  ~InSqlite() { --t_depth; }
  InSqlite(const InSqlite&) = delete;
  InSqlite& operator=(const InSqlite&) = delete;
};

// What a call of this kind is to end with, if not with SQLite's own result.
std::optional<int> ResultOf(SqliteCall kind) {
  if (!IsInsideTheLibrary() || t_depth > 1) return std::nullopt;
  if (g_counted == kind) ++g_calls;
  if (!g_plan || g_plan->kind != kind) return std::nullopt;
  ++g_calls;
  if (g_calls < g_plan->nth || g_failures == g_plan->how_many) return std::nullopt;
  ++g_failures;
  return g_plan->result;
}

template <typename Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

int SqliteCalls(SqliteCall kind, const std::function<void()>& body) {
  g_calls = 0;
  g_counted = kind;
  body();
  g_counted.reset();
  return g_calls;
}

FailingSqlite::FailingSqlite(SqliteCall kind, int result, int nth, int how_many) {
  g_calls = 0;
  g_failures = 0;
  g_plan = {kind, result, nth, how_many};
}

FailingSqlite::~FailingSqlite() {
  g_plan.reset();
}

int FailingSqlite::Failures() const {
  return g_failures;
}

int OpenStatements() {
  return static_cast<int>(g_statements.size());
}

int OpenDatabases() {
  return static_cast<int>(g_databases.size());
}

extern "C" {

// A failed opening leaves a handle behind, as SQLite's own does.
int sqlite3_open_v2(const char* file, sqlite3** database, int flags, const char* vfs) {
  const InSqlite here;
  const int opened = Real<decltype(sqlite3_open_v2)>(__func__)(file, database, flags, vfs);
  if (IsInsideTheLibrary() && t_depth == 1 && *database != nullptr) g_databases.insert(*database);
  return ResultOf(SqliteCall::kOpen).value_or(opened);
}

int sqlite3_close(sqlite3* database) {
  const InSqlite here;
  if (t_depth == 1) g_databases.erase(database);
  return Real<decltype(sqlite3_close)>(__func__)(database);
}

int sqlite3_prepare_v2(sqlite3* database, const char* sql, int length, sqlite3_stmt** statement,
                       const char** tail) {
  const InSqlite here;
  if (const auto result = ResultOf(SqliteCall::kPrepare)) {
    *statement = nullptr;
    return *result;
  }
  const int result =
      Real<decltype(sqlite3_prepare_v2)>(__func__)(database, sql, length, statement, tail);
  if (IsInsideTheLibrary() && t_depth == 1 && *statement != nullptr) {
    g_statements.insert(*statement);
  }
  return result;
}

int sqlite3_step(sqlite3_stmt* statement) {
  const InSqlite here;
  if (const auto result = ResultOf(SqliteCall::kStep)) return *result;
  return Real<decltype(sqlite3_step)>(__func__)(statement);
}

int sqlite3_finalize(sqlite3_stmt* statement) {
  const InSqlite here;
  if (t_depth == 1) g_statements.erase(statement);
  return Real<decltype(sqlite3_finalize)>(__func__)(statement);
}

int usleep(useconds_t microseconds) {
  return IsInsideTheLibrary() ? 0 : Real<decltype(usleep)>(__func__)(microseconds);
}

}  // extern "C"

}  // namespace test
