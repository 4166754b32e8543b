// SPDX-License-Identifier: Apache-2.0
//
// A child that is forked while a call does not come to its end. usleep stands here before the
// real one, so that a read of a busy database pauses as long as the test wants.
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

#include "soak/child.h"
#include "support/device.h"
#include "support/writer.h"
#include "tav_db_api.h"
#include "tav_db_api_inner.h"

namespace {

std::mutex g_mutex;
std::condition_variable g_changed;
bool g_is_pausing = false;
bool g_may_go_on = false;
std::function<void()> g_instead;  // of a pause

}  // namespace

extern "C" int usleep(useconds_t /*microseconds*/) {
  if (g_instead) return g_instead(), 0;
  std::unique_lock<std::mutex> lock(g_mutex);
  g_is_pausing = true;
  g_changed.notify_all();
  g_changed.wait(lock, [] { return g_may_go_on; });
  return 0;
}

namespace {

using std::chrono::seconds;
using std::chrono::steady_clock;
using test::ForkedChild;
using test::Require;

int Lookup() {
  tav_app_info_s info;
  return tav_get_app_info("clock", &info);
}

constexpr char kRefusal[] =
    " failed: this process was forked in the middle of a call, and cannot use the library";

// Every call that needs the database or the service fails, at once, and says why.
void RequireRefusals() {
  const auto start = steady_clock::now();
  Require(Lookup() == -1, "a lookup");
  tav_app_info_s info;
  Require(m_tav_get_app_info("clock", &info) == -1, "a lookup without the lock");
  int count = 0;
  Require(tav_get_app_count({65535, 0, 65535}, &count) == -1, "a count");
  Require(tav_set_ticker_mode(1) == -1, "a request");
  char* value = nullptr;
  Require(tav_inner_config_db_api("SYNC_STATE", &value) == 0 && value == nullptr, "a value");
  Require(tav_get_factory_reset_type(&count) == 0, "a setting");  // needs neither
  Require(steady_clock::now() - start < seconds(5), "not at once");
}

class ForkInACall : public ::testing::Test {
 protected:
  ForkInACall() {
    device.Install(test::App("clock"));
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere", 1);
    writer.emplace(device.DatabaseFile(), seconds(60));
  }

  test::Device device;
  std::optional<test::ExclusiveWriter> writer;
};

TEST_F(ForkInACall, DoesNotWaitForTheCallAndGivesAChildThatIsRefusedForGood) {
  int result = 77;
  std::thread reader([&] { result = Lookup(); });
  {
    std::unique_lock<std::mutex> lock(g_mutex);
    g_changed.wait(lock, [] { return g_is_pausing; });
  }
  const auto start = steady_clock::now();
  ForkedChild child([] {
    RequireRefusals();
    RequireRefusals();
    Require(ForkedChild(RequireRefusals).Complaint().empty(), "in a child's child");
  });
  EXPECT_LT(steady_clock::now() - start, seconds(4));
  EXPECT_EQ(child.Complaint(), "");
  for (const char* call : {"tav_get_app_info", "m_tav_get_app_info", "tav_get_app_count",
                           "tav_set_ticker_mode", "tav_inner_config_db_api"}) {
    EXPECT_EQ(device.GetLog().Count(call + std::string(kRefusal)), 3) << call;
  }

  // The parent's call comes to its end as if nothing had been.
  writer.reset();
  {
    const std::lock_guard<std::mutex> lock(g_mutex);
    g_may_go_on = true;
    g_changed.notify_all();
  }
  reader.join();
  EXPECT_EQ(result, 0);
  EXPECT_EQ(ForkedChild([] { Require(Lookup() == 0, "a lookup"); }).Complaint(), "");
}

// The call goes on in the child as well, and is of no more use there than any other.
TEST_F(ForkInACall, RefusesTheChildOfTheCallsOwnThread) {
  pid_t child = -1;
  g_instead = [&, this] {
    if (child != -1) return;
    child = fork();
    if (child != 0) writer.reset();
  };
  const int result = Lookup();
  if (child == 0) {
    try {
      RequireRefusals();
    } catch (const std::exception&) {
      _exit(1);
    }
    _exit(0);
  }
  EXPECT_EQ(result, 0);
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(ForkedChild([] { Require(Lookup() == 0, "a lookup"); }).Complaint(), "");
}

}  // namespace
