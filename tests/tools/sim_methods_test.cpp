// SPDX-License-Identifier: Apache-2.0
//
// The reference service's methods: what each answers, writes and publishes.
#include "sim_test.h"
#include "support/writer.h"

namespace test {
namespace {

using testing::HasSubstr;

constexpr char kAppChange[] = "memory/tav/app_change";
constexpr char kPublished[] = "int\n1\n";
constexpr char kDate[] = "[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}";

class SimMethods : public SimTest {};

TEST_F(SimMethods, AnswersTheHeartbeatWithAnEmptyTuple) {
  Service service(bus);
  EXPECT_EQ(Ask("heartbeat"), "()");
}

TEST_F(SimMethods, LocksAndUnlocksAnAppAndPublishesIt) {
  Service service(bus);
  EXPECT_EQ(Ask("set_app_lock", "('org.example.clock', 1)"), "(0,)");
  EXPECT_EQ(Column("is_lock"), "1");
  EXPECT_EQ(Setting(kAppChange), kPublished);
  EXPECT_EQ(Ask("set_app_lock", "('org.example.clock', 0)"), "(0,)");
  EXPECT_EQ(Column("is_lock"), "0");
}

TEST_F(SimMethods, StoresNoOtherLockThanZeroAndOne) {
  Service service(bus);
  EXPECT_EQ(Ask("set_app_lock", "('org.example.clock', 7)"), "(0,)");
  EXPECT_EQ(Column("is_lock"), "1");
  EXPECT_EQ(Ask("set_app_lock", "('org.example.clock', -7)"), "(0,)");
  EXPECT_EQ(Column("is_lock"), "0");
}

TEST_F(SimMethods, FindsAnAppByItsPlatformId) {
  Service service(bus);
  EXPECT_EQ(Ask("set_app_lock", "('Ab1.clock', 1)"), "(0,)");
  EXPECT_EQ(Column("is_lock"), "1");
}

TEST_F(SimMethods, StoresARatingAndPublishesIt) {
  Service service(bus);
  EXPECT_EQ(Ask("set_app_rating", "('org.example.clock', -5)"), "(0,)");
  EXPECT_EQ(Column("rating"), "-5");
  EXPECT_EQ(Setting(kAppChange), kPublished);
}

TEST_F(SimMethods, CountsAUseWithItsTimeAndKeepsItToItself) {
  Service service(bus);
  EXPECT_EQ(Ask("tav_update_app_count", "('org.example.clock',)"), "(0,)");
  EXPECT_EQ(Column("use_count"), "5");
  EXPECT_THAT(Column("launch_date"), testing::ContainsRegex(kDate));
  EXPECT_EQ(Setting(kAppChange), "");
}

TEST_F(SimMethods, CountsFromNothingAndNoFurtherThanAnIntegerReaches) {
  Service service(bus);
  device.Sql("update widgetinfo set use_count = null");
  Ask("tav_update_app_count", "('org.example.clock',)");
  EXPECT_EQ(Column("use_count"), "1");
  device.Sql("update widgetinfo set use_count = 2147483647");
  Ask("tav_update_app_count", "('org.example.clock',)");
  EXPECT_EQ(Column("use_count"), "2147483647");
}

TEST_F(SimMethods, MarksAnAppAsUpdatedForTheKeyZero) {
  Service service(bus);
  EXPECT_EQ(Ask("tav_update_app_by_key", "('org.example.clock', 0, '')"), "(0,)");
  EXPECT_EQ(Column("is_updated"), "1");
  EXPECT_EQ(Column("is_need_update"), "0");
  EXPECT_EQ(Setting(kAppChange), "");
}

TEST_F(SimMethods, RefusesAnyOtherKey) {
  Service service(bus);
  EXPECT_EQ(Ask("tav_update_app_by_key", "('org.example.clock', 1, '')"), "(3,)");
  EXPECT_EQ(Column("is_updated"), "0");
}

TEST_F(SimMethods, KeepsTheTickerMode) {
  Service service(bus, {"--ticker-mode", "2"});
  EXPECT_EQ(Ask("get_ticker_mode_from_launch"), "(0, 2)");
  EXPECT_EQ(Ask("set_ticker_mode_to_launch", "(-3,)"), "(0,)");
  EXPECT_EQ(Ask("get_ticker_mode_from_launch"), "(0, -3)");
}

TEST_F(SimMethods, HasNothingToUninstallAtFirst) {
  Service service(bus);
  EXPECT_EQ(Ask("get_api_uninstalling_biu_list"), "('',)");
}

TEST_F(SimMethods, ReadsTheUninstallingListOfTheDeviceAnewForEachRequest) {
  Service service(bus);
  device.Write("data/tavcore/uninstalling.txt", "org.example.a\n\norg.example.b");
  EXPECT_EQ(Ask("get_api_uninstalling_biu_list"), "('org.example.a,org.example.b',)");
  device.Write("data/tavcore/uninstalling.txt", "org.example.c\n\xff\n");
  EXPECT_EQ(Ask("get_api_uninstalling_biu_list"), "('org.example.c',)");
}

TEST_F(SimMethods, TakesTheUninstallingListFromItsCommandLineAsItStands) {
  device.Write("data/tavcore/uninstalling.txt", "org.example.a\n");
  Service service(bus, {"--uninstalling", "org.example.x,,org.example.y,"});
  EXPECT_EQ(Ask("get_api_uninstalling_biu_list"), "('org.example.x,,org.example.y,',)");
}

TEST_F(SimMethods, AnswersWithAStatusWhenTheAppIsUnknown) {
  Service service(bus);
  EXPECT_EQ(Ask("set_app_lock", "('org.example.none', 1)"), "(1,)");
  EXPECT_EQ(Ask("set_app_rating", "('org.example.none', 1)"), "(1,)");
  EXPECT_EQ(Ask("tav_update_app_count", "('org.example.none',)"), "(1,)");
  EXPECT_EQ(Ask("tav_update_app_by_key", "('org.example.none', 0, '')"), "(1,)");
  EXPECT_EQ(Setting(kAppChange), "");
}

TEST_F(SimMethods, DoesNotTakeAnEmptyIdForThatOfAppsWithoutAPlatformId) {
  device.Sql("update widgetinfo set tizen_id = ''");
  Service service(bus);
  EXPECT_EQ(Ask("set_app_lock", "('', 1)"), "(1,)");
  EXPECT_EQ(Column("is_lock"), "0");
}

TEST_F(SimMethods, AnswersWithAStatusWhenTheDatabaseIsLockedAndLivesOn) {
  Service service(bus, {"--busy-timeout", "50"});
  {
    const ExclusiveWriter writer(device.DatabaseFile(), std::chrono::hours(1));
    EXPECT_EQ(Ask("set_app_lock", "('org.example.clock', 1)"), "(2,)");
    EXPECT_EQ(Ask("heartbeat"), "()");
  }
  EXPECT_EQ(Column("is_lock"), "0");
  EXPECT_EQ(Setting(kAppChange), "");
  EXPECT_EQ(Ask("set_app_lock", "('org.example.clock', 1)"), "(0,)");
  EXPECT_EQ(Column("is_lock"), "1");
}

TEST_F(SimMethods, WaitsForADatabaseThatIsBusyForAWhile) {
  Service service(bus, {"--busy-timeout", "15000"});
  const ExclusiveWriter writer(device.DatabaseFile(), std::chrono::milliseconds(150));
  EXPECT_EQ(Ask("set_app_lock", "('org.example.clock', 1)"), "(0,)");
}

TEST_F(SimMethods, AnswersWithAStatusWhenThereIsNoDatabase) {
  Service service(bus);
  std::filesystem::remove(device.DatabaseFile());
  EXPECT_EQ(Ask("tav_update_app_count", "('org.example.clock',)"), "(2,)");
  EXPECT_FALSE(std::filesystem::exists(device.DatabaseFile()));
}

TEST_F(SimMethods, RefusesParametersOfOtherTypes) {
  Service service(bus);
  EXPECT_EQ(Ask("set_app_lock", "('org.example.clock',)"), kInvalidArguments);
  EXPECT_EQ(Ask("heartbeat", "(1,)"), kInvalidArguments);
  EXPECT_EQ(Ask("no_such_method"), "org.freedesktop.DBus.Error.UnknownMethod");
}

TEST_F(SimMethods, ShowsItsMethodsToWhoeverIntrospectsIt) {
  Service service(bus);
  const std::string document = bus.Introspect(Service::kName, Service::kPath);
  for (const char* name : {"heartbeat", "set_app_lock", "set_app_rating", "tav_update_app_count",
                           "tav_update_app_by_key", "set_ticker_mode_to_launch",
                           "get_ticker_mode_from_launch", "get_api_uninstalling_biu_list"}) {
    EXPECT_THAT(document, HasSubstr("<method name=\"" + std::string(name) + "\"")) << document;
  }
}

}  // namespace
}  // namespace test
