// SPDX-License-Identifier: Apache-2.0
//
// Settings and watches when memory runs out. malloc below stands before the C library's own and
// fails for the sizes that a test sets.
#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "settings/watching.h"

namespace {

std::atomic<std::size_t> g_fails_from{SIZE_MAX};
std::atomic<std::size_t> g_fails_to{SIZE_MAX};

}  // namespace

extern "C" {

void* __libc_malloc(std::size_t size);

void* malloc(std::size_t size) {
  if (size < g_fails_from || size > g_fails_to) return __libc_malloc(size);
  errno = ENOMEM;
  return nullptr;
}

}  // extern "C"

namespace {

using test::Texts;

// The result of a call for which there are no blocks of some sizes.
template <typename Call>
int WithoutMemory(std::size_t from, std::size_t to, const Call& call) {
  g_fails_to = to;
  g_fails_from = from;
  const int result = call();
  g_fails_from = SIZE_MAX;
  return result;
}

class WatchMemory : public test::WatchingEach {};

TEST_P(WatchMemory, ThatIsMissingStoresNothingAndAsksThePlatformForNothing) {
  EXPECT_EQ(WithoutMemory(0, SIZE_MAX, [&] { return setting.add(1, &first); }), -1);
  EXPECT_TRUE(log.HasError(setting.add_function + " failed: std::bad_alloc"));
  EXPECT_EQ(setting.remove(1), -1);
  EXPECT_TRUE(log.HasNotice("callback list is not initialized yet"));
  EXPECT_EQ(WithoutMemory(0, SIZE_MAX, [&] { return setting.add(1, &first); }), -1);
  EXPECT_EQ(test::TakeWatchCalls(), test::WatchCalls());

  EXPECT_EQ(setting.add(1, &second), 0);
  EXPECT_EQ(WithoutMemory(0, SIZE_MAX, [&] { return setting.add(2, &first); }), -1);
  EXPECT_EQ(DeliveredAfter(5), Texts{"1 second " + setting.Value(5)});
}

TEST_P(WatchMemory, IsNotNeededToUnregister) {
  EXPECT_EQ(WithoutMemory(0, SIZE_MAX, [&] { return setting.remove(1); }), -1);
  EXPECT_TRUE(log.HasNotice("callback list is not initialized yet"));
  EXPECT_EQ(setting.add(1, &first), 0);
  EXPECT_EQ(setting.add(2, &second), 0);
  EXPECT_EQ(DeliveredAfter(5),
            (Texts{"1 first " + setting.Value(5), "2 second " + setting.Value(5)}));
  EXPECT_EQ(WithoutMemory(0, SIZE_MAX, [&] { return setting.remove(1); }), 0);
  EXPECT_EQ(WithoutMemory(0, SIZE_MAX, [&] { return setting.remove(1); }), -1);
  EXPECT_EQ(DeliveredAfter(6), Texts{"2 second " + setting.Value(6)});
}

TEST_P(WatchMemory, IsNotNeededForACallbackThatIsThereAlready) {
  EXPECT_EQ(setting.add(1, &first), 0);
  EXPECT_EQ(WithoutMemory(0, SIZE_MAX, [&] { return setting.add(1, &second); }), 0);
  EXPECT_EQ(DeliveredAfter(5), Texts{"1 first " + setting.Value(5)});
}

INSTANTIATE_TEST_SUITE_P(OfEach, WatchMemory, ::testing::ValuesIn(test::WatchedSettings()),
                         test::TitleOf);

class SettingsMemory : public ::testing::Test {
 protected:
  static constexpr std::size_t kSize = 100000;

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(SettingsMemory, ThatIsMissingForAnInnerValueGivesNoneAndTheLockBack) {
  device.Configure("NAME", std::string(kSize, 'x'));
  char mine[] = "mine";
  char* value = nullptr;
  ASSERT_EQ(tav_inner_config_db_api("NAME", &value), 0);
  std::free(value);
  value = mine;
  EXPECT_EQ(
      WithoutMemory(kSize + 1, kSize + 1, [&] { return tav_inner_config_db_api("NAME", &value); }),
      0);
  EXPECT_EQ(value, mine);
  EXPECT_TRUE(log.HasError("tav_inner_config_db_api failed: std::bad_alloc"));
  EXPECT_EQ(tav_inner_config_db_api("NAME", &value), 0);
  EXPECT_EQ(value, std::string(kSize, 'x'));
  std::free(value);
}

TEST_F(SettingsMemory, ThatIsMissingForATextIsAFailure) {
  device.Setting("db/comss/appkey", std::string(kSize, 'x'));
  char mine[] = "mine";
  char* value = mine;
  EXPECT_EQ(WithoutMemory(kSize, SIZE_MAX, [&] { return tav_get_appkey(&value); }), -1);
  EXPECT_EQ(value, mine);
  EXPECT_TRUE(log.HasError("Failed to get app key from [db/comss/appkey]."));
}

}  // namespace
