// SPDX-License-Identifier: Apache-2.0
//
// The service's side of the database: creates, fills and changes it through SQLite itself.
#ifndef TESTS_SUPPORT_DATABASE_H_
#define TESTS_SUPPORT_DATABASE_H_

#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "support/app.h"

namespace test {

class Database {
 public:
  // Opens the file, creating it when it is missing. Throws what SQLite says on any failure,
  // here and below.
  explicit Database(const std::filesystem::path& file);

  void Run(const std::string& sql, const std::vector<Value>& values = {});
  void CreateTables();
  void Insert(const App& app);

 private:
  struct Close {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
  };
  std::unique_ptr<sqlite3, Close> m_database;
};

}  // namespace test

#endif  // TESTS_SUPPORT_DATABASE_H_
