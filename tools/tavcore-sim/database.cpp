// SPDX-License-Identifier: Apache-2.0
//
// Changes with SQLite itself.
#include "database.h"

#include <tzplatform_config.h>

#include "device/error.h"
#include "device/handles.h"
#include "device/schema.h"
#include "names.h"
#include "say.h"

namespace tavcore {
namespace {

// A transaction that is rolled back unless it is committed.
class Transaction {
 public:
  Transaction(const std::string& path, int busy_milliseconds) : m_path(path) {
    sqlite3* database = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr);
    m_database.reset(database);  // also a failed opening leaves a handle to close
    Check(result);
    sqlite3_busy_timeout(database, busy_milliseconds);
    Execute("begin immediate");
  }
  ~Transaction() {
    if (sqlite3_get_autocommit(m_database.get()) == 0) {
      sqlite3_exec(m_database.get(), "rollback", nullptr, nullptr, nullptr);
    }
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  // Runs the statement with the app as its first parameter and the value as its second; returns
  // the number of rows it changed.
  int Run(const std::string& sql, const std::string& app, std::optional<int> value) {
    sqlite3_stmt* prepared = nullptr;
    Check(sqlite3_prepare_v2(m_database.get(), sql.c_str(), -1, &prepared, nullptr));
    const tav_device::StatementHandle statement(prepared);
    Check(
        sqlite3_bind_text(prepared, 1, app.data(), static_cast<int>(app.size()), SQLITE_TRANSIENT));
    if (value) Check(sqlite3_bind_int(prepared, 2, *value));
    Check(sqlite3_step(prepared));
    return sqlite3_changes(m_database.get());
  }

  void Commit() { Execute("commit"); }

 private:
  void Execute(const char* sql) {
    Check(sqlite3_exec(m_database.get(), sql, nullptr, nullptr, nullptr));
  }

  void Check(int result) const {
    if (result == SQLITE_OK || result == SQLITE_DONE) return;
    throw tav_device::DeviceError(m_path + ": " + sqlite3_errmsg(m_database.get()));
  }

  std::string m_path;
  tav_device::DatabaseHandle m_database;
};

}  // namespace

Change AppDatabase::SetLock(const std::string& app, bool is_lock) const {
  return Update("is_lock = ?2", app, is_lock ? 1 : 0);
}

Change AppDatabase::SetRating(const std::string& app, int rating) const {
  return Update("rating = ?2", app, rating);
}

// The date is UTC, so that the order of launches does not depend on the season.
Change AppDatabase::CountUse(const std::string& app) const {
  return Update(
      "use_count = min(coalesce(use_count, 0) + 1, 2147483647), launch_date = datetime('now')",
      app);
}

Change AppDatabase::MarkUpdated(const std::string& app) const {
  return Update("is_updated = 1, is_need_update = 0", app);
}

Change AppDatabase::Update(const char* assignments, const std::string& app,
                           std::optional<int> value) const {
  if (app.empty()) return Change::kUnknownApp;  // an app without a platform id would match
  try {
    const char* directory = tzplatform_getenv(TZPLATFORM_DATABASE_DIRECTORY);
    if (directory == nullptr) throw tav_device::DeviceError("there is no directory of databases");
    Transaction transaction(std::string(directory) + kDatabaseName, m_busy_milliseconds);
    const std::string sql = std::string("update ") + tav_device::kAppsTable + " set " +
                            assignments + " where id = ?1 or tizen_id = ?1";
    const int changed = transaction.Run(sql, app, value);
    transaction.Commit();
    return changed > 0 ? Change::kDone : Change::kUnknownApp;
  } catch (const tav_device::DeviceError& error) {
    Say(error.what());
    return Change::kFailed;
  }
}

}  // namespace tavcore
