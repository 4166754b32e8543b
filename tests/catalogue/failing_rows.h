// SPDX-License-Identifier: Apache-2.0
//
// A database whose statements fail where a test wants it: an executable that links this has
// functions of SQLite and usleep before the real ones.
#ifndef TESTS_CATALOGUE_FAILING_ROWS_H_
#define TESTS_CATALOGUE_FAILING_ROWS_H_

#include <sqlite3.h>

namespace test {

// How the statements begin that read whole apps, and values of the configuration.
inline constexpr char kAppRows[] = "select id,title,";
inline constexpr char kConfigRows[] = "select value from ";

// What a value's reader says when the database stays busy.
inline constexpr char kBusyText[] = "Get DB fail:sql busy";

inline constexpr int kAtPreparation = -1;

// While it lives, statements that begin with this text fail with the result, for good: behind so
// many of their rows in all, or at their preparation. Sleeps take no time.
class FailingRows {
 public:
  FailingRows(const char* beginning, int rows, int result = SQLITE_BUSY);
  ~FailingRows();
  FailingRows(const FailingRows&) = delete;
  FailingRows& operator=(const FailingRows&) = delete;
};

}  // namespace test

#endif  // TESTS_CATALOGUE_FAILING_ROWS_H_
