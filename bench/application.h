// SPDX-License-Identifier: Apache-2.0
//
// The same work as an application would write it with SQLiteCpp: the library's statements and
// platform reads, values as std::string, exceptions for errors.
#ifndef BENCH_APPLICATION_H_
#define BENCH_APPLICATION_H_

#include <SQLiteCpp/Database.h>
#include <tav_db_api.h>

#include <optional>
#include <string>
#include <vector>

namespace bench {

class Application {
 public:
  explicit Application(const std::string& database) : m_database(database) {}

  std::optional<tav_app_info_s> Lookup(const std::string& id);
  std::optional<tav_app_info_s> LookupByRunTitle(const std::string& run_title);
  // With a count of 0 all apps from the index on.
  std::vector<tav_app_info_s> List(int index, int count);
  std::vector<tav_app_ms_s> MultiScreenList();
  std::size_t Count();
  // What it would ask who wants the number alone; the library counts what its list would have.
  int CountAlone();
  std::string Json(const std::string& id);
  std::string ListJson();
  void Xml(const std::string& file);

 private:
  int CountListed();
  std::vector<tav_app_info_s> Page(const std::string& sql, int index, int count);

  SQLite::Database m_database;
};

}  // namespace bench

#endif  // BENCH_APPLICATION_H_
