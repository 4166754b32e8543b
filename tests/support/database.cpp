// SPDX-License-Identifier: Apache-2.0
#include "support/database.h"

#include <stdexcept>

#include "device/schema.h"

namespace test {
namespace {

struct Finalize {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

void Check(int result, sqlite3* database, const std::string& what) {
  if (result == SQLITE_OK || result == SQLITE_DONE || result == SQLITE_ROW) return;
  throw std::runtime_error(what + ": " + sqlite3_errmsg(database));
}

void Bind(sqlite3_stmt* statement, int parameter, const Value& value) {
  if (const int* integer = std::get_if<int>(&value)) {
    sqlite3_bind_int(statement, parameter, *integer);
  } else if (const auto* text = std::get_if<std::string>(&value)) {
    sqlite3_bind_text(statement, parameter, text->c_str(), -1, SQLITE_TRANSIENT);
  }
}

}  // namespace

Database::Database(const std::filesystem::path& file) {
  sqlite3* opened = nullptr;
  const int result = sqlite3_open(file.c_str(), &opened);
  m_database.reset(opened);
  Check(result, opened, "open " + file.string());
  sqlite3_busy_timeout(opened, 10000);
}

void Database::Run(const std::string& sql, const std::vector<Value>& values) {
  const char* rest = sql.c_str();
  while (*rest != '\0') {
    sqlite3_stmt* prepared = nullptr;
    Check(sqlite3_prepare_v2(m_database.get(), rest, -1, &prepared, &rest), m_database.get(), sql);
    const Statement statement(prepared);
    if (prepared == nullptr) continue;  // blanks behind the last statement
    int parameter = 0;
    for (const Value& value : values) Bind(prepared, ++parameter, value);
    int result;
    while ((result = sqlite3_step(prepared)) == SQLITE_ROW) continue;
    Check(result, m_database.get(), sql);
  }
}

void Database::CreateTables() {
  Run(tav_device::CreateTablesSql());
}

void Database::Insert(const App& app) {
  std::vector<Value> values;
  for (const auto& column : tav_device::kAppColumns) {
    const auto given = app.Values().find(column.name);
    if (given != app.Values().end()) {
      values.push_back(given->second);
    } else if (column.kind == tav_device::ColumnKind::kText) {
      values.emplace_back(std::string());
    } else {
      values.emplace_back(column.initial);
    }
  }
  Run(tav_device::InsertAppSql(), values);
}

}  // namespace test
