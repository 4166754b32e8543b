// SPDX-License-Identifier: Apache-2.0
//
// The proxy itself: its handshake with the monitor, its calls, and its end.
#include "tav_common/tav_proxy.h"

#include <sys/wait.h>

#include <atomic>
#include <thread>

#include "on_the_bus.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using test::Service;

constexpr char kDocument[] =
    "<node>  <interface name='org.tizen.tv.tavcore.tavdbclient.interface.%s'>  </interface></node>";
constexpr GDBusInterfaceVTable kNoHandlers = {};

class Proxy : public OnTheBus {
 protected:
  // The result of a call; its reply is let go.
  bool Call(const std::string& method, GVariant* parameters = nullptr, int* timed_out = nullptr,
            int timeout = 10000) {
    GVariant* reply = nullptr;
    const bool result = proxy.MethodCall(method, parameters, &reply, timeout, timed_out);
    EXPECT_EQ(result, reply != nullptr);
    if (reply != nullptr) g_variant_unref(reply);
    return result;
  }

  CTAVGdbus proxy{"db", "tavcore", nullptr, nullptr};
};

TEST_F(Proxy, TellsOfItsConstruction) {
  EXPECT_TRUE(log.Has("CTAVGdbus [db] constructor."));
  EXPECT_TRUE(log.Has("CTAVGdbus [db] constructor end"));
}

TEST_F(Proxy, CallsNothingWithoutAConnectionAndKeepsNoParameters) {
  bool is_freed = false;
  const auto note = [](gpointer freed) { *static_cast<bool*>(freed) = true; };
  GVariant* floating =
      g_variant_new_from_data(G_VARIANT_TYPE("(s)"), "x", 2, TRUE, note, &is_freed);
  EXPECT_FALSE(Call("heartbeat", floating));
  EXPECT_TRUE(is_freed);
  EXPECT_TRUE(log.HasError("connection is NULL"));
}

TEST_F(Proxy, WaitsTenSecondsForAMonitorThatCannotReadItsDocumentAndGoesOn) {
  const Service service(bus);
  const Stopwatch watch;
  EXPECT_TRUE(proxy.GetProxy("<node", kNoHandlers));
  EXPECT_GE(watch.Elapsed(), milliseconds(9900));
  EXPECT_LT(watch.Elapsed(), AtMost(seconds(19)));
  bool is_told = false;
  for (const std::string& line : log.Messages('E')) is_told |= line.find("error return ") == 0;
  EXPECT_TRUE(is_told);
  EXPECT_TRUE(Call("heartbeat"));
  EXPECT_EQ(bus.Owner(ClientName()), "");
}

TEST_F(Proxy, WaitsTenSecondsForAnObjectThatCannotBeRegisteredAndGoesOn) {
  const Service service(bus);
  const Stopwatch watch;
  EXPECT_TRUE(proxy.GetProxy("<node></node>", kNoHandlers));
  EXPECT_GE(watch.Elapsed(), milliseconds(9900));
  EXPECT_LT(watch.Elapsed(), AtMost(seconds(19)));
  EXPECT_TRUE(log.HasError("register id error"));
  EXPECT_TRUE(Call("heartbeat"));
}

TEST_F(Proxy, TellsATimeoutFromOtherFailures) {
  Service service(bus);
  ASSERT_TRUE(proxy.GetProxy(kDocument, kNoHandlers));
  int timed_out = 0;
  service.Fault("heartbeat", "error");
  EXPECT_FALSE(Call("heartbeat", nullptr, &timed_out));
  EXPECT_EQ(timed_out, 0);
  EXPECT_FALSE(log.Has("gdbus timeout"));
  service.Fault("heartbeat", "no-reply");
  EXPECT_FALSE(Call("heartbeat", nullptr, &timed_out, 100));
  EXPECT_EQ(timed_out, 1);
  EXPECT_TRUE(log.HasError("gdbus timeout"));
  EXPECT_FALSE(Call("heartbeat", nullptr, nullptr, 100));
}

TEST_F(Proxy, SendsThreeMethodsWithoutStartingTheService) {
  Service service(bus);
  ASSERT_TRUE(proxy.GetProxy(kDocument, kNoHandlers));
  for (const std::string method : {"heartbeat", "notify_app_launch_status", "notify_special_app",
                                   "set_ticker_mode_to_launch"}) {
    service.Forget();
    Call(method, method == "set_ticker_mode_to_launch" ? g_variant_new("(i)", 1) : nullptr);
    const auto calls = service.Calls();
    ASSERT_EQ(calls.size(), 1U) << method;
    EXPECT_EQ(calls[0].method, method);
    EXPECT_EQ(calls[0].IsNoAutoStart(), method != "set_ticker_mode_to_launch") << method;
    EXPECT_EQ(log.Has("set G_DBUS_CALL_FLAGS_NO_AUTO_START to[" + method + "]"),
              method != "set_ticker_mode_to_launch");
  }
}

TEST_F(Proxy, GivesItsNameAndItsConnectionBack) {
  const Service service(bus);
  ASSERT_TRUE(proxy.GetProxy(kDocument, kNoHandlers));
  bus.WaitForOwner(ClientName());
  proxy.GiveProxy();
  EXPECT_TRUE(log.Has("release the tav api gdbus connection."));
  bus.WaitUntilUnowned(ClientName());
  EXPECT_FALSE(Call("heartbeat"));
  EXPECT_TRUE(proxy.GetProxy(kDocument, kNoHandlers));
  EXPECT_TRUE(Call("heartbeat"));
}

TEST_F(Proxy, EndsItsMonitorWithItself) {
  const Service service(bus);
  {
    CTAVGdbus other("other", "tavcore", nullptr, nullptr);
    ASSERT_TRUE(other.GetProxy(kDocument, kNoHandlers));
    bus.WaitForOwner(ClientName());
  }
  bus.WaitUntilUnowned(ClientName());
  EXPECT_TRUE(log.Has("CTAVGdbus [other] destructor..."));
  EXPECT_TRUE(log.Has("CTAVGdbus [other] destructor end"));
}

TEST_F(Proxy, ServesManyThreadsAtOnceWhileTheBusComesAndGoes) {
  constexpr int kThreads = 6;
  Service service(bus);
  std::atomic<bool> is_over{false};
  std::atomic<int> succeeded{0};
  std::vector<std::thread> threads;
  for (int number = 0; number < kThreads; ++number) {
    threads.emplace_back([&] {
      while (!is_over) {
        GVariant* reply = nullptr;
        if (proxy.GetProxy(kDocument, kNoHandlers) &&
            proxy.MethodCall("heartbeat", nullptr, &reply, 10000, nullptr)) {
          ++succeeded;
        }
        if (reply != nullptr) g_variant_unref(reply);
      }
    });
  }
  const auto more = [&] {
    const int before = succeeded;
    return test::WaitUntil([&] { return succeeded > before + 2 * kThreads; });
  };
  EXPECT_TRUE(more());
  for (int round = 0; round < 3; ++round) {
    bus.Stop();
    service.Wait();
    bus.Start();
    service.Start();
    EXPECT_TRUE(more());
  }
  is_over = true;
  for (std::thread& thread : threads) thread.join();
}

TEST_F(Proxy, OfTheLightVariantTalksToTheFullServiceWhateverItIsToldTo) {
  Service service(bus);
  const pid_t process = fork();
  if (process == 0) {
    execl(LIGHT_CLIENT, "/opt/usr/apps/org.tizen.litetavcore/bin/x", "elsewhere", nullptr);
    _exit(127);
  }
  int status = 0;
  ASSERT_EQ(waitpid(process, &status, 0), process);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(service.Calls("heartbeat").size(), 1U);
  EXPECT_TRUE(log.HasNotice("Reset dbus receiver to [tavcore]."));
}

TEST_F(Proxy, TalksToTheServiceOfItsName) {
  const Service service(bus);
  CTAVGdbus other("db", "elsewhere", nullptr, nullptr);
  ASSERT_TRUE(other.GetProxy(kDocument, kNoHandlers));
  GVariant* reply = nullptr;
  EXPECT_FALSE(other.MethodCall("heartbeat", nullptr, &reply, 10000, nullptr));
  EXPECT_EQ(reply, nullptr);
}

}  // namespace
