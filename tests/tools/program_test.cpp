// SPDX-License-Identifier: Apache-2.0
//
// The fixture of the programs' tests.
#include "program_test.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace test {
namespace {

namespace fs = std::filesystem;

struct SqliteDeleter {
  void operator()(sqlite3* database) const { sqlite3_close(database); }
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

void ExecuteOn(sqlite3* database, const std::string& sql) {
  if (sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(database));
  }
}

const char* TypeName(int type) {
  switch (type) {
    case SQLITE_TEXT:
      return "text:";
    case SQLITE_INTEGER:
      return "integer:";
    case SQLITE_NULL:
      return "null:";
    default:
      return "other:";
  }
}

}  // namespace

ProgramTest::ProgramTest() {
  std::string name = fs::canonical(fs::temp_directory_path()) / "tav-tools-XXXXXX";
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary directory");
  m_directory = name;
}

ProgramTest::~ProgramTest() {
  if (HasFailure()) std::cerr << m_told;
  std::error_code error;
  fs::remove_all(m_directory, error);
  EXPECT_FALSE(error) << m_directory << ": " << error.message();
}

std::vector<std::string> ProgramTest::Entries() const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(m_directory)) {
    names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string ProgramTest::Write(const std::string& name, const std::string& content) const {
  const fs::path path = m_directory / name;
  std::ofstream file(path, std::ios::binary);
  file << content;
  file.close();
  if (!file) throw std::runtime_error("cannot write " + path.string());
  return path;
}

Result ProgramTest::RunHere(const std::string& program, const std::vector<std::string>& arguments,
                            int out) const {
  Command command{program, arguments, {}, out};
  command.environment = {{"HOME", m_directory},
                         {"PATH", PROGRAMS ":/usr/bin:/bin"},
                         {"LC_ALL", "C.UTF-8"},
                         {"DLOG_LEVEL", "S"},
                         {"TAV_DEVICE_ROOT", Device()}};
  // How sanitizers behave is decided outside.
  for (const char* name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS", "LSAN_OPTIONS"}) {
    if (const char* value = std::getenv(name)) command.environment[name] = value;
  }
  const Result result = RunCommand(command);
  std::ostringstream told;
  told << "=== " << program << ": " << result << "\n";
  m_told += told.str();
  return result;
}

Result ProgramTest::Sandbox(const std::vector<std::string>& arguments, int out) const {
  return RunHere(TAV_SANDBOX, arguments, out);
}

Result ProgramTest::Tavctl(const std::vector<std::string>& arguments, int out) const {
  return RunHere(TAVCTL, arguments, out);
}

Result ProgramTest::Shell(const std::string& script,
                          const std::vector<std::string>& arguments) const {
  std::vector<std::string> all = {"-c", script, "sh"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return RunHere("/bin/sh", all, -1);
}

void ProgramTest::MakeDevice(const std::string& seed) const {
  const Result result = Sandbox({"--create", Device(), "--seed", Write("seed.json", seed)});
  if (result.status != 0) throw std::runtime_error(result.err);
}

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path.string());
  return std::string(std::istreambuf_iterator<char>(file), {});
}

std::vector<std::vector<std::string>> Query(const fs::path& database, const std::string& sql) {
  sqlite3* opened = nullptr;
  const int result = sqlite3_open_v2(database.c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
  const std::unique_ptr<sqlite3, SqliteDeleter> handle(opened);
  sqlite3_stmt* prepared = nullptr;
  if (result != SQLITE_OK ||
      sqlite3_prepare_v2(opened, sql.c_str(), -1, &prepared, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(opened));
  }
  const std::unique_ptr<sqlite3_stmt, SqliteDeleter> statement(prepared);
  std::vector<std::vector<std::string>> rows;
  while (sqlite3_step(prepared) == SQLITE_ROW) {
    auto& row = rows.emplace_back();
    for (int column = 0; column < sqlite3_column_count(prepared); ++column) {
      std::string value = TypeName(sqlite3_column_type(prepared, column));
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(prepared, column));
      if (text != nullptr) value += text;
      row.push_back(value);
    }
  }
  return rows;
}

void Execute(const fs::path& database, const std::string& sql) {
  sqlite3* opened = nullptr;
  sqlite3_open_v2(database.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
  const std::unique_ptr<sqlite3, SqliteDeleter> handle(opened);
  ExecuteOn(opened, sql);
}

ExclusiveTransaction::ExclusiveTransaction(const fs::path& database) {
  sqlite3_open_v2(database.c_str(), &m_database, SQLITE_OPEN_READWRITE, nullptr);
  ExecuteOn(m_database, "begin exclusive");
}

ExclusiveTransaction::~ExclusiveTransaction() {
  sqlite3_close(m_database);
}

}  // namespace test
