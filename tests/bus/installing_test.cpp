// SPDX-License-Identifier: Apache-2.0
//
// Whether an app, or one that it requires, is being installed or updated. Nothing of it goes
// over the bus.
#include <gtest/gtest.h>

#include <chrono>

#include "support/device.h"
#include "support/writer.h"
#include "tav_db_api.h"

namespace {

using test::App;

class Installing : public ::testing::Test {
 protected:
  static App Updating(const std::string& id) { return App(id).Set("reserved_tinyint_10", 1); }
  static App Requiring(const std::string& id, const std::string& ids) {
    return App(id).Set("reserved_string_10", ids);
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(Installing, IsSoForAnAppWithItsFlagSet) {
  device.Install(Updating("a")).Install(App("b"));
  EXPECT_EQ(tav_db_check_app_installing("a"), 0);
  EXPECT_TRUE(log.Has("[a] updating"));
  EXPECT_EQ(tav_db_check_app_installing("b"), -1);
  EXPECT_TRUE(log.Has("[b] is not installing"));
}

TEST_F(Installing, IsSoForAnAppThatRequiresOneThatIsBeingUpdated) {
  device.Install(Requiring("a", "b,c")).Install(App("b")).Install(Updating("c"));
  EXPECT_EQ(tav_db_check_app_installing("a"), 0);
  EXPECT_TRUE(log.Has("a app have required app b,c"));
  EXPECT_TRUE(log.Has("required app [b] installed"));
  EXPECT_TRUE(log.Has("[a] required app [c] is updating"));
}

TEST_F(Installing, LooksAtRequiredAppsInTheAscendingOrderOfTheirIds) {
  device.Install(Requiring("x", "b,a")).Install(Updating("a")).Install(Updating("b"));
  EXPECT_EQ(tav_db_check_app_installing("x"), 0);
  EXPECT_TRUE(log.Has("[x] required app [a] is updating"));
  EXPECT_FALSE(log.Has("required app [b] installed"));
}

TEST_F(Installing, SkipsRequiredAppsThatAreNotThere) {
  device.Install(Requiring("a", "none,c")).Install(App("c"));
  EXPECT_EQ(tav_db_check_app_installing("a"), -1);
  EXPECT_FALSE(log.Has("required app [none] installed"));
  EXPECT_TRUE(log.Has("required app [c] installed"));
  EXPECT_TRUE(log.Has("[a] is not installing"));
}

TEST_F(Installing, IsSoForARequiredAppBehindOneThatIsNotThere) {
  device.Install(Requiring("a", "b,c")).Install(Updating("c"));
  EXPECT_EQ(tav_db_check_app_installing("a"), 0);
  EXPECT_TRUE(log.Has("[a] required app [c] is updating"));
}

TEST_F(Installing, IsRefusedWithItsReason) {
  device.Install(Updating("a"));
  EXPECT_EQ(tav_db_check_app_installing(nullptr), -1);
  EXPECT_EQ(tav_db_check_app_installing(""), -1);
  EXPECT_EQ(log.Count("in param is NULL "), 2);
  EXPECT_TRUE(log.HasError("in param is NULL "));
  EXPECT_EQ(tav_db_check_app_installing("none"), -1);
  EXPECT_TRUE(log.HasError("none is not installed"));
  device.Write("opt/dbspace/pkgreinstall", "");
  log.Forget();
  EXPECT_EQ(tav_db_check_app_installing(nullptr), -1);
  EXPECT_EQ(log.Messages('E'), std::vector<std::string>{"Pkgmgr is recovering"});
}

TEST_F(Installing, ShowsAnUpdateForAnAppWhoseFlagIsClear) {
  device.Install(App("a")).Install(App("b").Set("reserved_tinyint_11", 1));
  EXPECT_EQ(tav_check_update_popup("a"), 0);
  EXPECT_TRUE(log.Has("[a] updating"));
  EXPECT_EQ(tav_check_update_popup("b"), -1);
  EXPECT_TRUE(log.Has("[tav db] check app need show update popup [b]"));
}

TEST_F(Installing, ShowsNoUpdateForAnAppThatIsNotThere) {
  EXPECT_EQ(tav_check_update_popup("none"), -1);
  EXPECT_TRUE(log.HasError("none is not installed"));
  EXPECT_EQ(tav_check_update_popup(nullptr), -1);
  EXPECT_EQ(tav_check_update_popup(""), -1);
  EXPECT_EQ(log.Count("in param is NULL "), 2);
}

TEST_F(Installing, ShowsNoUpdateWhileReadsAreRefused) {
  device.Install(App("a")).FactoryReset(1);
  EXPECT_EQ(tav_check_update_popup("a"), -1);
  EXPECT_TRUE(log.HasError("a is not installed"));
  device.FactoryReset(0).Write("opt/dbspace/pkgreinstall", "");
  EXPECT_EQ(tav_check_update_popup("a"), -1);
  EXPECT_TRUE(log.HasError("Pkgmgr is recovering"));
}

TEST_F(Installing, LetsTheDefaultFlagsDecideWhenTheDatabaseStaysBusy) {
  device.Install(App("a").Set("reserved_tinyint_11", 1));
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  EXPECT_EQ(tav_check_update_popup("a"), 0);
  EXPECT_EQ(tav_db_check_app_installing("a"), -1);
  EXPECT_TRUE(log.Has("[a] is not installing"));
}

}  // namespace
