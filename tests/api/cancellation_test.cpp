// SPDX-License-Identifier: Apache-2.0
//
// Threads that are cancelled while they use the settings: each unwinds to its end, and leaves
// nothing held behind.
#include <gtest/gtest.h>
#include <pthread.h>
#include <system_info.h>
#include <vconf.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <thread>

#include "support/device.h"

namespace {

constexpr char kKey[] = "db/tav/counter";
constexpr int kCancellations = 40;

struct Loop {
  std::function<void()> body;
  std::atomic<int> rounds{0};
};

void* RunForEver(void* argument) {
  auto* loop = static_cast<Loop*>(argument);
  for (;;) {
    loop->body();
    ++loop->rounds;
    pthread_testcancel();  // none of the calls is a cancellation point
  }
}

class CancelledThread : public ::testing::Test {
 protected:
  // Cancels a thread that repeats body, at another moment each time, and says whether it ended as
  // a cancelled thread does.
  static void EndsWhileItRepeats(const std::function<void()>& body) {
    for (int round = 0; round < kCancellations; ++round) {
      Loop loop;
      loop.body = body;
      pthread_t thread;
      ASSERT_EQ(pthread_create(&thread, nullptr, RunForEver, &loop), 0);
      while (loop.rounds < 1 + round % 3) std::this_thread::yield();
      ASSERT_EQ(pthread_cancel(thread), 0);
      void* result = nullptr;
      ASSERT_EQ(pthread_join(thread, &result), 0);
      ASSERT_EQ(result, PTHREAD_CANCELED);
    }
  }
  static std::ptrdiff_t OpenFiles() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return std::distance(begin(files), end(files));
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(CancelledThread, EndsInTheSettingsAndHoldsNothing) {
  ASSERT_EQ(vconf_set_int(kKey, 0), 0);
  const std::ptrdiff_t files = OpenFiles();
  EndsWhileItRepeats([] {
    int value = 0;
    vconf_get_int(kKey, &value);
    vconf_set_int(kKey, value + 1);
  });
  EXPECT_EQ(OpenFiles(), files);
  int value = 0;
  EXPECT_EQ(vconf_get_int(kKey, &value), 0);
  EXPECT_GE(value, kCancellations);
  EXPECT_EQ(vconf_set_int(kKey, -1), 0);
  EXPECT_EQ(vconf_get_int(kKey, &value), 0);
  EXPECT_EQ(value, -1);
  for (const auto& entry : std::filesystem::directory_iterator(device.Root() / "vconf/db/tav")) {
    const std::string name = entry.path().filename();
    EXPECT_TRUE(name == "counter" || name == "factory_reset") << name;  // no half-written file
  }
}

TEST_F(CancelledThread, EndsInTextSettingsAndWatchesAndHoldsNothing) {
  ASSERT_EQ(vconf_set_str(kKey, "text"), 0);
  const vconf_callback_fn callback = [](keynode_t*, void*) {};
  EndsWhileItRepeats([&] {
    // Freed here: the thread is not cancelled in a call.
    std::free(vconf_get_str(kKey));
    vconf_set_str(kKey, "text");
    vconf_notify_key_changed(kKey, callback, nullptr);
    vconf_ignore_key_changed(kKey, callback);
  });
  vconf_ignore_key_changed(kKey, callback);
  EXPECT_EQ(vconf_notify_key_changed(kKey, callback, nullptr), 0);
  EXPECT_EQ(vconf_ignore_key_changed(kKey, callback), 0);
  EXPECT_EQ(vconf_set_str(kKey, "more"), 0);
}

TEST_F(CancelledThread, EndsInTheValuesOfTheDevice) {
  device.Write("system-info.ini", "[custom]\nkey=1\n");
  const std::ptrdiff_t files = OpenFiles();
  EndsWhileItRepeats([] {
    int value = 0;
    system_info_get_custom_int("key", &value);
  });
  EXPECT_EQ(OpenFiles(), files);
}

}  // namespace
