// SPDX-License-Identifier: Apache-2.0
//
// Every call with every result of SQLite at every preparation and at every step: the call ends
// as it says it may, no statement stays open, and the next one gives what it always gives.
#include "faults/sqlite.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <iostream>
#include <set>

#include "faults/calls.h"
#include "faults/seeded_device.h"

namespace {

using test::Call;
using test::Outcome;
using test::SqliteCall;

// The library asks a busy database so often before it gives up.
constexpr int kAttempts = 100;
constexpr int kForEver = 1000000;
constexpr int kMostCalls = 1000;

constexpr int kFailures[] = {SQLITE_ERROR,      SQLITE_LOCKED, SQLITE_IOERR,     SQLITE_NOMEM,
                             SQLITE_CORRUPT,    SQLITE_SCHEMA, SQLITE_INTERRUPT, SQLITE_AUTH,
                             SQLITE_NOTADB,     SQLITE_FULL,   SQLITE_MISUSE,    SQLITE_CANTOPEN,
                             SQLITE_CONSTRAINT, SQLITE_PERM,   SQLITE_PROTOCOL,  -1};

class CallOverSqlite : public ::testing::TestWithParam<Call> {
 protected:
  ~CallOverSqlite() override { std::cout << injections << " results were put in\n"; }

  // Whether a call was reached that could end so.
  bool Inject(SqliteCall kind, int result, int nth, int how_many, Outcome& outcome) {
    const test::FailingSqlite failing(kind, result, nth, how_many);
    outcome = call.run();
    injections += failing.Failures();
    return failing.Failures() > 0;
  }
  void ExpectAsBefore(const Outcome& whole) {
    EXPECT_EQ(test::OpenStatements(), 0);
    EXPECT_EQ(test::OpenDatabases(), 1);
    ASSERT_EQ(call.run(), whole);
  }
  // Every place of a kind, one after the other, until the call has no further one.
  template <typename IsDocumented>
  void InjectEverywhere(const std::set<int>& results, int how_many,
                        const IsDocumented& is_documented) {
    call.run();
    const Outcome whole = call.run();
    for (const SqliteCall kind : {SqliteCall::kPrepare, SqliteCall::kStep}) {
      for (const int result : results) {
        Outcome outcome;
        for (int nth = 1; Inject(kind, result, nth, how_many, outcome); ++nth) {
          ASSERT_LT(nth, kMostCalls);
          ASSERT_TRUE(is_documented(outcome, whole))
              << (kind == SqliteCall::kStep ? "step " : "preparation ") << nth << " with " << result
              << ": " << outcome;
          ASSERT_NO_FATAL_FAILURE(ExpectAsBefore(whole));
        }
        ASSERT_EQ(outcome, whole);
      }
    }
  }

  const Call& call = GetParam();
  test::SeededDevice device{call};
  long injections = 0;
};

TEST_P(CallOverSqlite, EndsAsItSaysWhenAStatementFails) {
  InjectEverywhere({std::begin(kFailures), std::end(kFailures)}, 1,
                   [&](const Outcome& outcome, const Outcome& whole) {
                     return outcome == whole || test::IsOneOf(call.failed, outcome, whole) ||
                            test::IsOneOf(call.broken, outcome, whole);
                   });
}

TEST_P(CallOverSqlite, EndsAsItSaysWhenTheDatabaseStaysBusy) {
  InjectEverywhere({SQLITE_BUSY}, kForEver, [&](const Outcome& outcome, const Outcome& whole) {
    return test::IsOneOf(call.busy, outcome, whole);
  });
}

TEST_P(CallOverSqlite, EndsAsItSaysWhenTheDatabaseIsBusyUntilItGivesUp) {
  InjectEverywhere({SQLITE_BUSY}, kAttempts, [&](const Outcome& outcome, const Outcome& whole) {
    return test::IsOneOf(call.busy, outcome, whole);
  });
}

TEST_P(CallOverSqlite, GivesTheWholeWhenTheDatabaseIsFreeInTime) {
  InjectEverywhere({SQLITE_BUSY}, kAttempts - 1,
                   [](const Outcome& outcome, const Outcome& whole) { return outcome == whole; });
}

TEST_P(CallOverSqlite, EndsAsItSaysUntilTheDatabaseCanBeOpened) {
  std::set<int> results(std::begin(kFailures), std::end(kFailures));
  results.insert(SQLITE_BUSY);
  std::vector<Outcome> outcomes;
  for (const int result : results) {
    outcomes.emplace_back();
    ASSERT_TRUE(Inject(SqliteCall::kOpen, result, 1, kForEver, outcomes.back()));
    EXPECT_EQ(test::OpenStatements(), 0);
    EXPECT_EQ(test::OpenDatabases(), 0);
  }
  const Outcome whole = call.run();
  for (const Outcome& outcome : outcomes) {
    EXPECT_TRUE(outcome == whole || test::IsOneOf(call.failed, outcome, whole) ||
                test::IsOneOf(call.broken, outcome, whole))
        << outcome;
  }
  EXPECT_EQ(call.run(), whole);
}

// The calls that read the database: those that may find it busy.
test::Calls CallsThatRead() {
  test::Calls calls;
  for (const Call& call : test::EveryCall()) {
    if (!call.busy.empty()) calls.push_back(call);
  }
  return calls;
}

INSTANTIATE_TEST_SUITE_P(All, CallOverSqlite, ::testing::ValuesIn(CallsThatRead()),
                         test::NameOfCall);

class CallWithoutSqlite : public ::testing::TestWithParam<Call> {
 protected:
  test::SeededDevice device{GetParam()};
};

TEST_P(CallWithoutSqlite, MakesNoCallToIt) {
  for (const SqliteCall kind : {SqliteCall::kOpen, SqliteCall::kPrepare, SqliteCall::kStep}) {
    EXPECT_EQ(test::SqliteCalls(kind, [] { GetParam().run(); }), 0);
  }
}

test::Calls CallsThatDoNotRead() {
  test::Calls calls;
  for (const Call& call : test::EveryCall()) {
    if (call.busy.empty()) calls.push_back(call);
  }
  return calls;
}

INSTANTIATE_TEST_SUITE_P(All, CallWithoutSqlite, ::testing::ValuesIn(CallsThatDoNotRead()),
                         test::NameOfCall);

}  // namespace
