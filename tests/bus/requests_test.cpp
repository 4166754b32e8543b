// SPDX-License-Identifier: Apache-2.0
//
// The requests as the service sees them: methods, signatures, values and flags.
#include "on_the_bus.h"

namespace {

using test::Service;
using test::ServiceCall;

class Requests : public OnTheBus {
 protected:
  // The one call of a method that an exported function made; its flags are not looked at here.
  template <typename Function>
  std::string Sent(const std::string& method, const Function& function) {
    service.Forget();
    EXPECT_EQ(function(), 0);
    const std::vector<ServiceCall> calls = service.Calls(method);
    return calls.size() == 1 ? calls[0].signature + " " + calls[0].parameters
                             : std::to_string(calls.size()) + " calls";
  }

  Service service{bus};
};

TEST_F(Requests, OfALockSendOneForAnythingAboveZeroAndElseZero) {
  for (const auto& [given, sent] :
       std::vector<std::pair<int, std::string>>{{1, "1"}, {5, "1"}, {0, "0"}, {-1, "0"}}) {
    EXPECT_EQ(Sent("set_app_lock", [given = given] { return tav_set_app_lock("clock", given); }),
              "(si) ('clock', " + sent + ")");
    EXPECT_EQ(IsLocked("clock"), sent == "1" ? 1 : 0);
  }
  EXPECT_TRUE(log.Has("appid: clock, is_lock: 5,ilock: 1 "));
}

TEST_F(Requests, OfARatingSendItAsGiven) {
  for (const int rating : {5, 0, -7}) {
    EXPECT_EQ(Sent("set_app_rating", [&] { return tav_set_app_rating("clock", rating); }),
              "(si) ('clock', " + std::to_string(rating) + ")");
    int stored = 99;
    EXPECT_EQ(tav_get_app_rating("clock", &stored), 0);
    EXPECT_EQ(stored, rating);
    EXPECT_EQ(log.Count("Start, rating:" + std::to_string(rating)), 1);
  }
}

TEST_F(Requests, OfAUseSendTheId) {
  EXPECT_EQ(Sent("tav_update_app_count", [] { return tav_db_update_app_use_count("clock"); }),
            "(s) ('clock',)");
  EXPECT_EQ(log.Count("Start, app_id:clock"), 1);
  tav_app_info_s info;
  EXPECT_EQ(tav_get_app_info("clock", &info), 0);
  EXPECT_EQ(info.use_count, 1);
}

TEST_F(Requests, OfAnUpdateSendKeyZeroAndAnEmptyValue) {
  EXPECT_EQ(Sent("tav_update_app_by_key", [] { return tav_db_set_app_updated("clock"); }),
            "(sis) ('clock', 0, '')");
  EXPECT_EQ(log.Count("Start, app_id:clock"), 1);
}

TEST_F(Requests, OfTheTickerSendTheModeAndReadItBack) {
  EXPECT_EQ(Sent("set_ticker_mode_to_launch", [] { return tav_set_ticker_mode(3); }), "(i) (3,)");
  int mode = 0;
  EXPECT_EQ(Sent("get_ticker_mode_from_launch", [&] { return tav_get_ticker_mode(&mode); }),
            "() ()");
  EXPECT_EQ(mode, 3);
  EXPECT_EQ(log.Messages().back(), "Finish,ret:[0],tickerMode:[3]");
  EXPECT_TRUE(log.Has("result : 0, TickerModeValue : 3"));
}

TEST_F(Requests, CarryQuotesSlashesAndAnyScriptAsTheyAre) {
  for (const std::string id : {"it's", "\"quoted\"", "back\\slash", "Погода", "\xF0\x9F\x8E\xB5"}) {
    service.Forget();
    EXPECT_EQ(tav_set_app_lock(id.c_str(), 1), -1);  // the service knows no such app
    const std::vector<ServiceCall> calls = service.Calls("set_app_lock");
    ASSERT_EQ(calls.size(), 1U);
    GVariant* parameters = g_variant_parse(G_VARIANT_TYPE("(si)"), calls[0].parameters.c_str(),
                                           nullptr, nullptr, nullptr);
    ASSERT_NE(parameters, nullptr);
    const char* sent = nullptr;
    g_variant_get(parameters, "(&si)", &sent, nullptr);
    EXPECT_EQ(std::string(sent), id);
    g_variant_unref(parameters);
  }
}

TEST_F(Requests, AreEachPrecededByAHeartbeatButTheFirst) {
  tav_set_ticker_mode(1);
  tav_set_ticker_mode(2);
  tav_set_ticker_mode(3);
  std::vector<std::string> methods;
  for (const ServiceCall& call : service.Calls()) methods.push_back(call.method);
  EXPECT_EQ(methods, (std::vector<std::string>{"set_ticker_mode_to_launch", "heartbeat",
                                               "set_ticker_mode_to_launch", "heartbeat",
                                               "set_ticker_mode_to_launch"}));
  EXPECT_EQ(service.Calls("heartbeat")[0].signature, "()");
}

TEST_F(Requests, MayStartTheServiceWhileAHeartbeatMayNot) {
  int mode = 0;
  tav_set_ticker_mode(1);
  tav_get_ticker_mode(&mode);
  tav_set_app_lock("clock", 1);
  tav_set_app_rating("clock", 1);
  tav_db_update_app_use_count("clock");
  tav_db_set_app_updated("clock");
  for (const ServiceCall& call : service.Calls()) {
    EXPECT_EQ(call.IsNoAutoStart(), call.method == "heartbeat") << call.method;
  }
  EXPECT_EQ(service.Calls("heartbeat").size(), 5U);
  EXPECT_TRUE(log.Has("set G_DBUS_CALL_FLAGS_NO_AUTO_START to[heartbeat]"));
}

}  // namespace
