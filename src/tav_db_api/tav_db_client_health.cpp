// SPDX-License-Identifier: Apache-2.0
//
// Each check says in the log what it found; the first that fails ends the examination. Uses
// handles of its own, never the engine's.
#include "tav_db_api/tav_db_client_health.h"

#include <sqlite3.h>
#include <sys/stat.h>

#include <cstring>
#include <memory>
#include <string>

#include "tav_common/tav_handles.h"
#include "tav_common/tav_log.h"
#include "tav_db_api/tav_db_client_connection.h"

namespace {

using Database = std::unique_ptr<sqlite3, CallOnRelease<sqlite3_close>>;
using Statement = std::unique_ptr<sqlite3_stmt, CallOnRelease<sqlite3_finalize>>;

constexpr char kIntegrityCheck[] = "PRAGMA integrity_check;";
constexpr char kTableNames[] = "select name from sqlite_master where type = 'table';";

bool IsDamage(int result) {
  return result == SQLITE_CORRUPT || result == SQLITE_NOTADB;
}

int PrepareOn(const Database& database, const char* sql, Statement& statement) {
  sqlite3_stmt* prepared = nullptr;
  const int result = sqlite3_prepare_v2(database.get(), sql, -1, &prepared, nullptr);
  statement.reset(prepared);
  return result;
}

bool FirstColumnIs(const Statement& statement, const char* text) {
  const unsigned char* value = sqlite3_column_text(statement.get(), 0);
  return value != nullptr && std::strcmp(reinterpret_cast<const char*>(value), text) == 0;
}

bool IsFileWithContent(const char* path) {
  struct stat status;
  if (stat(path, &status) != 0 || !S_ISREG(status.st_mode)) {
    TAV_LOGE("%s is not a file", path);
    return false;
  }
  if (stat(path, &status) != 0) {
    TAV_LOGE("stat failed");
    return false;
  }
  if (status.st_size == 0) {
    TAV_LOGE("size of %s is 0", path);
    return false;
  }
  return true;
}

// A file that its writer keeps is taken for sound.
bool IsBusy() {
  TAV_LOGE("sqlite3 busy, return valid");
  return true;
}

bool IsSound(const Database& database, const char* path) {
  Statement statement;
  const int prepared = PrepareOn(database, kIntegrityCheck, statement);
  // A writer that holds the file exclusively is met here already, since preparing the check
  // reads the schema.
  if (prepared == SQLITE_BUSY) return IsBusy();
  if (prepared != SQLITE_OK) {
    TAV_LOGE("%s integrity_check failed, ret %d", path, prepared);
    TAV_LOGE("%s integrity_check not ok", path);
    return false;
  }
  for (;;) {
    const int result = sqlite3_step(statement.get());
    if (result == SQLITE_ROW) {
      if (FirstColumnIs(statement, "ok")) return true;
    } else if (result == SQLITE_BUSY) {
      return IsBusy();
    } else {
      TAV_LOGE("sqlite3 error %d", result);
      TAV_LOGE("%s integrity_check failed", path);
      TAV_LOGE("%s integrity_check not ok", path);
      return false;
    }
  }
}

bool HasTables(const Database& database, const char* path) {
  Statement statement;
  const int prepared = PrepareOn(database, kTableNames, statement);
  if (prepared != SQLITE_OK) {
    // Anything but damage is the writer's doing, and passes.
    if (!IsDamage(prepared)) return true;
    TAV_LOGE("sqlite3_prepare_v2 ret %d", prepared);
    return false;
  }
  bool has_apps = false;
  bool has_configuration = false;
  int result;
  while ((result = sqlite3_step(statement.get())) == SQLITE_ROW) {
    if (FirstColumnIs(statement, "widgetinfo")) has_apps = true;
    if (FirstColumnIs(statement, "TAVConfigTable")) has_configuration = true;
  }
  if (result == SQLITE_BUSY) return true;
  const bool has_both = has_apps && has_configuration;
  TAV_LOGI("%s table status %d", path, has_both);
  return has_both;
}

}  // namespace

bool tavdb_check_is_valid() {
  const std::string file = DatabasePath();
  const char* path = file.c_str();
  if (!IsFileWithContent(path)) return false;

  sqlite3* opened = nullptr;
  const int result =
      sqlite3_open_v2(path, &opened, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
  const Database database(opened);
  if (IsDamage(result)) {
    TAV_LOGE("sqlite3_open_v2 ret %d", result);
    return false;
  }
  if (!IsSound(database, path)) return false;
  const bool is_valid = HasTables(database, path);
  TAV_LOGI("%s is_valid [%d] ", path, is_valid);
  return is_valid;
}
