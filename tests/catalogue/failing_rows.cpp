// SPDX-License-Identifier: Apache-2.0
#include "failing_rows.h"

#include <dlfcn.h>
#include <unistd.h>

#include <optional>
#include <string_view>

namespace test {
namespace {

struct Failure {
  std::string_view beginning;
  int rows;
  int result;
};

std::optional<Failure> g_failure;

bool Concerns(const char* sql) {
  return g_failure && sql != nullptr &&
         std::string_view(sql).substr(0, g_failure->beginning.size()) == g_failure->beginning;
}

template <typename Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

FailingRows::FailingRows(const char* beginning, int rows, int result) {
  g_failure = {beginning, rows, result};
}

FailingRows::~FailingRows() {
  g_failure.reset();
}

extern "C" {

int sqlite3_prepare_v2(sqlite3* database, const char* sql, int length, sqlite3_stmt** statement,
                       const char** tail) {
  if (Concerns(sql) && g_failure->rows == kAtPreparation) {
    *statement = nullptr;
    return g_failure->result;
  }
  return Real<decltype(sqlite3_prepare_v2)>("sqlite3_prepare_v2")(database, sql, length, statement,
                                                                  tail);
}

int sqlite3_step(sqlite3_stmt* statement) {
  const bool is_concerned = Concerns(sqlite3_sql(statement));
  if (is_concerned && g_failure->rows == 0) return g_failure->result;
  const int result = Real<decltype(sqlite3_step)>("sqlite3_step")(statement);
  if (is_concerned && result == SQLITE_ROW) --g_failure->rows;
  return result;
}

int usleep(useconds_t microseconds) {
  return g_failure ? 0 : Real<decltype(usleep)>("usleep")(microseconds);
}

}  // extern "C"

}  // namespace test
