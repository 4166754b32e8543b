// SPDX-License-Identifier: Apache-2.0
//
// Configuration values when the database becomes busy behind the row that holds them. Functions
// of SQLite and usleep stand here before the real ones, so that the rows end where a test wants.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <sqlite3.h>
#include <unistd.h>

#include <string>
#include <string_view>

#include "support/device.h"
#include "tav_db_api.h"

namespace {

bool g_is_busy_behind_a_row = false;
bool g_has_row = false;

template <typename Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool ReadsConfiguration(sqlite3_stmt* statement) {
  const char* sql = sqlite3_sql(statement);  // SQLite's own statements have none
  return sql != nullptr &&
         std::string_view(sql).find("select value from TAVConfigTable") != std::string_view::npos;
}

}  // namespace

extern "C" {

int sqlite3_step(sqlite3_stmt* statement) {
  const bool acts = g_is_busy_behind_a_row && ReadsConfiguration(statement);
  if (acts && g_has_row) return SQLITE_BUSY;
  const int result = Real<decltype(sqlite3_step)>("sqlite3_step")(statement);
  if (acts) g_has_row = result == SQLITE_ROW;
  return result;
}

int sqlite3_finalize(sqlite3_stmt* statement) {
  g_has_row = false;
  return Real<decltype(sqlite3_finalize)>("sqlite3_finalize")(statement);
}

int usleep(useconds_t microseconds) {
  return g_is_busy_behind_a_row ? 0 : Real<decltype(usleep)>("usleep")(microseconds);
}

}  // extern "C"

namespace {

class BusyRows : public ::testing::Test {
 protected:
  ~BusyRows() override { g_is_busy_behind_a_row = false; }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(BusyRows, MakeTheSyncStateBusyAndLeaveTheCallersValue) {
  device.Configure("SYNC_STATE", "7");
  int state = 77;
  g_is_busy_behind_a_row = true;
  EXPECT_EQ(tav_get_tv_sync_state(&state), -2);
  EXPECT_EQ(state, 77);
  EXPECT_TRUE(log.HasError("Get DB fail:sql busy"));
  EXPECT_TRUE(log.HasError("query sql fail or have no required record in database "));
  g_is_busy_behind_a_row = false;
  EXPECT_EQ(tav_get_tv_sync_state(&state), 0);
  EXPECT_EQ(state, 7);
}

// What the process holds of the C library's memory; 0 under a sanitizer, which has an eye of its
// own on leaks.
std::size_t Held() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

TEST_F(BusyRows, GiveNoInnerValueAndLeakNone) {
  constexpr std::size_t kSize = 1 << 20;
  device.Configure("NAME", std::string(kSize, 'x'));
  char* value = nullptr;
  ASSERT_EQ(tav_inner_config_db_api("NAME", &value), 0);
  EXPECT_EQ(value, std::string(kSize, 'x'));
  std::free(value);

  char mine[] = "mine";
  value = mine;
  g_is_busy_behind_a_row = true;
  EXPECT_EQ(tav_inner_config_db_api("NAME", &value), 0);
  log.Forget();
  const std::size_t before = Held();
  for (int turn = 0; turn < 8; ++turn) {
    EXPECT_EQ(tav_inner_config_db_api("NAME", &value), 0);
    EXPECT_EQ(value, mine);
  }
  EXPECT_LT(Held(), before + 4 * kSize);
  EXPECT_EQ(log.Count("Get DB fail:sql busy"), 8);
  EXPECT_EQ(log.Count("tav_inner_config_db_api value (null)"), 8);
}

}  // namespace
