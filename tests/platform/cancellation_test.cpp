// SPDX-License-Identifier: Apache-2.0
// Threads that are cancelled in a call of the platform: the call does its work and returns.
#include <app_control.h>
#include <pkgmgr-info.h>
#include <pthread.h>
#include <system_info.h>
#include <tzplatform_config.h>

#include <atomic>
#include <functional>

#include "watching.h"

namespace {

class CancelledCall : public Device {
 protected:
  struct Cancelled {
    std::function<void()> body;
    std::atomic<bool> has_returned{false};
  };

  // Whether the body returns in a thread that was cancelled before, and the thread ends at its own
  // next cancellation point, with the state of its cancellation as it was.
  static bool Returns(const std::function<void()>& body) {
    Cancelled cancelled;
    cancelled.body = body;
    pthread_t thread;
    const auto run = [](void* argument) -> void* {
      auto* all = static_cast<Cancelled*>(argument);
      pthread_cancel(pthread_self());
      all->body();
      all->has_returned = true;
      pthread_testcancel();
      return nullptr;
    };
    if (pthread_create(&thread, nullptr, run, &cancelled) != 0) return false;
    void* result = nullptr;
    pthread_join(thread, &result);
    return cancelled.has_returned && result == PTHREAD_CANCELED;
  }
};

TEST_F(CancelledCall, OfASettingReturns) {
  int value = 0;
  std::string text;
  EXPECT_TRUE(Returns([] { EXPECT_EQ(vconf_set_int("number", 5), VCONF_OK); }));
  EXPECT_TRUE(Returns([&] { EXPECT_EQ(vconf_get_int("number", &value), VCONF_OK); }));
  EXPECT_TRUE(Returns([] { EXPECT_EQ(vconf_set_str("text", "word"), VCONF_OK); }));
  EXPECT_TRUE(Returns([&] { text = Text(vconf_get_str("text")).get(); }));
  EXPECT_TRUE(Returns([] { EXPECT_EQ(vconf_unset("number"), VCONF_OK); }));
  EXPECT_EQ(value, 5);
  EXPECT_EQ(text, "word");
  EXPECT_FALSE(std::filesystem::exists(Root() / "vconf/number"));
}

TEST_F(CancelledCall, OfAWatchReturns) {
  Calls calls;
  EXPECT_TRUE(
      Returns([&] { EXPECT_EQ(vconf_notify_key_changed(kWatchedKey, Record, &calls), VCONF_OK); }));
  vconf_set_int(kWatchedKey, 1);
  EXPECT_TRUE(RunUntilCalls(calls, 1));
  EXPECT_TRUE(Returns([] { EXPECT_EQ(vconf_ignore_key_changed(kWatchedKey, Record), VCONF_OK); }));
}

TEST_F(CancelledCall, OfTheDevicesFilesAndOfARequestReturns) {
  WriteFile("system-info.ini", "[custom]\nkey=1\n");
  WriteFile("packages.ini", "[clock]\nversion=2\n");
  int value = 0;
  EXPECT_TRUE(Returns([&] { EXPECT_EQ(system_info_get_custom_int("key", &value), 0); }));
  EXPECT_EQ(value, 1);
  EXPECT_TRUE(Returns([] {
    pkgmgrinfo_pkginfo_h package = nullptr;
    char* version = nullptr;
    EXPECT_EQ(pkgmgrinfo_pkginfo_get_pkginfo("clock", &package), PMINFO_R_OK);
    EXPECT_EQ(pkgmgrinfo_pkginfo_get_version(package, &version), PMINFO_R_OK);
    EXPECT_STREQ(version, "2");
    EXPECT_EQ(pkgmgrinfo_pkginfo_destroy_pkginfo(package), PMINFO_R_OK);
  }));
  EXPECT_TRUE(Returns([] {
    app_control_h request = nullptr;
    EXPECT_EQ(app_control_create(&request), APP_CONTROL_ERROR_NONE);
    EXPECT_EQ(app_control_add_extra_data(request, "key", "value"), APP_CONTROL_ERROR_NONE);
    EXPECT_EQ(app_control_destroy(request), APP_CONTROL_ERROR_NONE);
  }));
  EXPECT_TRUE(Returns([] { EXPECT_NE(tzplatform_getenv(TZPLATFORM_DATA_DIRECTORY), nullptr); }));
}

}  // namespace
