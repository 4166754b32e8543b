// SPDX-License-Identifier: Apache-2.0
//
// Who takes the lock of the database. This thread holds it: its own lookup is kept where it
// prepares its statement.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <future>
#include <string>

#include "settings/watching.h"
#include "support/bus.h"
#include "support/sqlite_recorder.h"
#include "tav_db_api.h"

namespace {

class SettingsLock : public test::Watching {
 protected:
  SettingsLock() { device.Install(test::App("a").Set("is_ispbound", 1)); }

  // Runs body while this thread holds the lock.
  void WhileHeld(const std::function<void()>& body) {
    bool has_run = false;
    test::BeforePreparing("  select is_ispbound", [&] {
      body();
      has_run = true;
    });
    EXPECT_EQ(tav_is_isp_app("a"), 0);
    EXPECT_TRUE(has_run);
  }
  // Waits until another thread's call has begun, and sees it wait.
  template <typename Answer>
  void ExpectWaits(const std::future<Answer>& answer, const std::string& first_line) {
    EXPECT_TRUE(test::WaitUntil([&] { return log.Has(first_line); }));
    // Time for a call that does not wait to show itself; no time is too long for one that does.
    EXPECT_EQ(answer.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
  }
};

TEST_F(SettingsLock, IsTakenForTheSyncState) {
  device.Configure("SYNC_STATE", "1");
  std::future<int> answer;
  WhileHeld([&] {
    log.Forget();
    answer = std::async(std::launch::async, [] {
      int state = -77;
      const int result = tav_get_tv_sync_state(&state);
      return result == 0 ? state : result;
    });
    ExpectWaits(answer, "Start");
    device.Configure("SYNC_STATE", "2");
  });
  EXPECT_EQ(answer.get(), 2);
}

TEST_F(SettingsLock, IsTakenForAnInnerConfigurationValue) {
  device.Configure("NAME", "before");
  std::future<std::string> answer;
  WhileHeld([&] {
    log.Forget();
    answer = std::async(std::launch::async, [] {
      char* value = nullptr;
      tav_inner_config_db_api("NAME", &value);
      const std::string given = value != nullptr ? value : "(null)";
      std::free(value);
      return given;
    });
    ExpectWaits(answer, "tav_inner_config_db_api key NAME");
    device.Configure("NAME", "after");
  });
  EXPECT_EQ(answer.get(), "after");
}

// Whoever took it would wait for this very thread.
TEST_F(SettingsLock, IsNotTakenForSettings) {
  device.Setting("db/comss/appkey", "key").Setting("memory/tav/boot_status", 1);
  WhileHeld([&] {
    char* text = nullptr;
    EXPECT_EQ(tav_get_appkey(&text), 0);
    std::free(text);
    EXPECT_EQ(tav_get_kestrana_ver(&text), -1);
    EXPECT_EQ(tav_get_installed_appid(&text), -1);
    int number = 0;
    EXPECT_EQ(tav_get_tav_boot_status(&number), 0);
    EXPECT_EQ(tav_get_tv_sync_status(&number), -1);
    EXPECT_EQ(tav_get_factory_reset_type(&number), 0);
    EXPECT_EQ(tav_get_appsync_start_status(&number), -1);
    EXPECT_EQ(tav_get_homedeck_reset_status(&number), -1);
    EXPECT_EQ(tav_get_extra_appid(), -1);
    EXPECT_EQ(tav_set_app_change(), 0);
  });
}

TEST_F(SettingsLock, IsNotTakenForWatches) {
  WhileHeld([&] {
    for (const auto& setting : test::WatchedSettings()) {
      EXPECT_EQ(setting.add(1, &first), 0);
      setting.Set(device, 5);
      Deliver();
      EXPECT_EQ(setting.remove(1), 0);
    }
  });
  EXPECT_EQ(told, (test::Texts{"1 first 5", "1 first 5", "1 first 5", "1 first org.example.app5"}));
}

// A callback is free to ask the database.
TEST_F(SettingsLock, IsFreeWhileACallbackRuns) {
  device.Configure("SYNC_STATE", "7");
  int state = 0;
  first.then = [&] { EXPECT_EQ(tav_get_tv_sync_state(&state), 0); };
  ASSERT_EQ(tav_register_appsync_start_changed_cb(test::TellInt<1>, &first), 0);
  EXPECT_EQ(DeliveredAfter("memory/tav/appsync", 1), test::Texts{"1 first 1"});
  EXPECT_EQ(state, 7);
}

}  // namespace
