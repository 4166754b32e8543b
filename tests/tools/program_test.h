// SPDX-License-Identifier: Apache-2.0
//
// The fixture of the programs' tests: a directory of the test's own, and an environment in which
// a program sees nothing else.
#ifndef TESTS_TOOLS_PROGRAM_TEST_H_
#define TESTS_TOOLS_PROGRAM_TEST_H_

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "program.h"

struct sqlite3;

namespace test {

class ProgramTest : public testing::Test {
 protected:
  ProgramTest();
  ~ProgramTest() override;

  const std::filesystem::path& Directory() const { return m_directory; }
  std::filesystem::path Device() const { return m_directory / "device"; }
  std::filesystem::path DatabaseFile() const { return Device() / "dbspace" / ".tavcore.db"; }

  // The names of what lies in the test's directory, sorted.
  std::vector<std::string> Entries() const;

  // Writes a file in the test's directory and returns its path.
  std::string Write(const std::string& name, const std::string& content) const;

  // Run with the log switched off, so that standard error holds the program's own words alone. A
  // shell finds the tools in its PATH.
  Result Sandbox(const std::vector<std::string>& arguments, int out = -1) const;
  Result Tavctl(const std::vector<std::string>& arguments, int out = -1) const;
  Result Shell(const std::string& script, const std::vector<std::string>& arguments) const;

  // Makes Device() from the text of a seed.
  void MakeDevice(const std::string& seed) const;

 private:
  Result RunHere(const std::string& program, const std::vector<std::string>& arguments,
                 int out) const;

  std::filesystem::path m_directory;
  mutable std::string m_told;  // what the programs said, shown when the test fails
};

std::string ReadFile(const std::filesystem::path& path);

// The rows of a query as texts, each value behind its SQLite type: "text:a", "integer:1", "null:".
std::vector<std::vector<std::string>> Query(const std::filesystem::path& database,
                                            const std::string& sql);

// Runs statements that change a database.
void Execute(const std::filesystem::path& database, const std::string& sql);

// Keeps everybody else from a database while it lives.
class ExclusiveTransaction {
 public:
  explicit ExclusiveTransaction(const std::filesystem::path& database);
  ~ExclusiveTransaction();
  ExclusiveTransaction(const ExclusiveTransaction&) = delete;
  ExclusiveTransaction& operator=(const ExclusiveTransaction&) = delete;

 private:
  sqlite3* m_database = nullptr;
};

}  // namespace test

#endif  // TESTS_TOOLS_PROGRAM_TEST_H_
