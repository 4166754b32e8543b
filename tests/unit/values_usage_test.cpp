// SPDX-License-Identifier: Apache-2.0
//
// The test whether an app is among the rows of a query.
#include <gtest/gtest.h>

#include "support/device.h"
#include "tav_db_api/tav_db_client_values.h"

namespace {

using test::App;
using Binds = std::vector<_TAVDB_BIND_T>;

constexpr char kAllIds[] = "select id from widgetinfo";

class Membership : public ::testing::Test {
 protected:
  static int Check(const std::string& id, const std::string& sql = kAllIds,
                   const Binds& binds = {}) {
    const TavLock lock(g_Mute);
    return CheckIsRecentlyOrMostUsedApp(id, sql, binds);
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(Membership, IsToldOfAnAppAmongTheRows) {
  device.Install(App("a")).Install(App("b")).Install(App("c"));
  for (const char* id : {"a", "b", "c"}) EXPECT_EQ(Check(id), 0);
  EXPECT_TRUE(log.Has("app id:b, strSql:select id from widgetinfo"));
  EXPECT_TRUE(log.Has("[b] is recently(or most) used app"));
  EXPECT_TRUE(log.Has("[b] check db finish, result [0]"));
}

TEST_F(Membership, IsDeniedOfAnAppThatIsNotAmongTheRows) {
  device.Install(App("a"));
  EXPECT_EQ(Check("b"), -1);
  EXPECT_FALSE(log.Has("[b] is recently(or most) used app"));
  EXPECT_TRUE(log.Has("[b] check db finish, result [-1]"));
}

TEST_F(Membership, IsDeniedWithoutRows) {
  EXPECT_EQ(Check("a"), -1);
  EXPECT_TRUE(log.Has("[a] check db finish, result [-1]"));
}

TEST_F(Membership, ComparesLengthAndBytes) {
  device.Install(App("org.example.clock"));
  for (const std::string& id :
       {std::string("org.example.cloc"), std::string("org.example.clock2"),
        std::string("org.example.Clock"), std::string("org.example.clock\0", 18), std::string()}) {
    EXPECT_EQ(Check(id), -1) << id;
  }
}

TEST_F(Membership, ReadsTheFirstColumnAloneAndNullAsAnEmptyText) {
  device.Install(App("a").Title("title"));
  EXPECT_EQ(Check("title", "select id, title from widgetinfo"), -1);
  EXPECT_EQ(Check("title", "select title, id from widgetinfo"), 0);
  EXPECT_EQ(Check("", "select null"), 0);
}

TEST_F(Membership, StepsToTheLastRowAfterAMatchWithoutComparingOn) {
  device.Install(App("1").Title("same")).Install(App("2").Title("same")).Install(App("3"));
  EXPECT_EQ(Check("same", "select title from widgetinfo order by id"), 0);
  EXPECT_EQ(log.Count("[same] is recently(or most) used app"), 1);
  EXPECT_EQ(log.Count("SQLITE_ROW : has another row ready"), 3);
  EXPECT_EQ(log.Count("SQLITE_DONE : has finished executing"), 1);
}

TEST_F(Membership, BindsTheValuesInTheirOrder) {
  device.Install(App("a").Set("rating", 5)).Install(App("b").Set("rating", 6));
  Binds binds;
  save_db_bind(binds, "a");
  save_db_bind(binds, 5);
  const std::string sql = "select id from widgetinfo where id <> ? and rating > ?";
  EXPECT_EQ(Check("b", sql, binds), 0);
  EXPECT_EQ(Check("a", sql, binds), -1);
}

TEST_F(Membership, IsDeniedWhenTheRowsEndInAFailure) {
  device.Install(App("a"));
  ASSERT_EQ(Check("a"), 0);
  device.Sql("drop table widgetinfo");
  log.Forget();
  EXPECT_EQ(Check("a"), -1);
  EXPECT_TRUE(log.Has("unknown type 1"));
  EXPECT_TRUE(log.Has("[a] check db finish, result [-1]"));
}

}  // namespace
