// SPDX-License-Identifier: Apache-2.0
#include "tav_db_api/tav_db_client_connection.h"

#include <sqlite3.h>
#include <tzplatform_config.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <exception>

#include "tav_db_api/tav_db_client_health.h"

TavMutex g_Mute;
sqlite3* g_pConnection = nullptr;
sqlite3_stmt* g_pStmt = nullptr;

namespace {

using std::chrono::microseconds;
using std::chrono::steady_clock;

constexpr int kDatabaseDirectory = 24;  // the platform's number of the variable
constexpr char kDatabaseFile[] = "/.tavcore.db";

constexpr int kMaxRetryCount = 100;
constexpr microseconds kRetryPause{10000};

void FinalizeStatement() REQUIRES(g_Mute) {
  if (g_pStmt == nullptr) return;
  sqlite3_finalize(g_pStmt);
  g_pStmt = nullptr;
}

class ForkedInACall : public std::exception {
 public:
  const char* what() const noexcept override {
    return "this process was forked in the middle of a call, and cannot use the library";
  }
};

// The calls that run, and their process: a child finds its parent's. One aligned word, so that
// both are read and changed at once.
struct alignas(8) Calls {
  pid_t process;
  int running;
};
std::atomic<Calls> g_calls{};
static_assert(std::atomic<Calls>::is_always_lock_free);

pid_t g_nConnectionProcess GUARDED_BY(g_Mute) = 0;  // which opened g_pConnection

// A signal that arrives does not shorten the pause.
void PauseBeforeRetry() {
  const auto end = steady_clock::now() + kRetryPause;
  for (auto left = kRetryPause;
       left.count() > 0 && usleep(static_cast<useconds_t>(left.count())) != 0;) {
    left = std::chrono::duration_cast<microseconds>(end - steady_clock::now());
  }
}

}  // namespace

TavRunningCall::TavRunningCall() {
  const pid_t process = getpid();
  Calls calls = g_calls;
  do {
    if (calls.process != process && calls.running > 0) throw ForkedInACall();
  } while (!g_calls.compare_exchange_weak(calls, {process, calls.running + 1}));
}

// A call whose own thread has forked also ends in the child: there it stays counted.
TavRunningCall::~TavRunningCall() {
  Calls calls = g_calls;
  while (calls.process == getpid() &&
         !g_calls.compare_exchange_weak(calls, {calls.process, calls.running - 1})) {
  }
}

std::string DatabasePath() {
  const char* directory =
      tzplatform_getenv(static_cast<enum tzplatform_variable>(kDatabaseDirectory));
  return std::string(directory != nullptr ? directory : "") + kDatabaseFile;
}

int Connect(const std::string& path) {
  // A connection of the parent's is neither used nor closed: the child does not own its locks.
  if (g_nConnectionProcess != getpid()) g_pConnection = nullptr;
  if (g_pConnection != nullptr) {
    TAV_LOGI("Data base already connected");
    return 0;
  }
  const int result = sqlite3_open_v2(path.c_str(), &g_pConnection,
                                     SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
  if (result == SQLITE_OK) {
    g_nConnectionProcess = getpid();
    TAV_LOGI("Connected to DB");
    return 0;
  }
  TAV_LOGE("Failed to connect to DB : %s", sqlite3_errmsg(g_pConnection));
  if (g_pStmt != nullptr) {
    FinalizeStatement();
    TAV_LOGI("finalize g_pStmt ");
  }
  if (g_pConnection != nullptr) {
    sqlite3_close(g_pConnection);
    g_pConnection = nullptr;
    TAV_LOGI("Close DB ");
  }
  tavdb_check_is_valid();
  return kFailed;
}

int Prepare(const std::string& sql) {
  // Deliberate: a statement that was left open is let go, not finalized. RowWalk leaves none.
  g_pStmt = nullptr;
  if (Connect(DatabasePath()) != 0) return kFailed;

  for (int left = kMaxRetryCount;;) {
    const int result = sqlite3_prepare_v2(g_pConnection, sql.c_str(), -1, &g_pStmt, nullptr);
    if (result == SQLITE_OK) return 0;
    if (result != SQLITE_BUSY) {
      TAV_LOGE("[%s]", sql.c_str());
      TAV_LOGE("unknown type %d", result);
      tavdb_check_is_valid();
      FinalizeStatement();
      return kFailed;
    }
    TAV_LOGI("prepare return SQLITE_BUSY");
    if (--left == 0) {
      TAV_LOGE("prepare retry is up to MAX_RETRY_COUNT");
      if (g_pStmt != nullptr) {
        TAV_LOGI("finalize m_pStmt");
        FinalizeStatement();
      }
      return kBusy;
    }
    TAV_LOGI("retry prepare");
    PauseBeforeRetry();
  }
}

void tavdb_bind(const std::vector<_TAVDB_BIND_T>& binds) {
  int parameter = 0;
  for (const _TAVDB_BIND_T& bind : binds) {
    ++parameter;
    // A value too many has no parameter to go to: SQLite refuses it and the query runs.
    if (bind.type == kBindInteger) {
      sqlite3_bind_int(g_pStmt, parameter, bind.intValue);
    } else if (bind.type == kBindText) {
      sqlite3_bind_text(g_pStmt, parameter, bind.strValue.c_str(), -1, SQLITE_STATIC);
    }
  }
}

int PrepareAndBind(const std::string& sql, const std::vector<_TAVDB_BIND_T>& binds) {
  const int result = Prepare(sql);
  if (result == 0) tavdb_bind(binds);
  return result;
}

int Step() {
  if (g_pStmt == nullptr) {
    TAV_LOGE("g_pStmt is NULL");
    return SQLITE_ERROR;
  }
  for (int left = kMaxRetryCount;;) {
    const int result = sqlite3_step(g_pStmt);
    if (result == SQLITE_ROW) {
      TAV_LOGI("SQLITE_ROW : has another row ready");
      return result;
    }
    if (result != SQLITE_BUSY) {
      if (result == SQLITE_DONE) {
        TAV_LOGI("SQLITE_DONE : has finished executing");
        TAV_LOGI("finalize g_pStmt");
      } else {
        TAV_LOGE("unknown type %d", result);
      }
      FinalizeStatement();
      return result;
    }
    TAV_LOGI("step return SQLITE_BUSY");
    if (--left == 0) {
      TAV_LOGE("step retry is up to MAX_RETRY_COUNT");
      FinalizeStatement();
      return result;
    }
    TAV_LOGI("retry step");
    PauseBeforeRetry();
    // A lookup that other components call without the lock may have ended the statement.
    if (g_pStmt == nullptr) {
      TAV_LOGE("g_pStmt is NULL");
      return SQLITE_BUSY;
    }
  }
}

const char* GetStringFromResult(unsigned int col) {
  const unsigned char* text = sqlite3_column_text(g_pStmt, static_cast<int>(col));
  return text != nullptr ? reinterpret_cast<const char*>(text) : "";
}

int GetIntegerFromResult(unsigned int col) {
  return sqlite3_column_int(g_pStmt, static_cast<int>(col));
}

void GetValueByDBPosition(unsigned int col, std::string& out) {
  out = GetStringFromResult(col);
}

void save_db_bind(std::vector<_TAVDB_BIND_T>& binds, const std::string& value) {
  binds.push_back({kBindText, value, 0});
}

void save_db_bind(std::vector<_TAVDB_BIND_T>& binds, int value) {
  binds.push_back({kBindInteger, {}, value});
}

RowWalk::~RowWalk() {
  FinalizeStatement();
}

bool RowWalk::Next() {
  m_last = Step();
  if (m_last == kStepBusy) TAV_LOGE_FOR(m_place, "%s", m_busy_text);
  return m_last == kStepRow;
}
