// SPDX-License-Identifier: Apache-2.0
//
// A service that answers late, wrongly, with a failure or not at all.
#include <algorithm>

#include "on_the_bus.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using test::Service;

class ServiceFaults : public OnTheBus {
 protected:
  Service service{bus};
};

TEST_F(ServiceFaults, OfAnErrorReplyAreAFailureWithTheErrorInTheLog) {
  service.Fault("set_app_lock", "error:org.example.Error.Refused");
  EXPECT_EQ(tav_set_app_lock("clock", 1), -1);
  EXPECT_EQ(AppChange(), -1);
  const std::vector<std::string> errors = log.Messages('E');
  EXPECT_EQ(std::count_if(errors.begin(), errors.end(),
                          [](const std::string& line) {
                            return line.find("method call false.") == 0 &&
                                   line.find(
                                       ", detail[message:GDBus.Error:org.example.Error."
                                       "Refused: ") != std::string::npos;
                          }),
            1);
}

TEST_F(ServiceFaults, OfAStatusOtherThanZeroAreAFailureAlthoughTheCallSucceeded) {
  service.Fault("*", "status:1");
  int mode = 7;
  EXPECT_EQ(tav_set_app_lock("clock", 1), -1);
  EXPECT_EQ(tav_set_app_rating("clock", 3), -1);
  EXPECT_TRUE(log.HasError("Get app[clock] rating fail "));
  EXPECT_EQ(tav_db_update_app_use_count("clock"), -1);
  EXPECT_EQ(tav_db_set_app_updated("clock"), -1);
  EXPECT_EQ(tav_set_ticker_mode(1), -1);
  EXPECT_EQ(tav_get_ticker_mode(&mode), -1);
  EXPECT_EQ(mode, 0);
  EXPECT_EQ(log.Messages().back(), "Finish,ret:[-1],tickerMode:[0]");
  EXPECT_EQ(log.Count("result : 1"), 5);
  EXPECT_EQ(AppChange(), -1);
}

TEST_F(ServiceFaults, OfAReplyOfAnotherTypeAreAFailureWithTheOutValueUntouched) {
  service.Fault("*", "wrong-type");
  int mode = 7;
  EXPECT_EQ(tav_get_ticker_mode(&mode), -1);
  EXPECT_EQ(mode, 7);
  EXPECT_EQ(tav_set_app_lock("clock", 1), -1);
  EXPECT_EQ(tav_db_update_app_use_count("clock"), -1);
  int told = 0;
  for (const std::string& line : log.Messages('E')) {
    if (line.find(" was answered with ") != std::string::npos) ++told;
  }
  EXPECT_EQ(told, 3);
}

TEST_F(ServiceFaults, OfAFailingHeartbeatDoNotKeepTheRequestFromItsService) {
  ASSERT_EQ(tav_set_ticker_mode(1), 0);
  service.Fault("heartbeat", "error");
  EXPECT_EQ(tav_set_ticker_mode(2), 0);
  EXPECT_TRUE(log.Has("g_dbus connection is not closed"));
  // From now on, with the connection open, no further heartbeat is sent.
  service.ClearFaults();
  service.Forget();
  EXPECT_EQ(tav_set_ticker_mode(3), 0);
  EXPECT_TRUE(service.Calls("heartbeat").empty());
}

TEST_F(ServiceFaults, OfTenSecondsWithoutAReplyAreATimeout) {
  service.Fault("set_app_lock", "no-reply");
  const Stopwatch watch;
  EXPECT_EQ(tav_set_app_lock("clock", 1), -1);
  EXPECT_GE(watch.Elapsed(), milliseconds(9900));
  EXPECT_LT(watch.Elapsed(), AtMost(seconds(19)));
  EXPECT_TRUE(log.HasError("gdbus timeout"));
  EXPECT_EQ(tav_set_ticker_mode(1), 0);
}

TEST_F(ServiceFaults, OfADelayWithinTheTimeAreWaitedFor) {
  service.Fault("set_app_lock", "delay:300");
  const Stopwatch watch;
  EXPECT_EQ(tav_set_app_lock("clock", 1), 0);
  EXPECT_GE(watch.Elapsed(), milliseconds(290));
}

TEST_F(ServiceFaults, OfAnEndDuringTheCallAreAFailureOfThatCallAlone) {
  service.Fault("set_app_lock", "exit");
  const Stopwatch watch;
  EXPECT_EQ(tav_set_app_lock("clock", 1), -1);
  EXPECT_LT(watch.Elapsed(), AtMost(seconds(9)));
  service.Wait();
  service.Start();
  EXPECT_EQ(tav_set_app_lock("clock", 1), 0);
  EXPECT_EQ(IsLocked("clock"), 1);
}

TEST_F(ServiceFaults, OfATextThatIsNotUtf8SendNothing) {
  ASSERT_EQ(tav_set_ticker_mode(1), 0);
  service.Forget();
  EXPECT_EQ(tav_set_app_lock("cl\xC3(", 1), -1);
  EXPECT_EQ(tav_db_update_app_use_count("\xFF"), -1);
  EXPECT_EQ(tav_db_set_app_updated("\xFF"), -1);
  EXPECT_TRUE(service.Calls().empty());
}

TEST_F(ServiceFaults, OfAnUnknownAppAreTheServicesRefusal) {
  EXPECT_EQ(tav_set_app_lock("no such app", 1), -1);
  EXPECT_EQ(AppChange(), -1);
}

}  // namespace
