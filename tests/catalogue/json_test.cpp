// SPDX-License-Identifier: Apache-2.0
//
// One app as a JSON text.
#include <json/reader.h>
#include <json/value.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <new>
#include <thread>

#include "exports.h"
#include "inner_members.h"
#include "support/sqlite_recorder.h"
#include "support/writer.h"

namespace {

using test::Answer;
using test::App;
using test::Ask;
using test::Golden;
using test::kFails;

Answer AppJson(const char* id) {
  return Ask([id](char** json) { return tav_get_app_info_json(id, json); });
}

Json::Value Parsed(const std::string& text) {
  Json::Value root;
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  EXPECT_TRUE(reader->parse(text.data(), text.data() + text.size(), &root, nullptr)) << text;
  return root;
}

// The keys that an app is written with, and what its columns make of them.
std::map<std::string, std::string> ExpectedKeys(const App& app) {
  const auto members = test::ExpectedMembers(app);
  std::map<std::string, std::string> keys;
  const auto add = [&](const auto& table) {
    for (const auto& member : table) {
      if (member.key != nullptr) keys[member.key] = members.at(member.name);
    }
  };
  add(test::kInnerTexts);
  add(test::kInnerNumbers);
  add(test::kInnerFlags);
  keys["source_type"] = "1";
  return keys;
}

std::map<std::string, std::string> KeysOf(const Json::Value& object) {
  std::map<std::string, std::string> keys;
  for (const std::string& key : object.getMemberNames()) {
    EXPECT_TRUE(object[key].isString()) << key;
    keys[key] = object[key].asString();
  }
  return keys;
}

class AppAsJson : public ::testing::Test {
 protected:
  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(AppAsJson, IsTheWholeTextWithEveryColumnSet) {
  device.Install(test::AppWithEveryColumnSet("org.example.clock"));
  EXPECT_EQ(AppJson("org.example.clock"), (Answer{0, Golden("app.json")}));
}

TEST_F(AppAsJson, HasSixtyKeysEachWithTheValueOfItsOwnColumn) {
  const App given = test::AppWithEveryColumnSet("a");
  device.Install(given);
  const Answer answer = AppJson("a");
  ASSERT_EQ(answer.result, 0);
  const Json::Value root = Parsed(answer.text);
  EXPECT_EQ(root.getMemberNames(), std::vector<std::string>{"app_info"});
  ASSERT_TRUE(root["app_info"].isArray());
  ASSERT_EQ(root["app_info"].size(), 1U);
  const auto keys = KeysOf(root["app_info"][0]);
  EXPECT_EQ(keys, ExpectedKeys(given));
  EXPECT_EQ(keys.size(), 60U);
}

TEST_F(AppAsJson, WritesFlagsAndNumbersAsTexts) {
  device.Install(App("a")
                     .Set("size", 0)
                     .Set("app_index", -2147483647 - 1)
                     .Set("use_count", 2147483647)
                     .Set("reserved_tinyint_16", -1));
  const auto keys = KeysOf(Parsed(AppJson("a").text)["app_info"][0]);
  EXPECT_EQ(keys.at("size"), "0");
  EXPECT_EQ(keys.at("index"), "-2147483648");
  EXPECT_EQ(keys.at("use_count"), "2147483647");
  EXPECT_EQ(keys.at("is_disable_delete"), "1");
  EXPECT_EQ(keys.at("is_multi_home"), "0");
  EXPECT_EQ(keys.at("installState"), "3");
}

TEST_F(AppAsJson, HasItsKeysInTheOrderOfTheirBytes) {
  device.Install(test::AppWithEveryColumnSet("a"));
  std::vector<std::string> keys;
  const std::string text = AppJson("a").text;
  for (std::size_t at = text.find("\n\t\t\t\""); at != std::string::npos;
       at = text.find("\n\t\t\t\"", at + 1)) {
    keys.push_back(text.substr(at + 5, text.find('"', at + 5) - at - 5));
  }
  EXPECT_EQ(keys.size(), 60U);
  EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end()));
}

TEST_F(AppAsJson, IsFoundByAnyOfItsFiveNames) {
  device.Install(App("id")
                     .TizenId("tizen")
                     .Package("package")
                     .Set("hybrid_app", "native")
                     .Set("reserved_string_16", "android"));
  const Answer expected = AppJson("id");
  EXPECT_EQ(expected.result, 0);
  for (const char* name : {"tizen", "package", "native", "android"}) {
    EXPECT_EQ(AppJson(name), expected) << name;
  }
}

TEST_F(AppAsJson, IsLockedByTheAgeRule) {
  device.Setting("db/appstore/ratingvalue", "18+").Install(App("a").AgeLimit(18));
  EXPECT_EQ(KeysOf(Parsed(AppJson("a").text)["app_info"][0]).at("is_lock"), "1");
}

TEST_F(AppAsJson, FailsForAnAppThatIsNotThere) {
  device.InstallAll({App("a").InstallState(2), App("hidden").Hidden()});
  EXPECT_EQ(AppJson("a"), kFails);
  EXPECT_EQ(AppJson("b"), kFails);
  EXPECT_EQ(AppJson(""), kFails);
  EXPECT_EQ(AppJson("hidden").result, 0);
}

TEST_F(AppAsJson, FailsForNullArguments) {
  device.Install(App("a"));
  EXPECT_EQ(AppJson(nullptr), kFails);
  EXPECT_EQ(tav_get_app_info_json("a", nullptr), -1);
  EXPECT_EQ(tav_get_app_info_json(nullptr, nullptr), -1);
  EXPECT_EQ(log.Count("in param is NULL "), 3);
}

TEST_F(AppAsJson, FailsWhileThePlatformRefuses) {
  device.Install(App("a")).FactoryReset(2);
  EXPECT_EQ(AppJson("a"), kFails);
  EXPECT_TRUE(log.HasNotice("FactoryReset is true"));
  device.FactoryReset(0).Write("opt/dbspace/pkgreinstall", "");
  EXPECT_EQ(AppJson("a"), kFails);
  EXPECT_TRUE(log.HasError("Pkgmgr is recovering"));
}

TEST_F(AppAsJson, FailsWhenItsStatementCannotBePrepared) {
  device.Install(App("a")).Sql("alter table widgetinfo rename to aside");
  EXPECT_EQ(AppJson("a"), kFails);
  EXPECT_TRUE(log.Has("Finish app_id:[a],ret[-1]"));
  device.Sql("alter table aside rename to widgetinfo");
  EXPECT_EQ(AppJson("a").result, 0);
}

TEST_F(AppAsJson, FailsAlsoWhenTheDatabaseStaysBusy) {
  device.Install(App("a"));
  ASSERT_EQ(AppJson("a").result, 0);
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  EXPECT_EQ(AppJson("a"), kFails);
}

TEST_F(AppAsJson, FailsWhenAnExceptionEndsItAndWorksAgainAfterwards) {
  device.Install(App("a"));
  test::BeforePreparing(test::kSelectApps, [] { throw std::bad_alloc(); });
  EXPECT_EQ(AppJson("a"), kFails);
  EXPECT_TRUE(log.HasError("tav_get_app_info_json failed: std::bad_alloc"));
  EXPECT_EQ(AppJson("a").result, 0);
}

TEST_F(AppAsJson, IsWholeWhenItIsLongAndLoggedInPieces) {
  device.Install(App("a"));
  // The last of the titles makes a text of whole pieces.
  const std::size_t rest = 896 - AppJson("a").text.size() % 896;
  for (const std::size_t length : {std::size_t{1}, std::size_t{895}, std::size_t{896},
                                   std::size_t{897}, std::size_t{5000}, rest}) {
    device.Sql("delete from widgetinfo").Install(App("a").Title(std::string(length, 't')));
    log.Forget();
    const Answer answer = AppJson("a");
    ASSERT_EQ(answer.result, 0);
    EXPECT_EQ(KeysOf(Parsed(answer.text)["app_info"][0]).at("title").size(), length);
    const std::vector<std::string> messages = log.Messages('I');
    const std::size_t pieces = (answer.text.size() + 895) / 896;
    ASSERT_GT(messages.size(), pieces);
    std::string logged;
    for (std::size_t i = messages.size() - pieces; i < messages.size(); ++i) {
      EXPECT_LE(messages[i].size(), 896U);
      logged += messages[i];
    }
    EXPECT_EQ(logged, answer.text);
  }
}

TEST_F(AppAsJson, IsTheSameForSeveralThreadsAtOnce) {
  device.Install(test::AppWithEveryColumnSet("a"));
  const Answer expected = AppJson("a");
  std::vector<Answer> answers(4);
  std::vector<std::thread> threads;
  for (Answer& answer : answers) {
    threads.emplace_back([&answer, &expected] {
      for (int call = 0; call < 25; ++call) {
        answer = AppJson("a");
        if (!(answer == expected)) return;
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(answers, std::vector<Answer>(4, expected));
}

}  // namespace
