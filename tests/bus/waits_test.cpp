// SPDX-License-Identifier: Apache-2.0
//
// How long the library would wait at most, as it tells GLib and the system. Their functions stand
// here before the real ones, so that no test needs to wait as long.
#include <pthread.h>

#include <cerrno>
#include <ctime>
#include <optional>
#include <utility>

#include "in_place.h"
#include "on_the_bus.h"
#include "support/few_descriptors.h"
#include "tav_common/tav_proxy.h"
#include "tav_db_api/tav_db_write_api.h"

namespace {

using Calls = std::vector<std::pair<std::string, int>>;  // method and limit in milliseconds

// What they were asked for by this thread.
thread_local Calls g_calls;
thread_local std::vector<guint> g_sources;  // the times of time-out sources
std::optional<double> g_condition;          // in seconds from then

std::optional<test::FewDescriptors> g_few;  // from the end of the next call on
bool g_is_few_next = false;

const char* g_failure = nullptr;  // the text of the error that calls end with

}  // namespace

extern "C" {

GVariant* g_dbus_connection_call_sync(GDBusConnection* connection, const gchar* name,
                                      const gchar* path, const gchar* interface,
                                      const gchar* method, GVariant* parameters,
                                      const GVariantType* reply_type, GDBusCallFlags flags,
                                      gint limit, GCancellable* cancellable, GError** error) {
  g_calls.emplace_back(method, limit);
  if (g_failure != nullptr) {
    g_set_error_literal(error, G_IO_ERROR, G_IO_ERROR_FAILED, g_failure);
    return nullptr;
  }
  GVariant* reply = Real<decltype(g_dbus_connection_call_sync)>("g_dbus_connection_call_sync")(
      connection, name, path, interface, method, parameters, reply_type, flags, limit, cancellable,
      error);
  if (std::exchange(g_is_few_next, false)) g_few.emplace(0);
  return reply;
}

GSource* g_timeout_source_new(guint interval) {
  g_sources.push_back(interval);
  return Real<decltype(g_timeout_source_new)>("g_timeout_source_new")(interval);
}

// Its time is over at once. The library's condition goes by the monotonic clock.
int pthread_cond_timedwait(pthread_cond_t* /*condition*/, pthread_mutex_t* /*mutex*/,
                           const timespec* deadline) {
  timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  g_condition = static_cast<double>(deadline->tv_sec - now.tv_sec) +
                static_cast<double>(deadline->tv_nsec - now.tv_nsec) / 1e9;
  return ETIMEDOUT;
}

}  // extern "C"

namespace {

class Waits : public OnTheBus {
 protected:
  template <typename Request>
  static Calls CallsOf(const Request& request) {
    g_calls.clear();
    EXPECT_EQ(request(), 0);
    return std::exchange(g_calls, {});
  }
  static Calls WithHeartbeat(const char* method) { return {{"heartbeat", 10000}, {method, 10000}}; }

  test::Service service{bus};
};

TEST_F(Waits, ForTheServiceLastTenSecondsInEveryRequest) {
  const auto lock = [] { return TavSetAppLock("clock", 1); };
  EXPECT_EQ(CallsOf(lock), (Calls{{"set_app_lock", 10000}}));  // the first has no heartbeat
  EXPECT_EQ(CallsOf(lock), WithHeartbeat("set_app_lock"));
  EXPECT_EQ(CallsOf([] { return TavSetAppRating("clock", 1); }), WithHeartbeat("set_app_rating"));
  EXPECT_EQ(CallsOf([] { return TavUpdateAppUseCount("clock"); }),
            WithHeartbeat("tav_update_app_count"));
  EXPECT_EQ(CallsOf([] { return TavSetAppUpdted("clock"); }),
            WithHeartbeat("tav_update_app_by_key"));
  EXPECT_EQ(CallsOf([] { return SetTickerModeToLaunch(1); }),
            WithHeartbeat("set_ticker_mode_to_launch"));
  int mode = 0;
  EXPECT_EQ(CallsOf([&] { return GetTickerModeFromLaunch(&mode); }),
            WithHeartbeat("get_ticker_mode_from_launch"));
  device.Write("run/tav_ready", "");
  std::vector<std::string> ids;
  g_calls.clear();
  GetUninstallingBuiltInAppID(ids);
  EXPECT_EQ(g_calls, WithHeartbeat("get_api_uninstalling_biu_list"));
}

TEST_F(Waits, ForTheHeartbeatMayTakeTheLastDescriptors) {
  ASSERT_EQ(tav_set_ticker_mode(1), 0);
  g_is_few_next = true;
  g_calls.clear();
  EXPECT_EQ(tav_set_ticker_mode(2), -1);
  EXPECT_EQ(g_calls, (Calls{{"heartbeat", 10000}}));
  g_few.reset();
  EXPECT_TRUE(log.HasError("too few file descriptors are free: the bus needs 2"));
  EXPECT_EQ(tav_set_ticker_mode(3), 0);
}

TEST_F(Waits, ForTheBusLastTenSecondsAndAfterThatAsLongAsItsGreetingMay) {
  CTAVGdbus proxy("db", "tavcore", nullptr, nullptr);
  g_sources.clear();
  EXPECT_TRUE(proxy.GetProxy(kNode, {}));
  ASSERT_GE(g_sources.size(), 2U);
  g_sources.resize(2);  // GLib's own come later
  EXPECT_EQ(g_sources, (std::vector<guint>{10000, 10000 + 25000}));
}

TEST_F(Waits, ForTheMonitorLastTenSeconds) {
  CTAVGdbus proxy("db", "tavcore", nullptr, nullptr);
  EXPECT_TRUE(proxy.GetProxy("<node", {}));  // a document that the monitor cannot read
  ASSERT_TRUE(g_condition.has_value());
  EXPECT_LE(*g_condition, 10.0);
  EXPECT_GT(*g_condition, 9.9);
}

TEST_F(Waits, AreOverForAnErrorThatSaysSoInItsTextAlone) {
  CTAVGdbus proxy("db", "tavcore", nullptr, nullptr);
  ASSERT_TRUE(proxy.GetProxy(kNode, {}));
  GVariant* reply = nullptr;
  int timed_out = 0;
  g_failure = "Timeout was reach";
  EXPECT_FALSE(proxy.MethodCall("heartbeat", nullptr, &reply, 10000, &timed_out));
  EXPECT_EQ(timed_out, 0);
  g_failure = "Oh: Timeout was reached.";
  EXPECT_FALSE(proxy.MethodCall("heartbeat", nullptr, &reply, 10000, &timed_out));
  EXPECT_EQ(timed_out, 1);
  EXPECT_EQ(reply, nullptr);
  EXPECT_EQ(log.Count("gdbus timeout"), 1);
}

TEST_F(Waits, AreNotBegunForATextThatTheBusCannotCarry) {
  g_calls.clear();  // the fixture's
  EXPECT_EQ(TavSetAppLock("\xFF", 1), -1);
  EXPECT_EQ(TavSetAppRating("\xFF", 1), -1);
  EXPECT_EQ(TavUpdateAppUseCount("\xFF"), -1);
  EXPECT_EQ(TavSetAppUpdted("\xFF"), -1);
  EXPECT_EQ(log.Count("the text is not UTF-8, so it cannot be sent"), 4);
  EXPECT_EQ(g_calls, Calls{});
}

}  // namespace
