// SPDX-License-Identifier: Apache-2.0
//
// SQLite as the library calls it: an executable that links this can have an opening, a
// preparation or a step end with any result. The library's waits for a busy database take no
// time there.
#ifndef TESTS_FAULTS_SQLITE_H_
#define TESTS_FAULTS_SQLITE_H_

#include <functional>

namespace test {

enum class SqliteCall { kOpen, kPrepare, kStep };

// How often the library makes such a call while body runs.
int SqliteCalls(SqliteCall kind, const std::function<void()>& body);

// Lets so many calls of a kind end with a result, from the nth on, while it lives.
class FailingSqlite {
 public:
  FailingSqlite(SqliteCall kind, int result, int nth, int how_many);
  ~FailingSqlite();
  FailingSqlite(const FailingSqlite&) = delete;
  FailingSqlite& operator=(const FailingSqlite&) = delete;

  // The calls that have failed.
  int Failures() const;
};

// The statements that were prepared inside the library and are not finalized yet.
int OpenStatements();

// The handles, of failed openings as well, that were handed to the library and are not closed.
int OpenDatabases();

}  // namespace test

#endif  // TESTS_FAULTS_SQLITE_H_
