// SPDX-License-Identifier: Apache-2.0
//
// The only road to the service's database: one read-only connection and one statement for the
// process, both under g_Mute. Nothing here knows a record, and nothing here locks.
#ifndef TAV_DB_API_TAV_DB_CLIENT_CONNECTION_H_
#define TAV_DB_API_TAV_DB_CLIENT_CONNECTION_H_

#include <string>
#include <vector>

#include "tav_common/tav_log.h"
#include "tav_common/tav_mutex.h"
#include "tav_db_api/tav_db_client_bind.h"

struct sqlite3;
struct sqlite3_stmt;

// Results of Step, as SQLite numbers them.
constexpr int kStepBusy = 5;
constexpr int kStepRow = 100;
constexpr int kStepDone = 101;

// Results of the drivers, as the exported functions return them.
constexpr int kFound = 0;
constexpr int kFailed = -1;
constexpr int kBusy = -2;

// Serialises all database work of the process: exported functions hold it for their whole run.
extern TavMutex g_Mute;
// Opened by the first query, then kept for the life of the process. A forked child opens its own.
extern sqlite3* g_pConnection GUARDED_BY(g_Mute);
extern sqlite3_stmt* g_pStmt GUARDED_BY(g_Mute);

// Counts a call that uses the database or the service, from before it waits for g_Mute until after
// it has released it. Throws in a process that was forked while a call was counted, and in all that
// descend from it: of its parent's threads a child has the one that forked, and what another one
// had locked stays locked for ever.
class TavRunningCall {
 public:
  TavRunningCall();
  ~TavRunningCall();
  TavRunningCall(const TavRunningCall&) = delete;
  TavRunningCall& operator=(const TavRunningCall&) = delete;
};

// Holds g_Mute around a counted call's work.
class SCOPED_CAPABILITY DatabaseLock {
 public:
  DatabaseLock() ACQUIRE(g_Mute) { g_Mute.Lock(); }
  ~DatabaseLock() RELEASE() { g_Mute.Unlock(); }
  DatabaseLock(const DatabaseLock&) = delete;
  DatabaseLock& operator=(const DatabaseLock&) = delete;

 private:
  const TavRunningCall m_running;
};

// The database file of the platform: its directory as it is now, and the file's name.
std::string DatabasePath();

// Opens the database unless it is open already; the first path wins. 0, or -1 after a log of
// the reason and of the file's health.
int Connect(const std::string& path) REQUIRES(g_Mute);

// Prepares sql into g_pStmt, connecting first where needed. 0, -1 (no database, bad statement)
// or -2 (busy at each of 100 attempts, 10 ms apart).
int Prepare(const std::string& sql) REQUIRES(g_Mute);

// Binds the values to the statement's parameters in order. Texts are not copied: binds must
// outlive the last Step.
void tavdb_bind(const std::vector<_TAVDB_BIND_T>& binds) REQUIRES(g_Mute);

// Steps the statement, retrying up to 100 times, 10 ms apart, while the database is busy.
// Returns SQLite's code, and 1 without a statement. Whatever is not a row ends the statement.
int Step() REQUIRES(g_Mute);

// The current row's column as text, "" for NULL; valid until the next Step.
const char* GetStringFromResult(unsigned int col) REQUIRES(g_Mute);
// The current row's column as an integer, 0 for NULL.
int GetIntegerFromResult(unsigned int col) REQUIRES(g_Mute);
// The current row's column as a text of any length, "" for NULL.
void GetValueByDBPosition(unsigned int col, std::string& out) REQUIRES(g_Mute);

// Prepare, then tavdb_bind. Results as Prepare.
int PrepareAndBind(const std::string& sql, const std::vector<_TAVDB_BIND_T>& binds)
    REQUIRES(g_Mute);

constexpr char kDatabaseIsBusy[] = "Get DB fail:sql busy";

// Walks the rows of the prepared statement, and ends the statement when the walk is left early.
class RowWalk {
 public:
  // busy_text is logged when the rows end because the database stayed busy.
  explicit RowWalk(const char* busy_text = kDatabaseIsBusy,
                   const LogPlace& place = LogPlace::Here())
      : m_busy_text(busy_text), m_place(place) {}
  ~RowWalk() REQUIRES(g_Mute);
  RowWalk(const RowWalk&) = delete;
  RowWalk& operator=(const RowWalk&) = delete;

  // True while there is a row to read.
  bool Next() REQUIRES(g_Mute);

  // What ended the rows.
  bool WasBusy() const { return m_last == kStepBusy; }
  bool ReachedTheEnd() const { return m_last == kStepDone; }

 private:
  const char* m_busy_text;
  LogPlace m_place;
  int m_last = kStepRow;
};

// Has read() take the first row of the prepared statement, and steps over the others. kFound,
// kFailed without a row, or kBusy, also when the first row had been read.
template <typename Read>
int ReadFirstRow(const Read& read, const LogPlace& place = LogPlace::Here()) REQUIRES(g_Mute) {
  int result = kFailed;
  RowWalk rows(kDatabaseIsBusy, place);
  while (rows.Next()) {
    if (result == kFound) continue;
    read();
    result = kFound;
  }
  return rows.WasBusy() ? kBusy : result;
}

#endif  // TAV_DB_API_TAV_DB_CLIENT_CONNECTION_H_
