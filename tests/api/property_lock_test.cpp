// SPDX-License-Identifier: Apache-2.0
//
// Which calls wait for the lock. Another thread holds it: its call is kept in the reading of a
// setting, whose file is a pipe.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
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
using std::chrono::steady_clock;
using test::App;

// Keeps one reader of the factory-reset setting waiting, the first one, until it is answered.
class ResetSettingThatWaits {
 public:
  explicit ResetSettingThatWaits(const std::filesystem::path& root)
      : m_file(root / "vconf/db/tav/factory_reset"), m_plain(m_file.string() + ".plain") {
    std::filesystem::rename(m_file, m_plain);
    if (mkfifo(m_file.c_str(), 0600) != 0) throw std::runtime_error("mkfifo");
  }
  ~ResetSettingThatWaits() { Answer(); }
  ResetSettingThatWaits(const ResetSettingThatWaits&) = delete;
  ResetSettingThatWaits& operator=(const ResetSettingThatWaits&) = delete;

  // Returns once the reader is there; later ones find the plain file again.
  void AwaitReader() {
    const auto deadline = steady_clock::now() + std::chrono::seconds(20);
    // The pipe opens for writing as soon as someone has it open for reading.
    while ((m_pipe = open(m_file.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC)) < 0) {
      if (steady_clock::now() > deadline) throw std::runtime_error("nobody reads the setting");
      std::this_thread::yield();
    }
    std::filesystem::rename(m_plain, m_file);
  }
  void Answer() {
    if (m_pipe < 0) return;
    const std::string content = "int\n0\n";
    if (write(m_pipe, content.data(), content.size()) < 0) std::abort();
    close(m_pipe);
    m_pipe = -1;
  }

 private:
  std::filesystem::path m_file;
  std::filesystem::path m_plain;
  int m_pipe = -1;
};

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
  ResetSettingThatWaits setting{device.Root()};
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
