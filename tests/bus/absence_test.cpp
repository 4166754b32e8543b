// SPDX-License-Identifier: Apache-2.0
//
// No bus, no service, or a bus that says nothing: every request fails in bounded time.
#include "on_the_bus.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

class Absence : public OnTheBus {};

TEST_F(Absence, OfTheBusFailsEveryRequestAtOnce) {
  bus.Stop();
  const Stopwatch watch;
  int mode = 7;
  EXPECT_EQ(tav_set_app_lock("clock", 1), -1);
  EXPECT_EQ(tav_set_app_rating("clock", 3), -1);
  EXPECT_EQ(tav_db_update_app_use_count("clock"), -1);
  EXPECT_EQ(tav_db_set_app_updated("clock"), -1);
  EXPECT_EQ(tav_set_ticker_mode(1), -1);
  EXPECT_EQ(tav_get_ticker_mode(&mode), -1);
  EXPECT_EQ(mode, 7);
  EXPECT_EQ(log.Messages().back(), "Finish,ret:[-1],tickerMode:[7]");
  EXPECT_LT(watch.Elapsed(), AtMost(seconds(8)));
  EXPECT_EQ(log.Count("get_db_proxy() error"), 6);
  EXPECT_EQ(log.Count("appid: clock, is_lock: 1,ilock: 1 "), 0);  // nothing was to be sent
  EXPECT_EQ(log.Count("Finish"), 0);
  EXPECT_TRUE(log.HasError("get_db_proxy() error"));
  EXPECT_TRUE(log.HasError("set id:clock 1 fail"));
  EXPECT_EQ(AppChange(), -1);
}

TEST_F(Absence, OfTheBusEndsWithTheBus) {
  bus.Stop();
  EXPECT_EQ(tav_set_app_lock("clock", 1), -1);
  bus.Start();
  test::Service service(bus);
  EXPECT_EQ(tav_set_app_lock("clock", 1), 0);
  EXPECT_EQ(IsLocked("clock"), 1);
}

TEST_F(Absence, OfTheServiceFailsARequestAndEndsWithTheService) {
  EXPECT_EQ(tav_set_app_lock("clock", 1), -1);
  EXPECT_EQ(tav_set_app_lock("clock", 1), -1);
  EXPECT_TRUE(log.Has("obj obj" + std::to_string(getpid()) + " , method call set_app_lock"));
  EXPECT_TRUE(log.HasError("/tmp/FACTORY_PRODCUTION does not exist, need to check other reasons"));
  EXPECT_EQ(log.Count("Finish"), 2);
  int mode = 7;
  EXPECT_EQ(tav_get_ticker_mode(&mode), -1);
  EXPECT_EQ(mode, 7);
  EXPECT_EQ(IsLocked("clock"), 0);

  test::Service service(bus);
  EXPECT_EQ(tav_set_app_lock("clock", 1), 0);
  EXPECT_EQ(IsLocked("clock"), 1);
  EXPECT_EQ(AppChange(), 1);
}

TEST_F(Absence, OfTheServiceDuringAFastBootIsToldAsSuch) {
  device.Write("tmp/FACTORY_PRODCUTION", "");
  EXPECT_EQ(tav_set_ticker_mode(1), -1);
  EXPECT_TRUE(log.HasError("/tmp/FACTORY_PRODCUTION exists, it is fast boot mode"));
}

// Were it for the heartbeat, the service would have been asked for one.
TEST_F(Absence, OfTheServiceIsEndedByTheBusForARequestAndNotForAHeartbeat) {
  test::OfferService(bus);
  const test::Peer peer(bus.Address());
  ASSERT_EQ(tav_set_ticker_mode(1), 0);
  kill(peer.OwnerProcess(test::Service::kName), SIGKILL);
  bus.WaitUntilUnowned(test::Service::kName);
  log.Forget();
  EXPECT_EQ(tav_set_ticker_mode(2), 0);
  const std::string me = "obj" + std::to_string(getpid());
  EXPECT_TRUE(log.Has("obj " + me + " , method call heartbeat"));
  EXPECT_TRUE(log.Has("method call end"));
  EXPECT_TRUE(log.Has("g_dbus connection is not closed"));
  const std::vector<test::ServiceCall> calls = test::CallsOnBus(peer);
  ASSERT_EQ(calls.size(), 1U);
  EXPECT_EQ(calls[0].method, "set_ticker_mode_to_launch");
  EXPECT_EQ(calls[0].parameters, "(2,)");
}

TEST_F(Absence, OfAnyWordFromTheBusIsGivenUpAfterTenSeconds) {
  bus.Stall();
  const Stopwatch watch;
  EXPECT_EQ(tav_set_ticker_mode(1), -1);
  EXPECT_GE(watch.Elapsed(), milliseconds(9900));
  EXPECT_LT(watch.Elapsed(), AtMost(seconds(40)));
  EXPECT_TRUE(log.HasError("get_db_proxy() error"));
  bus.Resume();
  test::Service service(bus);
  EXPECT_EQ(tav_set_ticker_mode(1), 0);
}

}  // namespace
