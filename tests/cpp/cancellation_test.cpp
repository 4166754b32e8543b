// SPDX-License-Identifier: Apache-2.0
//
// A thread that is cancelled in a call of the layer: the call returns, and the thread ends at its
// own next cancellation point. So the calls are noexcept.
#include <gtest/gtest.h>
#include <pthread.h>

#include <string>
#include <tav_db_api.hpp>

#include "support/device.h"

namespace {

static_assert(noexcept(tav::GetAppInfo("")));
static_assert(noexcept(tav::GetAppList()));
static_assert(noexcept(tav::GetKeyList(std::string())));
static_assert(noexcept(tav::SetAppLock("", true)));
static_assert(noexcept(tav::GetAppListJson(nullptr)));
static_assert(noexcept(tav::InnerConfig("")));
static_assert(!noexcept(tav::GetAppControlData(nullptr, std::string())));  // copies the key

void* LookUpThenEnd(void* title) {
  pthread_cancel(pthread_self());
  const tav::Result<tav::AppInfo> app = tav::GetAppInfo("clock");
  if (app) *static_cast<std::string*>(title) = app->app_title;
  pthread_testcancel();
  return nullptr;
}

TEST(CppCancellation, EndsTheThreadAfterTheCall) {
  test::Device device;
  device.Install(test::App("clock").Title("Clock"));
  std::string title;
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, nullptr, LookUpThenEnd, &title), 0);
  void* result = nullptr;
  ASSERT_EQ(pthread_join(thread, &result), 0);
  EXPECT_EQ(result, PTHREAD_CANCELED);
  EXPECT_EQ(title, "Clock");
  EXPECT_TRUE(tav::GetAppInfo("clock"));
}

}  // namespace
