// SPDX-License-Identifier: Apache-2.0
//
// The lookups of one app: what each finds, and what it does not.
#include <gtest/gtest.h>

#include <cstring>

#include "support/device.h"
#include "tav_db_api_inner.h"

namespace {

using test::App;

class AppLookup : public ::testing::Test {
 protected:
  // The id that a lookup found, or its failure.
  template <typename Lookup>
  static std::string Found(const Lookup& lookup) {
    tav_app_info_s info;
    std::memset(&info, 'x', sizeof(info));
    const int result = lookup(&info);
    return result == 0 ? info.app_id : std::to_string(result);
  }
  static std::string ById(const char* id) {
    return Found([&](tav_app_info_s* info) { return tav_get_app_info(id, info); });
  }
  static std::string ByTizenId(const char* id) {
    return Found([&](tav_app_info_s* info) { return tav_get_app_info_by_tizenid(id, info); });
  }
  static std::string ByRunTitle(const char* title) {
    return Found([&](tav_app_info_s* info) { return tav_get_app_info_by_runtitle(title, info); });
  }
  static std::string ByAnyName(const char* name) {
    return Found([&](tav_app_info_s* info) { return m_tav_get_app_info(name, info); });
  }
  static std::string ByRunTitleInside(const char* title) {
    return Found([&](tav_app_info_s* info) { return GetAppInfoByRuntitle(info, title); });
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(AppLookup, FindsAnAppByItsId) {
  device.Install(App("org.example.clock")).Install(App("org.example.weather"));
  EXPECT_EQ(ById("org.example.weather"), "org.example.weather");
  EXPECT_EQ(ByTizenId("org.example.weather"), "org.example.weather");
  EXPECT_TRUE(log.Has("Start to get [org.example.weather] info"));
  EXPECT_TRUE(log.Has("app_id:[org.example.weather]"));
  EXPECT_TRUE(log.Has("Get app info by app_id:[org.example.weather] finish, ret [0]"));
  EXPECT_TRUE(log.Has("Start,tizen id:[org.example.weather]"));
  EXPECT_TRUE(log.Has("tizen_id:[org.example.weather] finish [0]"));
}

TEST_F(AppLookup, FindsAnAppByItsPlatformIdThroughTheSecondAlternative) {
  device.Install(App("org.example.clock").TizenId("clock000001.Clock"));
  EXPECT_EQ(ById("clock000001.Clock"), "org.example.clock");
  EXPECT_EQ(ByTizenId("clock000001.Clock"), "org.example.clock");
}

TEST_F(AppLookup, FindsNoAppByItsPackageNameOrItsRunTitle) {
  device.Install(App("org.example.clock").Package("clock000001").RunTitle("Clock"));
  EXPECT_EQ(ById("clock000001"), "-1");
  EXPECT_EQ(ById("Clock"), "-1");
}

TEST_F(AppLookup, MatchesTheTwoSpecialIdsOnThePlatformIdAlone) {
  for (const char* id : {"org.tizen.browser", "org.tizen.netflix-app"}) {
    device.Sql("delete from widgetinfo").Install(App(id).TizenId("something.else"));
    EXPECT_EQ(ById(id), "-1") << id;
    device.Install(App("web-id").TizenId(id));
    EXPECT_EQ(ById(id), "web-id") << id;
  }
}

TEST_F(AppLookup, FindsTheDemonstrationAppByTheWebIdOfTheDevice) {
  device.Write("system-info.ini", "[custom]\ncom.kordyne/featureconf/vitrine.webid=web.demo\n");
  device.Install(App("org.example.demo").TizenId("web.demo")).Install(App("vitrine"));
  EXPECT_EQ(ById("vitrine"), "org.example.demo");
  EXPECT_TRUE(log.Has("vitrine's web id is web.demo"));
  EXPECT_TRUE(log.Has("app_id:[web.demo]"));
}

TEST_F(AppLookup, TakesASpecialWebIdOnThePlatformIdAloneAsWell) {
  device.Write("system-info.ini",
               "[custom]\ncom.kordyne/featureconf/vitrine.webid=org.tizen.browser\n");
  device.Install(App("org.tizen.browser"));
  EXPECT_EQ(ById("vitrine"), "-1");
  device.Install(App("org.example.browser").TizenId("org.tizen.browser"));
  EXPECT_EQ(ById("vitrine"), "org.example.browser");
}

TEST_F(AppLookup, FailsForTheDemonstrationAppWithoutItsKeyBeforeTheDatabaseIsOpened) {
  device.Install(App("vitrine"));
  tav_app_info_s info;
  std::memset(&info, 'x', sizeof(info));
  EXPECT_EQ(tav_get_app_info("vitrine", &info), -1);
  EXPECT_EQ(info.app_id[0], 'x');
  EXPECT_TRUE(
      log.HasError("failed to get vitrine's web id, key:com.kordyne/featureconf/vitrine.webid"));
  EXPECT_FALSE(log.Has("Connected to DB"));
}

TEST_F(AppLookup, FindsAnAppByItsRunTitle) {
  device.Install(App("org.example.clock").RunTitle("Clock"));
  EXPECT_EQ(ByRunTitle("Clock"), "org.example.clock");
  EXPECT_TRUE(log.Has("Start, runtitile:[Clock]"));
  EXPECT_TRUE(log.Has("Finish runtitile:[Clock]"));
  EXPECT_EQ(ByRunTitleInside("Clock"), "org.example.clock");
  EXPECT_TRUE(log.Has("runtitile:[Clock]"));
  EXPECT_TRUE(log.Has("Get app info by run_title:[Clock] finish, ret [0]"));
  EXPECT_EQ(ByRunTitle("org.example.clock"), "-1");
  EXPECT_EQ(ByRunTitleInside("clock"), "-1");
}

TEST_F(AppLookup, FindsAnAppByAnyOfItsThreeNamesInside) {
  device.Install(App("org.example.clock").TizenId("clock000001.Clock").Package("clock000001"));
  for (const char* name : {"org.example.clock", "clock000001.Clock", "clock000001"}) {
    EXPECT_EQ(ByAnyName(name), "org.example.clock");
  }
  EXPECT_TRUE(log.Has("Start, app_id:[clock000001]"));
  EXPECT_TRUE(log.Has("Finish app_id:[clock000001],ret[0]"));
  EXPECT_EQ(ByAnyName("vitrine"), "-1");
}

TEST_F(AppLookup, SeesOnlyAppsThatAreInstalledAvailableAndNotMarkedForReset) {
  for (const App& app :
       {App("a").InstallState(2), App("a").InstallState(4), App("a").Null("install_state"),
        App("a").Unavailable(), App("a").Set("is_app_available", 2), App("a").MarkedForReset(),
        App("a").Null("is_need_reset")}) {
    device.Sql("delete from widgetinfo").Install(App(app).RunTitle("A").TizenId("t"));
    EXPECT_EQ(ById("a"), "-1");
    EXPECT_EQ(ByTizenId("t"), "-1");
    EXPECT_EQ(ByAnyName("a"), "-1");
    EXPECT_EQ(ByRunTitle("A"), "-1");
    EXPECT_EQ(ByRunTitleInside("A"), "-1");
  }
  device.Sql("delete from widgetinfo").Install(App("a").Hidden());
  EXPECT_EQ(ById("a"), "a");
}

TEST_F(AppLookup, TakesTheFirstRowOfTwoAndStepsOverTheRest) {
  device.Install(App("b").TizenId("same")).Install(App("a").TizenId("same"));
  const std::string first = ById("same");
  EXPECT_EQ(first, "b");
  EXPECT_EQ(log.Count("set app_info success"), 1);
  EXPECT_EQ(log.Count("SQLITE_ROW : has another row ready"), 2);
  EXPECT_TRUE(log.Has("SQLITE_DONE : has finished executing"));
}

TEST_F(AppLookup, ZeroesTheRecordWhenNothingMatches) {
  tav_app_info_s info;
  std::memset(&info, 'x', sizeof(info));
  EXPECT_EQ(tav_get_app_info("org.example.none", &info), -1);
  const tav_app_info_s zero = {};
  EXPECT_EQ(std::memcmp(&info, &zero, sizeof(info)), 0);
  EXPECT_TRUE(log.Has("Get app info by app_id:[org.example.none] finish, ret [-1]"));
}

TEST_F(AppLookup, TakesQuotesPercentSignsAndSqlForData) {
  for (const char* id :
       {"it's", "\"quoted\"", "50%", "_", "a' or '1'='1", "x'; drop table widgetinfo; --", "?"}) {
    device.Sql("delete from widgetinfo").Install(App("other").RunTitle("other"));
    EXPECT_EQ(ById(id), "-1") << id;
    EXPECT_EQ(ByRunTitle(id), "-1") << id;
    device.Install(App(id).RunTitle(id));
    EXPECT_EQ(ById(id), id);
    EXPECT_EQ(ByRunTitle(id), id);
  }
}

}  // namespace
