// SPDX-License-Identifier: Apache-2.0
//
// tavctl doctor: the database. Examined with a connection of its own, then read through the
// library.
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <set>
#include <string>

#include "device/handles.h"
#include "device/schema.h"
#include "doctor.h"
#include "doctor_side_files.h"
#include "platform.h"
#include "tav_db_api.hpp"

namespace {

constexpr char kFile[] = "database file";
constexpr char kContent[] = "database content";
constexpr char kTables[] = "database tables";
constexpr char kRead[] = "read of all apps";

constexpr int kBusyMsec = 1000;  // as long as the library waits
constexpr int kMostMessages = 3;

const char* DatabaseAdvice() {
  return kIsOnPc ? "make a new device with tav-sandbox --create DIR"
                 : "let the service make its database anew";
}

class Examination {
 public:
  Examination(std::string path, Findings& findings)
      : m_path(std::move(path)), m_findings(findings) {}

  // Each says whether the next one is worth the while.
  bool File();
  bool Content();
  bool Tables();

  // Whether a read leaves everything as it is, and comes to an end.
  bool MayBeRead() const { return m_may_be_read; }

 private:
  void Add(Health health, const char* what, const std::string& text, const char* advice = "") {
    m_findings.push_back({health, what, text, advice});
  }
  bool Open();
  tav_device::StatementHandle Prepare(const char* sql);
  std::set<std::string> ColumnsOf(const char* table);
  bool HasColumns();
  // False: SQLite's last error has been added.
  bool AddError(const char* what);

  const std::string m_path;
  Findings& m_findings;
  tav_device::DatabaseHandle m_database;
  bool m_may_be_read = true;
};

bool Examination::File() {
  struct stat status;
  if (stat(m_path.c_str(), &status) != 0) {
    Add(Health::kProblem, kFile, m_path + ": " + std::strerror(errno), DatabaseAdvice());
  } else if (!S_ISREG(status.st_mode)) {
    Add(Health::kProblem, kFile, m_path + " is not a file", DatabaseAdvice());
    m_may_be_read = false;
  } else if (status.st_size == 0) {
    Add(Health::kProblem, kFile, m_path + " is empty", DatabaseAdvice());
  } else if (access(m_path.c_str(), R_OK) != 0) {
    Add(Health::kProblem, kFile, m_path + " may not be read by this user",
        "run the program as a user or with a group that may");
  } else if (LacksLogIndex(m_path)) {
    Add(Health::kNote, kFile,
        m_path +
            " has a write-ahead log without its index, which every reader makes: it is not "
            "looked at, since that would leave one behind");
    m_may_be_read = false;
  } else {
    Add(Health::kGood, kFile, m_path + ", " + std::to_string(status.st_size) + " bytes");
    return true;
  }
  return false;
}

bool Examination::AddError(const char* what) {
  const int error = sqlite3_errcode(m_database.get());
  const std::string text = sqlite3_errmsg(m_database.get());
  if (error == SQLITE_BUSY) {
    Add(Health::kProblem, what, "another process has kept the database for more than a second",
        "wait until its writer is done; until then calls answer -2");
  } else if (error == SQLITE_READONLY) {
    Add(Health::kProblem, what, text,
        "a writer left its journal behind, or a write-ahead log has no side files: have the service, "
        "or somebody who may write there, open the database once");
  } else if (error == SQLITE_CANTOPEN) {
    Add(Health::kProblem, what, text,
        "the side files of the write-ahead log must be readable as the database is");
  } else {
    Add(Health::kProblem, what, text, DatabaseAdvice());
  }
  return false;
}

bool Examination::Open() {
  sqlite3* opened = nullptr;
  const int result = sqlite3_open_v2(m_path.c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
  m_database.reset(opened);
  if (result != SQLITE_OK) return AddError(kContent);
  sqlite3_busy_timeout(m_database.get(), kBusyMsec);
  return true;
}

tav_device::StatementHandle Examination::Prepare(const char* sql) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(m_database.get(), sql, -1, &statement, nullptr);
  return tav_device::StatementHandle(statement);
}

std::string TextOf(sqlite3_stmt* statement) {
  const unsigned char* text = sqlite3_column_text(statement, 0);
  return text != nullptr ? reinterpret_cast<const char*>(text) : "";
}

bool Examination::Content() {
  if (!Open()) return false;
  const auto statement = Prepare("PRAGMA integrity_check;");
  if (statement == nullptr) return AddError(kContent);
  int messages = 0;
  int result;
  while ((result = sqlite3_step(statement.get())) == SQLITE_ROW) {
    const std::string message = TextOf(statement.get());
    if (message == "ok") {
      Add(Health::kGood, kContent, "sound");
    } else if (++messages <= kMostMessages) {
      Add(Health::kProblem, kContent, message, DatabaseAdvice());
    }
  }
  if (result != SQLITE_DONE) return AddError(kContent);
  return true;
}

std::set<std::string> Examination::ColumnsOf(const char* table) {
  std::set<std::string> columns;
  const auto statement = Prepare("select name from pragma_table_info(?)");
  if (statement == nullptr) return columns;
  sqlite3_bind_text(statement.get(), 1, table, -1, SQLITE_STATIC);
  while (sqlite3_step(statement.get()) == SQLITE_ROW) columns.insert(TextOf(statement.get()));
  return columns;
}

bool Examination::HasColumns() {
  const std::set<std::string> columns = ColumnsOf(tav_device::kAppsTable);
  const std::set<std::string> configuration = ColumnsOf(tav_device::kConfigTable);
  std::string missing;
  for (const tav_device::Column& column : tav_device::kAppColumns) {
    if (columns.count(column.name) == 0) {
      missing += (missing.empty() ? "" : ", ") + std::string(column.name);
    }
  }
  if (columns.empty()) {
    Add(Health::kProblem, kTables, std::string("there is no table ") + tav_device::kAppsTable,
        DatabaseAdvice());
  } else if (!missing.empty()) {
    Add(Health::kProblem, kTables,
        std::string(tav_device::kAppsTable) + " lacks the columns " + missing, DatabaseAdvice());
  }
  const bool has_configuration =
      configuration.count("name") > 0 && configuration.count("value") > 0;
  if (!has_configuration) {
    Add(Health::kProblem, kTables,
        (configuration.empty() ? "there is no table " : "no column name or value in ") +
            std::string(tav_device::kConfigTable),
        DatabaseAdvice());
  }
  return has_configuration && !columns.empty() && missing.empty();
}

bool Examination::Tables() {
  if (!HasColumns()) return false;
  const auto statement = Prepare(
      "select count(*), count(case when is_hidden then 1 end) "
      "from widgetinfo");
  if (statement == nullptr || sqlite3_step(statement.get()) != SQLITE_ROW) {
    return AddError(kTables);
  }
  const int apps = sqlite3_column_int(statement.get(), 0);
  const int hidden = sqlite3_column_int(statement.get(), 1);
  const std::string text = std::to_string(apps) + (apps == 1 ? " app, " : " apps, ") +
                           std::to_string(hidden) + " hidden";
  Add(apps == 0 ? Health::kNote : Health::kGood, kTables, text);
  return true;
}

void ReadThroughLibrary(Findings& findings) {
  const tav::Result<tav::AppList> list = tav::GetAllAppList();
  if (list) {
    findings.push_back({list->empty() ? Health::kNote : Health::kGood, kRead,
                        std::to_string(list->size()) + " records", ""});
  } else {
    const int result = static_cast<int>(list.status());
    findings.push_back({Health::kProblem, kRead,
                        "tav_get_all_app_list answers " + std::to_string(result),
                        "run with DLOG_LEVEL=W to see why"});
  }
}

}  // namespace

void ExamineDatabase(Findings& findings) {
  const std::string directory = PlatformDirectory(kDatabaseDirectory);
  if (directory.empty()) return;  // which has been told
  MakeNoSideFiles();
  Examination examination(directory + "/.tavcore.db", findings);
  if (examination.File() && examination.Content()) examination.Tables();
  if (examination.MayBeRead()) ReadThroughLibrary(findings);
}
