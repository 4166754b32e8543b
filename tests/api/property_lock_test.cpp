// SPDX-License-Identifier: Apache-2.0
//
// Which calls wait for the lock. Another thread holds it: its call is kept in the reading of a
// setting.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <vconf.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <future>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "support/device.h"
#include "tav_db_api.h"

namespace {

using std::chrono::milliseconds;
using test::App;

// Keeps one reader of the factory-reset setting waiting, the first one, until it is answered.
class ResetSettingThatWaits {
 public:
  ResetSettingThatWaits() { g_setting = this; }
  ~ResetSettingThatWaits() { Answer(); }
  ResetSettingThatWaits(const ResetSettingThatWaits&) = delete;
  ResetSettingThatWaits& operator=(const ResetSettingThatWaits&) = delete;

  // The setting that keeps this reader of a key waiting, if one does.
  static ResetSettingThatWaits* Of(const char* key) {
    return std::strcmp(key, "db/tav/factory_reset") == 0 ? g_setting.exchange(nullptr) : nullptr;
  }
  void Wait() {
    m_is_read.set_value();
    m_answered.wait();
  }

  // Returns once the reader is there.
  void AwaitReader() {
    if (m_is_read.get_future().wait_for(std::chrono::seconds(20)) != std::future_status::ready) {
      throw std::runtime_error("nobody reads the setting");
    }
  }
  void Answer() {
    if (!m_is_answered.exchange(true)) m_answer.set_value();
  }

 private:
  static std::atomic<ResetSettingThatWaits*> g_setting;

  std::promise<void> m_is_read;
  std::promise<void> m_answer;
  std::future<void> m_answered{m_answer.get_future()};
  std::atomic<bool> m_is_answered{false};
};
std::atomic<ResetSettingThatWaits*> ResetSettingThatWaits::g_setting{nullptr};

}  // namespace

// In the platform's place, whose own does the work.
int vconf_get_int(const char* key, int* value) {
  if (ResetSettingThatWaits* setting = ResetSettingThatWaits::Of(key)) setting->Wait();
  static const auto real =
      reinterpret_cast<decltype(&vconf_get_int)>(dlsym(RTLD_NEXT, "vconf_get_int"));
  return real(key, value);
}

namespace {

class PropertyLock : public ::testing::Test {
 protected:
  PropertyLock() {
    device.Install(App("a").Set("is_ispbound", 1).Set("rating", 5).UseCount(1).RunTitle("A"));
    device.Configure("EMANUAL_ID", "org.example.database");
    holder = std::async(std::launch::async, [] { return tav_is_isp_app("a"); });
  }
  static std::string Manual() {
    char* id = nullptr;
    const int result = tav_get_emanual_id(&id);
    std::string answer = result == 0 ? id : std::to_string(result);
    std::free(id);
    return answer;
  }

  test::Device device;
  std::future<int> holder;
  ResetSettingThatWaits setting;
};

TEST_F(PropertyLock, IsNotTakenByAUsageTestWithoutAnId) {
  setting.AwaitReader();
  EXPECT_EQ(tav_check_is_recently_used_app(""), -1);
  EXPECT_EQ(tav_check_is_recently_used_app(nullptr), -1);
  EXPECT_EQ(tav_check_is_most_used_app(""), -1);
  EXPECT_EQ(tav_check_is_most_used_app(nullptr), -1);
  EXPECT_EQ(holder.wait_for(milliseconds(0)), std::future_status::timeout);
  setting.Answer();
  EXPECT_EQ(holder.get(), 0);
}

TEST_F(PropertyLock, IsNotTakenForTheManualsIdOfThePlatform) {
  device.Write("system-info.ini",
               "[custom]\ncom.kordyne/featureconf/emanual.app_id=org.example.platform\n");
  setting.AwaitReader();
  EXPECT_EQ(Manual(), "org.example.platform");
  EXPECT_EQ(tav_get_emanual_id(nullptr), -1);
  EXPECT_EQ(holder.wait_for(milliseconds(0)), std::future_status::timeout);
  setting.Answer();
  EXPECT_EQ(holder.get(), 0);
}

TEST_F(PropertyLock, IsHeldFromBeforeTheChecksByEveryOtherCall) {
  setting.AwaitReader();
  const std::function<std::string()> calls[] = {
      [] { return std::to_string(tav_is_isp_app(nullptr)); },
      [] { return std::to_string(tav_is_hybrid_app("")); },
      [] { return std::to_string(tav_check_is_usb_app("a")); },
      [] { return std::to_string(tav_get_app_rating("a", nullptr)); },
      [] { return std::to_string(tav_get_pkgname_by_nativeid("a", nullptr)); },
      [] { return std::to_string(tav_find_app("a", nullptr, nullptr)); },
      [] { return std::to_string(tav_get_appid_by_runtitle("A", nullptr)); },
      [] { return std::to_string(tav_check_app_installed_by_runtitle("A", nullptr)); },
      [] { return std::to_string(tav_check_is_recently_used_app("a")); },
      [] { return std::to_string(tav_check_is_most_used_app("a")); },
      Manual,
  };
  std::vector<std::future<std::string>> answers;
  for (const auto& call : calls) answers.push_back(std::async(std::launch::async, call));
  // Time for a call that does not wait to show itself; no time is too long for those that do.
  EXPECT_EQ(answers.back().wait_for(milliseconds(100)), std::future_status::timeout);
  for (std::size_t i = 0; i < answers.size(); ++i) {
    EXPECT_EQ(answers[i].wait_for(milliseconds(0)), std::future_status::timeout) << i;
  }

  setting.Answer();
  EXPECT_EQ(holder.get(), 0);
  std::vector<std::string> given;
  for (auto& answer : answers) given.push_back(answer.get());
  EXPECT_EQ(given, (std::vector<std::string>{"-1", "-1", "0", "-1", "-1", "-1", "-1", "-1", "0",
                                             "0", "org.example.database"}));
}

}  // namespace
