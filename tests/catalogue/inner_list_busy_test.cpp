// SPDX-License-Identifier: Apache-2.0
//
// The list of inner records when its rows end in a failure.
#include <gtest/gtest.h>

#include <string>

#include "failing_rows.h"
#include "support/device.h"
#include "tav_db_api/tav_db_client_inner.h"

namespace {

using test::App;
using test::FailingRows;
using test::kAppRows;
using test::kAtPreparation;
using Ids = std::vector<std::string>;

class BusyInnerList : public ::testing::Test {
 protected:
  BusyInnerList() { device.InstallAll({App("a"), App("b"), App("c")}); }

  // The ids of a list that held "before", and its result.
  std::pair<int, Ids> Listed() {
    std::vector<_APPS_INNER_INFO_T> apps(1);
    apps.front().strAppID = "before";
    const int result = GetTAVAppList("", "", true, apps);
    Ids ids;
    for (const auto& app : apps) ids.push_back(app.strAppID);
    return {result, ids};
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(BusyInnerList, HasTheRowsThatWereReadBeforeAndSucceeds) {
  {
    const FailingRows failing(kAppRows, 2);
    EXPECT_EQ(Listed(), std::pair(0, Ids({"before", "a", "b"})));
    EXPECT_EQ(log.Count("Get DB fail:sql busy"), 1);
    EXPECT_TRUE(log.Has("Finish ret[0]"));
  }
  EXPECT_EQ(Listed(), std::pair(0, Ids({"before", "a", "b", "c"})));
}

TEST_F(BusyInnerList, IsEmptyAndSucceedsWhenNoRowWasRead) {
  const FailingRows failing(kAppRows, 0);
  EXPECT_EQ(Listed(), std::pair(0, Ids({"before"})));
  EXPECT_TRUE(log.Has("Get DB fail:sql busy"));
}

TEST_F(BusyInnerList, HasTheRowsThatWereReadBeforeAlsoWhenTheyBreak) {
  for (const int result : {SQLITE_ERROR, SQLITE_IOERR, SQLITE_CORRUPT}) {
    log.Forget();
    {
      const FailingRows failing(kAppRows, 2, result);
      EXPECT_EQ(Listed(), std::pair(0, Ids({"before", "a", "b"})));
    }
    EXPECT_TRUE(log.HasError("unknown type " + std::to_string(result)));
    EXPECT_FALSE(log.Has("Get DB fail:sql busy"));
    EXPECT_TRUE(log.Has("Finish ret[0]"));
    EXPECT_EQ(Listed(), std::pair(0, Ids({"before", "a", "b", "c"})));
  }
}

TEST_F(BusyInnerList, IsBusyWhenItsStatementCannotBePrepared) {
  {
    const FailingRows failing(kAppRows, kAtPreparation);
    EXPECT_EQ(Listed(), std::pair(-2, Ids({"before"})));
    EXPECT_TRUE(log.Has("Finish ret[-2]"));
  }
  EXPECT_EQ(Listed(), std::pair(0, Ids({"before", "a", "b", "c"})));
}

}  // namespace
