// SPDX-License-Identifier: Apache-2.0
//
// Settings that another process sets while this one runs a main loop.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "device/process.h"
#include "settings/watching.h"

namespace {

constexpr int kLast = 1000;
constexpr char kPrefix[] = "org.example.app";

class OtherProcess : public test::Watching {
 protected:
  OtherProcess() {
    m_deadline = g_timeout_add_seconds(
        20,
        [](gpointer test) -> gboolean {
          auto* self = static_cast<OtherProcess*>(test);
          self->m_deadline = 0;
          g_main_loop_quit(self->m_loop.get());
          return G_SOURCE_REMOVE;
        },
        this);
  }
  ~OtherProcess() override {
    if (m_deadline != 0) g_source_remove(m_deadline);
  }

  // Starts to set the setting to 1, 2, … 1000.
  void StartSetting(const test::WatchedSetting& setting) {
    tav_device::Launch launch;
    launch.arguments = {SET_KEY, setting.name, std::to_string(kLast)};
    if (setting.is_text) launch.arguments.emplace_back(kPrefix);
    launch.environment = {{"DLOG_FILE", std::nullopt}};
    m_children.push_back(std::make_unique<tav_device::Child>(launch));
  }
  // Notes the values that the listener was told, until all listeners saw the last one.
  void Follow(test::Listener& listener, std::vector<int>& values) {
    ++m_open;
    listener.then = [&] {
      values.push_back(
          std::stoi(told.back().substr(told.back().find_last_not_of("0123456789") + 1)));
      if (values.back() == kLast && --m_open == 0) g_main_loop_quit(m_loop.get());
    };
  }
  void RunAndExpectSuccess() {
    g_main_loop_run(m_loop.get());
    EXPECT_NE(m_deadline, 0U) << "the deadline has passed";
    for (const auto& child : m_children) EXPECT_EQ(child->Wait(), 0);
    Deliver();  // what would be told too much
  }
  static void ExpectRise(const std::vector<int>& values) {
    ASSERT_FALSE(values.empty());
    EXPECT_EQ(values.back(), kLast);
    EXPECT_LE(values.size(), static_cast<std::size_t>(kLast));
    EXPECT_GE(values.front(), 1);
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
  }

  const std::vector<test::WatchedSetting> settings = test::WatchedSettings();
  const test::WatchedSetting& number = settings[1];
  const test::WatchedSetting& text = settings[3];

 private:
  struct Unref {
    void operator()(GMainLoop* loop) const { g_main_loop_unref(loop); }
  };
  std::unique_ptr<GMainLoop, Unref> m_loop{g_main_loop_new(nullptr, FALSE)};
  guint m_deadline = 0;
  int m_open = 0;
  std::vector<std::unique_ptr<tav_device::Child>> m_children;
};

TEST_F(OtherProcess, IsFollowedToTheLastOfAThousandNumbers) {
  std::vector<int> values;
  Follow(first, values);
  ASSERT_EQ(number.add(1, &first), 0);
  StartSetting(number);
  RunAndExpectSuccess();
  ExpectRise(values);
}

TEST_F(OtherProcess, IsFollowedToTheLastOfAThousandTexts) {
  std::vector<int> values;
  Follow(first, values);
  ASSERT_EQ(text.add(1, &first), 0);
  StartSetting(text);
  RunAndExpectSuccess();
  ExpectRise(values);
  EXPECT_EQ(told.back(), std::string("1 first ") + kPrefix + std::to_string(kLast));
}

TEST_F(OtherProcess, IsFollowedByEveryCallbackAlike) {
  std::vector<int> values;
  std::vector<int> others;
  Follow(first, values);
  Follow(second, others);
  ASSERT_EQ(number.add(1, &first), 0);
  ASSERT_EQ(number.add(2, &second), 0);
  StartSetting(number);
  RunAndExpectSuccess();
  ExpectRise(values);
  EXPECT_EQ(others, values);
}

TEST_F(OtherProcess, IsFollowedInTwoSettingsAtOnce) {
  std::vector<int> values;
  std::vector<int> others;
  Follow(first, values);
  Follow(second, others);
  ASSERT_EQ(number.add(1, &first), 0);
  ASSERT_EQ(text.add(1, &second), 0);
  StartSetting(number);
  StartSetting(text);
  RunAndExpectSuccess();
  ExpectRise(values);
  ExpectRise(others);
}

}  // namespace
