// SPDX-License-Identifier: Apache-2.0
//
// Values of the service's configuration table by their names: whatever becomes of the question,
// the result is 0.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "settings/watching.h"
#include "support/sqlite_recorder.h"
#include "support/writer.h"
#include "tav_db_api.h"

namespace {

using test::Texts;
using test::Written;

class InnerConfig : public ::testing::Test {
 protected:
  InnerConfig() { device.Configure("NAME", "value"); }

  void ExpectValue(const char* name, const std::string& expected) {
    log.Forget();
    char* value = nullptr;
    EXPECT_EQ(tav_inner_config_db_api(name, &value), 0);
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value, expected);
    std::free(value);
    const Texts lines = Written(log);
    EXPECT_EQ(lines.front(), std::string("I tav_inner_config_db_api key ") + name);
    EXPECT_EQ(lines.back(), "I tav_inner_config_db_api value " + expected);
    EXPECT_EQ(log.Lines().front().function, "tav_inner_config_db_api");
    EXPECT_EQ(log.Lines().back().function, "tav_inner_config_db_api");
  }
  // The caller's pointer is neither written nor read.
  void ExpectNoValue(const char* name) {
    log.Forget();
    char mine[] = "mine";
    char* value = mine;
    EXPECT_EQ(tav_inner_config_db_api(name, &value), 0);
    EXPECT_EQ(value, mine);
    const Texts lines = Written(log);
    EXPECT_EQ(lines.front(),
              std::string("I tav_inner_config_db_api key ") + (name != nullptr ? name : "(null)"));
    EXPECT_EQ(lines.back(), "I tav_inner_config_db_api value (null)");
    EXPECT_EQ(log.Count("tav_inner_config_db_api value (null)"), 1);
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(InnerConfig, GivesAValueInANewBlock) {
  ExpectValue("NAME", "value");
}

TEST_F(InnerConfig, GivesTheValueOfTheNameAsItStandsNow) {
  device.Configure("OTHER", "other");
  ExpectValue("OTHER", "other");
  ExpectValue("NAME", "value");
  device.Configure("NAME", "changed");
  ExpectValue("NAME", "changed");
}

TEST_F(InnerConfig, GivesTextsOfAnyLengthAndContent) {
  for (const std::string& value : {std::string(), std::string(" "), std::string("100% %s äöü"),
                                   std::string("two\nlines"), std::string(100000, 'x')}) {
    device.Configure("NAME", value);
    ExpectValue("NAME", value);
  }
}

TEST_F(InnerConfig, GivesNullAsAnEmptyTextAndANumberAsItsDigits) {
  device.Sql("update TAVConfigTable set value = null where name = 'NAME'");
  ExpectValue("NAME", "");
  device.Sql("update TAVConfigTable set value = 17 where name = 'NAME'");
  ExpectValue("NAME", "17");
}

TEST_F(InnerConfig, TakesANameForWhatItIs) {
  device.Configure("it's \"%s\" -- ?", "odd");
  ExpectValue("it's \"%s\" -- ?", "odd");
  device.Configure("", "nameless");
  ExpectValue("", "nameless");
  ExpectNoValue("name");
  ExpectNoValue("NAME ");
  ExpectNoValue("' or '1' = '1");
}

TEST_F(InnerConfig, SucceedsWithoutAValueForANameThatIsMissing) {
  ExpectNoValue("MISSING");
  EXPECT_EQ(log.Messages('W'), Texts());
  EXPECT_EQ(log.Messages('E'), Texts());
}

TEST_F(InnerConfig, SucceedsWithoutAValueForNoName) {
  ExpectNoValue(nullptr);
  EXPECT_EQ(Written(log), (Texts{"I tav_inner_config_db_api key (null)", "W in param is NULL ",
                                 "I tav_inner_config_db_api value (null)"}));
}

TEST_F(InnerConfig, SucceedsWithNowhereToPutAValue) {
  log.Forget();
  EXPECT_EQ(tav_inner_config_db_api("NAME", nullptr), 0);
  EXPECT_EQ(Written(log), (Texts{"I tav_inner_config_db_api key NAME", "W in param is NULL ",
                                 "I tav_inner_config_db_api value (null)"}));
  EXPECT_EQ(tav_inner_config_db_api(nullptr, nullptr), 0);
}

TEST_F(InnerConfig, AsksOneStatement) {
  ExpectValue("NAME", "value");  // connects
  char* value = nullptr;
  EXPECT_EQ(test::CallsToSqlite([&] { tav_inner_config_db_api("NAME", &value); }),
            (test::SqliteCalls{"select value from TAVConfigTable where name = ?", "1 'NAME' -1",
                               "finalize"}));
  std::free(value);
  EXPECT_EQ(test::CallsToSqlite([] { tav_inner_config_db_api("NAME", nullptr); }),
            test::SqliteCalls());
  EXPECT_EQ(test::CallsToSqlite([&] { tav_inner_config_db_api(nullptr, &value); }),
            test::SqliteCalls());
}

TEST_F(InnerConfig, AnswersDuringAResetAndARecovery) {
  device.Write("opt/dbspace/pkgreinstall", "");
  device.FactoryReset(1);
  ExpectValue("NAME", "value");
}

TEST_F(InnerConfig, SucceedsWithoutAValueWithoutADatabaseAndAnswersWhenThereIsOne) {
  const std::string file = device.DatabaseFile().string();
  std::filesystem::rename(file, file + ".aside");
  ExpectNoValue("NAME");
  EXPECT_TRUE(log.HasError(file + " is not a file"));
  std::filesystem::rename(file + ".aside", file);
  ExpectValue("NAME", "value");
}

TEST_F(InnerConfig, SucceedsWithoutAValueWithoutTheTable) {
  device.Sql("drop table TAVConfigTable");
  ExpectNoValue("NAME");
  EXPECT_TRUE(log.HasError("unknown type 1"));
}

TEST_F(InnerConfig, SucceedsWithoutAValueFromABusyDatabaseAndGivesTheLockBack) {
  ExpectValue("NAME", "value");
  {
    const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
    ExpectNoValue("NAME");
    EXPECT_TRUE(log.HasError("Get DB fail:sql busy"));
  }
  ExpectValue("NAME", "value");
}

}  // namespace
