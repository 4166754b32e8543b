// SPDX-License-Identifier: Apache-2.0
//
// The lookup of one inner record when its rows end in a failure.
#include <gtest/gtest.h>

#include <algorithm>

#include "failing_rows.h"
#include "inner_members.h"
#include "support/device.h"
#include "tav_db_api/tav_db_client_inner.h"

namespace {

using test::App;
using test::FailingRows;
using test::kAppRows;
using test::kAtPreparation;
using test::kBusyText;
using test::MembersOf;

constexpr char kRowIsRead[] = "set app_info success";

class BusyInnerLookup : public ::testing::Test {
 protected:
  BusyInnerLookup() {
    device.InstallAll({test::AppWithEveryColumnSet("first").Package("shared").Set("is_lock", 0),
                       App("second").Package("shared")});
    EXPECT_EQ(GetAppInnerInfo("shared", &whole), 0);
    EXPECT_EQ(whole.strAppID, "first");
    log.Forget();
  }
  // The lookup's result with statements that fail so.
  int Find(int rows, int result = SQLITE_BUSY) {
    const FailingRows failing(kAppRows, rows, result);
    return GetAppInnerInfo("shared", &app);
  }
  void ExpectFinish(int result) const {
    EXPECT_EQ(log.Count("Finish app_id:[shared],ret[" + std::to_string(result) + "]"), 1);
  }
  void ExpectNextLookupWorks() {
    _APPS_INNER_INFO_T next;
    EXPECT_EQ(GetAppInnerInfo("shared", &next), 0);
    EXPECT_EQ(MembersOf(next), MembersOf(whole));
  }

  test::Device device;
  test::Log& log = device.GetLog();
  _APPS_INNER_INFO_T whole;
  _APPS_INNER_INFO_T app;
};

TEST_F(BusyInnerLookup, IsBusyWithTheRecordUntouchedWhenItsStatementCannotBePrepared) {
  app = whole;
  app.strTitle = "before";
  const auto before = MembersOf(app);
  EXPECT_EQ(Find(kAtPreparation), -2);
  EXPECT_EQ(MembersOf(app), before);
  EXPECT_TRUE(log.HasError("prepare retry is up to MAX_RETRY_COUNT"));
  EXPECT_FALSE(log.Has(kBusyText));
  ExpectFinish(-2);
  ExpectNextLookupWorks();
}

TEST_F(BusyInnerLookup, IsBusyWithTheRecordUntouchedBeforeTheFirstRow) {
  const auto before = MembersOf(app);
  EXPECT_EQ(Find(0), -2);
  EXPECT_EQ(MembersOf(app), before);
  EXPECT_TRUE(log.HasError(kBusyText));
  EXPECT_FALSE(log.Has(kRowIsRead));
  ExpectFinish(-2);
  ExpectNextLookupWorks();
}

TEST_F(BusyInnerLookup, IsBusyWithTheRecordFilledBehindTheFirstRow) {
  EXPECT_EQ(Find(1), -2);
  EXPECT_EQ(MembersOf(app), MembersOf(whole));
  EXPECT_TRUE(log.HasError(kBusyText));
  ExpectFinish(-2);
  ExpectNextLookupWorks();
}

TEST_F(BusyInnerLookup, SaysThatTheRowIsReadBeforeTheNextOneIsAskedFor) {
  device.Setting("db/appstore/ratingvalue", "18+");
  EXPECT_EQ(Find(1), -2);
  const auto messages = log.Messages();
  const auto at = [&messages](const std::string& message) {
    return std::find(messages.begin(), messages.end(), message);
  };
  EXPECT_EQ(log.Count(kRowIsRead), 1);
  EXPECT_LT(at("got db/appstore/ratingvalue value[18+]"), at(kRowIsRead));
  EXPECT_LT(at(kRowIsRead), at("step return SQLITE_BUSY"));
}

TEST_F(BusyInnerLookup, SaysThatTheRowIsReadOnceWhateverRowsFollow) {
  EXPECT_EQ(GetAppInnerInfo("shared", &app), 0);
  EXPECT_EQ(log.Count(kRowIsRead), 1);
  EXPECT_EQ(log.Count("SQLITE_ROW : has another row ready"), 2);
}

TEST_F(BusyInnerLookup, SucceedsWhenItsRowsBreakBehindTheFirst) {
  EXPECT_EQ(Find(1, SQLITE_CORRUPT), 0);
  EXPECT_EQ(MembersOf(app), MembersOf(whole));
  ExpectFinish(0);
}

TEST_F(BusyInnerLookup, FailsWhenItsRowsBreakBeforeTheFirst) {
  EXPECT_EQ(Find(0, SQLITE_CORRUPT), -1);
  EXPECT_EQ(MembersOf(app), MembersOf({}));
  EXPECT_FALSE(log.Has(kRowIsRead));
  ExpectFinish(-1);
}

}  // namespace
