// SPDX-License-Identifier: Apache-2.0
//
// The group lists, the catalogue and the JSON list over a database that becomes busy.
#include <app_control.h>
#include <json/reader.h>
#include <json/value.h>

#include <memory>

#include "catalogue.h"
#include "exports.h"
#include "failing_rows.h"
#include "memory.h"

namespace {

using test::Answer;
using test::App;
using test::FailingRows;
using test::Ids;
using test::IdsOf;
using test::InnerApp;
using test::InnerApps;
using test::kAppRows;
using test::kAtPreparation;
using test::kBusyText;
using test::kConfigRows;

class BusyGroupList : public ::testing::Test {
 protected:
  BusyGroupList() {
    device.Install(App("clock"));
    device.Configure("RESERVED_37", "Clock:clock").Configure("RESERVED_27", "Clock:clock");
    // The database is open before anything fails.
    EXPECT_EQ(InAndroidList(), std::pair(std::string("clock"), 0));
    log.Forget();
  }
  static std::pair<std::string, int> InAndroidList() {
    std::string id = "untouched";
    int state = -7;
    GetAppIDFromAndroidGroupList("Clock", id, state);
    return {id, state};
  }
  static std::pair<std::string, int> InAppList() {
    std::string id = "untouched";
    int state = -7;
    GetAppIDFromAppGroupList("Clock", id, state);
    return {id, state};
  }

  const std::pair<std::string, int> untouched = {"untouched", -7};
  const std::pair<std::string, int> installed = {"clock", 0};
  const std::pair<std::string, int> not_installed = {"clock", 1};
  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(BusyGroupList, LeavesTheOutputsAloneWhileItsValueIsBusy) {
  for (const int rows : {kAtPreparation, 0, 1}) {
    const FailingRows failing(kConfigRows, rows);
    EXPECT_EQ(InAndroidList(), untouched) << rows;
  }
  for (const int rows : {kAtPreparation, 0, 1}) {
    const FailingRows failing(kConfigRows, rows);
    EXPECT_EQ(InAppList(), untouched) << rows;
  }
  EXPECT_EQ(log.Count(kBusyText), 4);
  EXPECT_FALSE(log.Has("the runtitle list Clock:clock"));
  EXPECT_EQ(InAndroidList(), installed);
  EXPECT_EQ(InAppList(), installed);
}

TEST_F(BusyGroupList, TakesAnAppForNotInstalledWhileItsRowsAreBusy) {
  for (const int rows : {kAtPreparation, 0, 1}) {
    const FailingRows failing(kAppRows, rows);
    EXPECT_EQ(InAndroidList(), not_installed) << rows;
  }
  for (const int rows : {kAtPreparation, 0, 1}) {
    const FailingRows failing(kAppRows, rows);
    EXPECT_EQ(InAppList(), not_installed) << rows;
  }
  EXPECT_EQ(log.Count("Finish app_id:[clock],ret[-2]"), 6);
  EXPECT_EQ(InAndroidList(), installed);
  EXPECT_EQ(InAppList(), installed);
}

class BusyCatalogue : public test::BuiltInApps {
 protected:
  // A list that held "before" must be as it was, after a failure.
  static void ExpectFailure() {
    InnerApps list = {InnerApp("before", "p")};
    EXPECT_EQ(GetBuiltInAppList(list, false), -1);
    EXPECT_EQ(IdsOf(list), Ids{"before"});
  }
};

TEST_F(BusyCatalogue, CountsAsMissingWhenItIsBusyBehindItsRow) {
  Catalogue(Ids{"a"});
  for (const int rows : {kAtPreparation, 0, 1}) {
    log.Forget();
    const FailingRows failing(kConfigRows, rows);
    ExpectFailure();
    EXPECT_TRUE(log.HasError("reader.parse json err, json file is \n!")) << rows;
  }
  EXPECT_EQ(ListedIds(), Ids{"a"});
}

TEST_F(BusyCatalogue, DoesNotKeepTheTextsThatItCouldNotUse) {
  constexpr std::size_t kSize = 1 << 20;
  Catalogue(Ids{std::string(kSize, 'a')});
  const auto fail = [] {
    const FailingRows failing(kConfigRows, 1);
    ExpectFailure();
  };
  fail();
  const std::size_t before = test::AllocatedBytes();
  for (int i = 0; i < 10; ++i) fail();
  EXPECT_LT(test::AllocatedBytes(), before + kSize);
}

TEST_F(BusyCatalogue, HasNoTestAppsWhileTheirValueIsBusyBehindItsRow) {
  Catalogue(Ids{"a"});
  TestApps("a,1,t,g");
  {
    const FailingRows failing(kConfigRows, 1);
    EXPECT_EQ(ListedIds(true), Ids{});
    std::map<std::string, _APPS_INNER_INFO_T> test_apps;
    GetBuiltInTestAppList(test_apps);
    EXPECT_TRUE(test_apps.empty());
  }
  EXPECT_EQ(ListedIds(true), Ids{"a"});
}

class BusyJsonList : public ::testing::Test {
 protected:
  BusyJsonList() {
    device.InstallAll({App("a"), App("b"), App("c")});
    EXPECT_EQ(app_control_create(&m_request), 0);
    EXPECT_EQ(app_control_add_extra_data(m_request, "all_app", "true"), 0);
  }
  ~BusyJsonList() override { app_control_destroy(m_request); }

  Answer ListJson() const {
    return test::Ask([this](char** json) { return tav_get_app_list_json(m_request, json); });
  }
  static Ids IdsIn(const std::string& text) {
    Json::Value root;
    const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
    EXPECT_TRUE(reader->parse(text.data(), text.data() + text.size(), &root, nullptr));
    Ids ids;
    for (const Json::Value& app : root["app_list"]) ids.push_back(app["app_id"].asString());
    return ids;
  }

  test::Device device;
  test::Log& log = device.GetLog();

 private:
  app_control_h m_request = nullptr;
};

TEST_F(BusyJsonList, HasTheRowsThatWereReadBefore) {
  Answer answer;
  {
    const FailingRows failing(kAppRows, 2);
    answer = ListJson();
  }
  EXPECT_EQ(answer.result, 0);
  EXPECT_EQ(IdsIn(answer.text), (Ids{"a", "b"}));
  EXPECT_EQ(log.Count(kBusyText), 1);
  device.Sql("delete from widgetinfo where id = 'c'");
  EXPECT_EQ(ListJson(), answer);  // byte for byte the list of these two
}

TEST_F(BusyJsonList, IsNothingAndASuccessWhenNoRowWasRead) {
  for (const int rows : {kAtPreparation, 0}) {
    const FailingRows failing(kAppRows, rows);
    EXPECT_EQ(ListJson(), test::kNothing) << rows;
  }
  EXPECT_FALSE(log.Has("tav_get_app_list_json fail"));
}

TEST_F(BusyJsonList, OfOneAppFailsAlsoWhenItsRowWasRead) {
  for (const int rows : {kAtPreparation, 0, 1}) {
    const FailingRows failing(kAppRows, rows);
    EXPECT_EQ(test::Ask([](char** json) { return tav_get_app_info_json("a", json); }), test::kFails)
        << rows;
  }
  EXPECT_EQ(log.Count("Finish app_id:[a],ret[-2]"), 3);
}

}  // namespace
