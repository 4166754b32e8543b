// SPDX-License-Identifier: Apache-2.0
//
// The health check: its judgement and the lines that tell it.
#include "tav_db_api/tav_db_client_health.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>

#include "support/device.h"
#include "support/writer.h"

namespace {

class Health : public ::testing::Test {
 protected:
  // The whole of what the check says.
  std::vector<std::string> Said() const { return log.Messages(); }

  test::Device device;
  test::Log& log = device.GetLog();
  const std::string file = device.DatabaseFile().string();
};

using Lines = std::vector<std::string>;

TEST_F(Health, FindsAnEmptyButWholeDatabaseValid) {
  EXPECT_TRUE(tavdb_check_is_valid());
  EXPECT_EQ(Said(), (Lines{file + " table status 1", file + " is_valid [1] "}));
  EXPECT_EQ(log.Messages('I'), Said());
}

TEST_F(Health, RefusesAMissingFile) {
  std::filesystem::remove(file);
  EXPECT_FALSE(tavdb_check_is_valid());
  EXPECT_EQ(Said(), Lines{file + " is not a file"});
  EXPECT_TRUE(log.HasError(file + " is not a file"));
}

TEST_F(Health, RefusesADirectory) {
  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  EXPECT_FALSE(tavdb_check_is_valid());
  EXPECT_EQ(Said(), Lines{file + " is not a file"});
}

TEST_F(Health, RefusesAnEmptyFile) {
  std::filesystem::resize_file(file, 0);
  EXPECT_FALSE(tavdb_check_is_valid());
  EXPECT_EQ(Said(), Lines{"size of " + file + " is 0"});
  EXPECT_TRUE(log.HasError("size of " + file + " is 0"));
}

TEST_F(Health, RefusesAFileThatIsNoDatabase) {
  device.Write("dbspace/.tavcore.db", std::string(8192, 'g'));
  EXPECT_FALSE(tavdb_check_is_valid());
  EXPECT_EQ(log.Messages('E'),
            (Lines{file + " integrity_check failed, ret 26", file + " integrity_check not ok"}));
}

TEST_F(Health, RefusesATruncatedDatabase) {
  for (int i = 0; i < 200; ++i) device.Install(test::App("org.example.app" + std::to_string(i)));
  std::filesystem::resize_file(file, std::filesystem::file_size(file) / 2);
  EXPECT_FALSE(tavdb_check_is_valid());
  EXPECT_TRUE(log.HasError(file + " integrity_check not ok"));
  EXPECT_FALSE(log.Has(file + " is_valid [1] "));
}

TEST_F(Health, RefusesADatabaseWithoutTheConfigurationTable) {
  device.Sql("drop table TAVConfigTable");
  EXPECT_FALSE(tavdb_check_is_valid());
  EXPECT_EQ(log.Messages('I'), (Lines{file + " table status 0", file + " is_valid [0] "}));
}

TEST_F(Health, RefusesADatabaseWithoutTheAppsTable) {
  device.Sql("alter table widgetinfo rename to WIDGETINFO2");
  EXPECT_FALSE(tavdb_check_is_valid());
  EXPECT_EQ(log.Messages('I'), (Lines{file + " table status 0", file + " is_valid [0] "}));
}

TEST_F(Health, TakesADatabaseThatItsWriterKeepsForValid) {
  const test::ExclusiveWriter writer(file, std::chrono::seconds(30));
  EXPECT_TRUE(tavdb_check_is_valid());
  EXPECT_TRUE(log.HasError("sqlite3 busy, return valid"));
  EXPECT_TRUE(log.Has(file + " is_valid [1] "));
}

TEST_F(Health, SaysThatADatabaseFailedItsIntegrityCheckWhenNoRowIsOk) {
  // An index that says it is of another column than the one whose values it holds.
  device.Install(test::App("org.example.a").Title("A")).Install(test::App("org.example.b"));
  device.Sql("create index by_title on widgetinfo(title)");
  device.Sql(
      "pragma writable_schema = on;"
      "update sqlite_master set sql = 'create index by_title on widgetinfo(version)'"
      " where name = 'by_title'");
  EXPECT_FALSE(tavdb_check_is_valid());
  EXPECT_TRUE(log.HasError("sqlite3 error 101"));
  EXPECT_TRUE(log.HasError(file + " integrity_check failed"));
  EXPECT_TRUE(log.HasError(file + " integrity_check not ok"));
}

}  // namespace
