// SPDX-License-Identifier: Apache-2.0
//
// What the lists make of a number of apps that SQLite never counts. Its function for numbers stands
// here before the real one.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstring>
#include <optional>

#include "support/device.h"
#include "tav_db_api.h"
#include "tav_db_api_inner.h"

namespace {

std::optional<int> g_count;  // of the apps

}  // namespace

extern "C" int sqlite3_column_int(sqlite3_stmt* statement, int column) {
  const char* sql = sqlite3_sql(statement);
  if (g_count && sql != nullptr && std::strncmp(sql, "select count(id)", 16) == 0) return *g_count;
  const auto real =
      reinterpret_cast<decltype(&sqlite3_column_int)>(dlsym(RTLD_NEXT, "sqlite3_column_int"));
  return real(statement, column);
}

namespace {

class WrongCounts : public ::testing::Test {
 protected:
  WrongCounts() { device.Install(test::App("clock")); }
  ~WrongCounts() override { g_count.reset(); }

  void ExpectFailure(int result, const std::string& said) {
    EXPECT_EQ(result, -1);
    EXPECT_EQ(list, nullptr);
    EXPECT_EQ(count, 0);
    EXPECT_TRUE(log.Has(said)) << said;
  }

  test::Device device;
  test::Log& log = device.GetLog();
  tav_app_info_s* list = nullptr;
  int count = 7;
};

TEST_F(WrongCounts, BelowZeroFailTheListOfAllApps) {
  g_count = -1;
  ExpectFailure(tav_get_all_app_list(&list, &count), "count is <=0, it's wrong");
}

TEST_F(WrongCounts, BelowZeroFailAListFromAnIndexThatIsLowerStill) {
  g_count = -1;
  tav_app_filter_s filter;
  tav_init_app_filter(&filter);
  ExpectFailure(tav_get_app_list(filter, TAV_APP_VIEWMODE_CATALOGUE, -2, 0, &list, &count),
                "real_count <=0, it's wrong ");
}

}  // namespace
