// SPDX-License-Identifier: Apache-2.0
//
// The floor: what is left of each call without the library. The same statements, values, rows and
// finalizing with SQLite itself, the same platform reads that the calls' contract demands (a
// factory reset and a package manager at work refuse a read, and the age setting locks apps), and
// the same record. No log, no lock, no look at arguments, no retry when the database is busy.
#ifndef BENCH_BARE_H_
#define BENCH_BARE_H_

#include <sqlite3.h>
#include <tav_db_api.h>

#include <string>

namespace bench {

class Bare {
 public:
  explicit Bare(const std::string& database);
  ~Bare();
  Bare(const Bare&) = delete;
  Bare& operator=(const Bare&) = delete;

  int Lookup(const char* id, tav_app_info_s* info);
  int LookupByRunTitle(const char* run_title, tav_app_info_s* info);
  // The lookup's statement alone, without the platform reads.
  int LookupAlone(const char* id, tav_app_info_s* info);
  // With a count of 0 all apps from the index on. *list is a malloc block.
  int List(int index, int count, tav_app_info_s** list, int* real_count);
  // What the library counts: a list, the most used app first.
  int Count(int* count);
  int MultiScreenList(tav_app_ms_s** list, int* real_count);
  // One app or, without an id, all of them as JSON; *json is a malloc block.
  int Json(const char* id, char** json);
  int ListJson(char** json);
  int Xml(const std::string& file);

 private:
  // A statement that is finalized when it is done with.
  class Rows;

  int CountListed();
  int Page(const std::string& sql, int index, int count, tav_app_info_s** list, int* real_count);

  sqlite3* m_database = nullptr;
};

// The two states of the platform in which a read is refused.
bool IsRefused();

// The age of the owner's setting, from which on apps are locked; INT_MAX when there is none.
int LockedFrom();

}  // namespace bench

#endif  // BENCH_BARE_H_
