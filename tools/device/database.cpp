// SPDX-License-Identifier: Apache-2.0
//
// Writes the database of a device with SQLite itself.
#include "device/database.h"

#include "device/error.h"
#include "device/handles.h"

namespace tav_device {
namespace {

class Writer {
 public:
  explicit Writer(const std::string& path) : m_path(path) {
    sqlite3* database = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &database,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    m_database.reset(database);  // also a failed opening leaves a handle to close
    Check(result);
  }

  void Execute(const std::string& sql) {
    Check(sqlite3_exec(m_database.get(), sql.c_str(), nullptr, nullptr, nullptr));
  }

  void Prepare(const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(m_database.get(), sql.c_str(), -1, &statement, nullptr));
    m_statement.reset(statement);
  }

  void Bind(int position, const std::string& text) {
    Check(sqlite3_bind_text(m_statement.get(), position, text.data(), static_cast<int>(text.size()),
                            SQLITE_TRANSIENT));
  }
  void Bind(int position, int value) {
    Check(sqlite3_bind_int(m_statement.get(), position, value));
  }
  void Bind(int position, std::monostate) { Check(sqlite3_bind_null(m_statement.get(), position)); }

  void Run() {
    Check(sqlite3_step(m_statement.get()));
    Check(sqlite3_reset(m_statement.get()));
  }

 private:
  void Check(int result) const {
    if (result == SQLITE_OK || result == SQLITE_DONE) return;
    throw DeviceError(m_path + ": " + sqlite3_errmsg(m_database.get()));
  }

  std::string m_path;
  DatabaseHandle m_database;
  StatementHandle m_statement;  // after the database, so that it goes before it
};

}  // namespace

void WriteDatabase(const std::string& path, const Seed& seed) {
  Writer writer(path);
  writer.Execute("begin");
  writer.Execute(CreateTablesSql());

  writer.Prepare(InsertAppSql());
  for (const App& app : seed.apps) {
    int position = 0;
    for (const Cell& cell : app.cells) {
      ++position;
      std::visit([&](const auto& value) { writer.Bind(position, value); }, cell);
    }
    writer.Run();
  }

  writer.Prepare(std::string("insert into ") + kConfigTable + " (name, value) values (?, ?)");
  for (const auto& [name, value] : seed.config) {
    writer.Bind(1, name);
    writer.Bind(2, value);
    writer.Run();
  }
  writer.Execute("commit");
}

}  // namespace tav_device
