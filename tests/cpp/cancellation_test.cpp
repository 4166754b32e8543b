// SPDX-License-Identifier: Apache-2.0
//
// A thread that is cancelled in a call unwinds through the layer, which would end the process if
// its functions were noexcept or swallowed what they do not know.
#include <gtest/gtest.h>
#include <pthread.h>

#include <atomic>
#include <memory>
#include <tav_db_api.hpp>
#include <thread>

#include "support/device.h"

namespace {

constexpr int kRounds = 40;
std::atomic<int> g_calls{0};
tav_int_changed_cb g_registered = nullptr;

}  // namespace

// They stand in the library's place and note the callback, which a test then calls.
int tav_register_factory_reset_type_changed_cb(tav_int_changed_cb callback, void* /*userData*/) {
  g_registered = callback;
  return 0;
}
int tav_unregister_factory_reset_type_changed_cb(tav_int_changed_cb callback) {
  if (callback == g_registered) g_registered = nullptr;
  return 0;
}

namespace {

void* LookUpForEver(void* /*argument*/) {
  for (;;) {
    // Refused, and so outside of SQLite.
    if (!tav::GetAppInfo("clock")) ++g_calls;
  }
}

void ExpectCancelled(pthread_t thread) {
  void* result = nullptr;
  ASSERT_EQ(pthread_join(thread, &result), 0);
  EXPECT_EQ(result, PTHREAD_CANCELED);
}

TEST(CppCancellation, EndsAThreadInALookup) {
  test::Device device;
  device.Install(test::App("clock")).FactoryReset(1);
  for (int round = 0; round < kRounds; ++round) {
    pthread_t thread;
    const int before = g_calls;
    ASSERT_EQ(pthread_create(&thread, nullptr, LookUpForEver, nullptr), 0);
    while (g_calls == before) std::this_thread::yield();
    ASSERT_EQ(pthread_cancel(thread), 0);
    ExpectCancelled(thread);
  }
  device.FactoryReset(0);
  EXPECT_TRUE(tav::GetAppInfo("clock"));
}

void* BeCalled(void* /*argument*/) {
  g_registered(5, nullptr);
  return nullptr;
}

TEST(CppCancellation, EndsAThreadInACallableWhichMayBeEndedAfterwards) {
  const auto data = std::make_shared<int>(0);
  tav::Watch other;
  tav::Watch watch = tav::WatchFactoryResetType([&other, data](int) {
                       other.reset();
                       pthread_cancel(pthread_self());
                       pthread_testcancel();
                     }).value();
  other = tav::WatchFactoryResetType([data](int) {}).value();
  EXPECT_EQ(data.use_count(), 3);
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, nullptr, BeCalled, nullptr), 0);
  ExpectCancelled(thread);
  EXPECT_EQ(data.use_count(), 2);  // the other one went when the walk was over
  watch.reset();
  EXPECT_EQ(data.use_count(), 1);
  EXPECT_EQ(g_registered, nullptr);
}

}  // namespace
