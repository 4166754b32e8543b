// SPDX-License-Identifier: Apache-2.0
//
// Lists of apps as JSON texts, chosen by the extra data of a launch request.
#include <app_control.h>
#include <json/reader.h>
#include <json/value.h>

#include <chrono>
#include <map>
#include <memory>

#include "exports.h"
#include "support/unreadable_row.h"
#include "support/writer.h"

namespace {

using test::Answer;
using test::App;
using test::Ask;
using test::Golden;
using test::kFails;
using test::kNothing;
using Extras = std::map<std::string, std::string>;
using Ids = std::vector<std::string>;

struct Destroy {
  void operator()(app_control_h request) const { app_control_destroy(request); }
};
using Request = std::unique_ptr<app_control_s, Destroy>;

Request RequestWith(const Extras& extras) {
  app_control_h request = nullptr;
  EXPECT_EQ(app_control_create(&request), 0);
  for (const auto& [key, value] : extras) {
    EXPECT_EQ(app_control_add_extra_data(request, key.c_str(), value.c_str()), 0);
  }
  return Request(request);
}

Answer ListJson(const Extras& extras) {
  const Request request = RequestWith(extras);
  return Ask([&request](char** json) { return tav_get_app_list_json(request.get(), json); });
}

// The ids of a list, and the number of keys of each of its apps.
std::pair<Ids, std::size_t> Listed(const Extras& extras) {
  const Answer answer = ListJson(extras);
  EXPECT_EQ(answer.result, 0);
  if (answer == kNothing) return {{}, 0};
  Json::Value root;
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  EXPECT_TRUE(
      reader->parse(answer.text.data(), answer.text.data() + answer.text.size(), &root, nullptr));
  EXPECT_EQ(root.getMemberNames(), Ids{"app_list"});
  Ids ids;
  for (const Json::Value& app : root["app_list"]) {
    EXPECT_EQ(app.size(), root["app_list"][0].size());
    ids.push_back(app["app_id"].asString());
  }
  return {ids, root["app_list"][0].size()};
}

std::pair<Ids, std::size_t> Full(const Ids& ids) {
  return {ids, 60};
}
std::pair<Ids, std::size_t> OfTheCatalogue(const Ids& ids) {
  return {ids, 8};
}

class AppsAsJson : public ::testing::Test {
 protected:
  void InstallThree() {
    device.InstallAll({App("b").Featured(1).Index(2).Title("2").UseCount(1),
                       App("a").Featured(2).Index(1).Title("1").UseCount(2),
                       App("hidden").Featured(1).Hidden()});
    device.Configure("RESERVED_15",
                     R"({"rsp":{"stat":"ok","apps":[{"id":"built-in"},{"id":"tested"}]}})");
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(AppsAsJson, AreTheWholeTextWithAllKindsOfCharacters) {
  device.InstallAll(
      {App("plain").Title("Clock"), App("foreign").Title("\u00dcber \u6642\u8a08 \U0001f600"),
       App("control").Title("\x01\b\t\n\f\r\x1f\x7f"), App("quotes").Title("\"'\\/<>&"),
       App("invalid").Title("a\xff"
                            "b")});
  EXPECT_EQ(ListJson({{"all_app", "true"}}), (Answer{0, Golden("list.json")}));
}

TEST_F(AppsAsJson, AreTheWholeTextOfTheBuiltInApps) {
  device.Configure("RESERVED_15",
                   R"({"rsp":{"stat":"ok","apps":[{"id":"a","tizenId":"t","packageId":"p",)"
                   R"("title":"\"\u00dc\""},{"id":"b"}]}})");
  device.Configure("RESERVED_16", "a,1.0,type,tag");
  device.Write("packages.ini", "[p]\nversion=1.0\nicon=/icons/p.png\n");
  EXPECT_EQ(ListJson({{"built_in_app", "true"}}), (Answer{0, Golden("built_in.json")}));
}

TEST_F(AppsAsJson, AreTheInstalledAppsInTheOrderOfTheList) {
  InstallThree();
  EXPECT_EQ(Listed({{"app_featured", "65535"}, {"view_mode", "1"}}), Full({"a", "b"}));
  EXPECT_EQ(Listed({{"app_featured", "65535"}, {"view_mode", "4"}}), Full({"b", "a"}));
  EXPECT_EQ(Listed({{"app_featured", "1"}, {"view_mode", "1"}}), Full({"b"}));
  EXPECT_EQ(Listed({{"app_featured", "3"}}), Full({"a", "b"}));
  EXPECT_EQ(Listed({{"all_app", "true"}}), Full({"b", "a", "hidden"}));
}

TEST_F(AppsAsJson, HaveTheSourceOfTheirColumn) {
  device.Install(App("a").Set("install_source_type", 7));
  EXPECT_NE(ListJson({{"all_app", "true"}}).text.find("\"source_type\" : \"7\""),
            std::string::npos);
}

TEST_F(AppsAsJson, AreTheBuiltInAppsWhateverElseIsAskedFor) {
  InstallThree();
  EXPECT_EQ(Listed({{"built_in_app", "true"}}), OfTheCatalogue({"built-in", "tested"}));
  EXPECT_EQ(Listed({{"built_in_app", "true"}, {"all_app", "true"}, {"app_featured", "1"}}),
            OfTheCatalogue({"built-in", "tested"}));
}

TEST_F(AppsAsJson, AreTheTestAppsAmongTheBuiltInOnesAlone) {
  InstallThree();
  device.Configure("RESERVED_16", "tested,1,type,tag");
  EXPECT_EQ(Listed({{"built_in_app", "true"}, {"test_app_only", "true"}}),
            OfTheCatalogue({"tested"}));
  EXPECT_EQ(Listed({{"all_app", "true"}, {"test_app_only", "true"}}), Full({"b", "a", "hidden"}));
}

TEST_F(AppsAsJson, AreSwitchedByTheExactTextAlone) {
  InstallThree();
  device.Configure("RESERVED_16", "tested,1,type,tag");
  for (const char* value : {"1", "TRUE", "True", "true ", " true", "yes", "", "false", "truer"}) {
    EXPECT_EQ(Listed({{"built_in_app", value}, {"app_featured", "1"}}), Full({"b"})) << value;
    EXPECT_EQ(Listed({{"all_app", value}, {"app_featured", "1"}}), Full({"b"})) << value;
    EXPECT_EQ(Listed({{"built_in_app", "true"}, {"test_app_only", value}}),
              OfTheCatalogue({"built-in", "tested"}))
        << value;
  }
}

TEST_F(AppsAsJson, LogTheRequest) {
  ListJson({{"app_featured", "5"}, {"view_mode", "2"}, {"all_app", "true"}});
  EXPECT_TRUE(log.Has("app_featured 5, view_mode 2, built_in_app 0, all_app 1"));
  EXPECT_TRUE(log.Has("has key[app_featured] value[5]"));
  EXPECT_TRUE(log.Has("do not have key[built_in_app]!!"));
  ListJson({{"built_in_app", "true"}, {"all_app", "TRUE"}});
  EXPECT_TRUE(log.Has("app_featured , view_mode , built_in_app 1, all_app 0"));
  ListJson({{"app_featured", "none"}, {"built_in_app", "true"}, {"all_app", "true"}});
  EXPECT_TRUE(log.Has("app_featured none, view_mode , built_in_app 1, all_app 1"));
}

TEST_F(AppsAsJson, ReadTheFiveKeysOfTheRequestInTheirOrderBeforeAnythingElse) {
  ListJson({});
  const std::vector<std::string> expected = {
      "do not have key[app_featured]!!",     "do not have key[view_mode]!!",
      "do not have key[built_in_app]!!",     "do not have key[all_app]!!",
      "do not have key[test_app_only]!!",    "app_featured , view_mode , built_in_app 0, all_app 0",
      "Start, app_featured:[], view_mode:[]"};
  std::vector<std::string> messages = log.Messages();
  ASSERT_GT(messages.size(), expected.size());
  messages.resize(expected.size());
  EXPECT_EQ(messages, expected);
}

TEST_F(AppsAsJson, AreTheBuiltInAppsAlsoDuringAFactoryReset) {
  InstallThree();
  device.FactoryReset(1);
  EXPECT_EQ(Listed({{"built_in_app", "true"}}), OfTheCatalogue({"built-in", "tested"}));
  EXPECT_EQ(ListJson({{"app_featured", "1"}}), kFails);
}

TEST_F(AppsAsJson, FailWithoutAnyExtraDataOrWithoutAFeaturedNumber) {
  InstallThree();
  for (const Extras& extras : {Extras{}, Extras{{"view_mode", "1"}}, Extras{{"app_featured", "0"}},
                               Extras{{"app_featured", "16"}}, Extras{{"app_featured", "none"}}}) {
    log.Forget();
    EXPECT_EQ(ListJson(extras), kFails);
    EXPECT_TRUE(log.Has("in param featured error"));
    EXPECT_TRUE(log.Has("tav_get_app_list_json fail"));
  }
}

TEST_F(AppsAsJson, AreNothingAndASuccessWhenThereIsNone) {
  EXPECT_EQ(ListJson({{"all_app", "true"}}), kNothing);
  EXPECT_EQ(ListJson({{"app_featured", "1"}}), kNothing);
  EXPECT_EQ(ListJson({{"built_in_app", "true"}, {"test_app_only", "true"}}), kNothing);
  device.Configure("RESERVED_15", R"({"rsp":{"stat":"ok","apps":[]}})");
  EXPECT_EQ(ListJson({{"built_in_app", "true"}}), kNothing);
}

TEST_F(AppsAsJson, FailWhenTheirListFails) {
  InstallThree();
  device.Configure("RESERVED_15", "no JSON");
  EXPECT_EQ(ListJson({{"built_in_app", "true"}}), kFails);
  device.FactoryReset(1);
  EXPECT_EQ(ListJson({{"all_app", "true"}}), kFails);
  device.FactoryReset(0).Write("opt/dbspace/pkgreinstall", "");
  EXPECT_EQ(ListJson({{"all_app", "true"}}), kFails);
  EXPECT_EQ(ListJson({{"built_in_app", "true"}}), kFails);
  std::filesystem::remove(device.Root() / "opt/dbspace/pkgreinstall");
  EXPECT_EQ(Listed({{"all_app", "true"}}), Full({"b", "a", "hidden"}));
}

TEST_F(AppsAsJson, FailWhenTheirStatementCannotBePrepared) {
  InstallThree();
  device.Sql("alter table widgetinfo rename to aside");
  EXPECT_EQ(ListJson({{"all_app", "true"}}), kFails);
  EXPECT_EQ(Listed({{"built_in_app", "true"}}), OfTheCatalogue({"built-in", "tested"}));
}

TEST_F(AppsAsJson, AreNothingAndASuccessWhenTheirTableGoesUnderTheOpenDatabase) {
  InstallThree();
  ASSERT_EQ(ListJson({{"all_app", "true"}}).result, 0);
  device.Sql("alter table widgetinfo rename to aside");
  EXPECT_EQ(ListJson({{"all_app", "true"}}), kNothing);
}

TEST_F(AppsAsJson, AreNothingAndASuccessWhileTheDatabaseStaysBusy) {
  InstallThree();
  {  // at the preparation, before the first statement
    const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
    EXPECT_EQ(ListJson({{"all_app", "true"}}), kNothing);
    EXPECT_TRUE(log.Has("Finish ret[-2]"));
  }
  ASSERT_EQ(ListJson({{"all_app", "true"}}).result, 0);
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  EXPECT_EQ(ListJson({{"all_app", "true"}}), kNothing);
}

TEST_F(AppsAsJson, EndBeforeTheFirstRowThatCannotBeRead) {
  device.InstallAll({App("a"), App("b"), App("c")});
  test::MakeUnreadable(device, "b");
  EXPECT_EQ(Listed({{"all_app", "true"}}), Full({"a"}));
  EXPECT_TRUE(log.HasError("unknown type 11"));
}

TEST_F(AppsAsJson, FailWithoutAPlaceForTheText) {
  InstallThree();
  EXPECT_EQ(tav_get_app_list_json(RequestWith({{"all_app", "true"}}).get(), nullptr), -1);
  EXPECT_EQ(tav_get_app_list_json(nullptr, nullptr), -1);
  EXPECT_FALSE(log.Has("has key[all_app] value[true]"));
}

TEST_F(AppsAsJson, TakeNoRequestForOneWithoutData) {
  InstallThree();
  EXPECT_EQ(Ask([](char** json) { return tav_get_app_list_json(nullptr, json); }), kFails);
  EXPECT_TRUE(log.Has("do not have key[test_app_only]!!"));
  EXPECT_TRUE(log.Has("app_featured , view_mode , built_in_app 0, all_app 0"));
  EXPECT_TRUE(log.HasError("tav_get_app_list_json fail"));
}

TEST_F(AppsAsJson, AreWholeWhenTheyAreLong) {
  std::vector<App> apps;
  Ids ids;
  for (int i = 0; i < 200; ++i) {
    ids.push_back("app" + std::to_string(i));
    apps.push_back(App(ids.back()).Title(std::string(500, 't')));
  }
  device.InstallAll(apps);
  EXPECT_EQ(Listed({{"all_app", "true"}}), Full(ids));
}

TEST_F(AppsAsJson, AreNotLogged) {
  device.Install(App("a"));
  EXPECT_EQ(Listed({{"all_app", "true"}}), Full({"a"}));
  for (const std::string& message : log.Messages()) {
    EXPECT_EQ(message.find("app_list\""), std::string::npos) << message;
  }
}

TEST_F(AppsAsJson, ReadTheExtraDataOfARequest) {
  const Request request = RequestWith({{"key", "value"}, {"empty", ""}});
  std::string value = "untouched";
  EXPECT_FALSE(db_get_app_control_data(request.get(), "other", value));
  EXPECT_EQ(value, "untouched");
  EXPECT_TRUE(log.Has("do not have key[other]!!"));
  EXPECT_TRUE(db_get_app_control_data(request.get(), "key", value));
  EXPECT_EQ(value, "value");
  EXPECT_TRUE(log.Has("has key[key] value[value]"));
  EXPECT_TRUE(db_get_app_control_data(request.get(), "empty", value));
  EXPECT_EQ(value, "");
  value = "untouched";
  EXPECT_FALSE(db_get_app_control_data(nullptr, "key", value));
  EXPECT_EQ(value, "untouched");
}

}  // namespace
