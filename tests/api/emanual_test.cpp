// SPDX-License-Identifier: Apache-2.0
//
// The id of the electronic manual: the platform's, or else the database's. The function below
// stands before the platform's own, so that a test can make it fail in ways that it cannot.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <system_info.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "support/device.h"
#include "support/writer.h"
#include "tav_db_api.h"

namespace {

enum class Platform { kAsItIs, kFailsAfterWriting, kSucceedsWithNull };

Platform g_platform = Platform::kAsItIs;
char g_not_the_heaps[] = "a text that was never allocated";

}  // namespace

extern "C" int system_info_get_custom_string(const char* key, char** value) {
  if (g_platform == Platform::kAsItIs) {
    return reinterpret_cast<decltype(system_info_get_custom_string)*>(
        dlsym(RTLD_NEXT, "system_info_get_custom_string"))(key, value);
  }
  const bool fails = g_platform == Platform::kFailsAfterWriting;
  *value = fails ? g_not_the_heaps : nullptr;
  return fails ? SYSTEM_INFO_ERROR_FAILED : SYSTEM_INFO_ERROR_NONE;
}

namespace {

constexpr char kNoPlatformId[] =
    "failed to get emanual's id, key:com.kordyne/featureconf/emanual.app_id";
constexpr char kAsksTheDatabase[] =
    "failed to get emanual id, or local set is NONE, id from emanual is NONE, so go to get the db "
    "emanual id";
constexpr char kNoManualId[] = "query sql fail or have no required record in database(EMANUAL_ID)";

class Emanual : public ::testing::Test {
 protected:
  void PlatformNames(const std::string& id) {
    device.Write("system-info.ini",
                 "[custom]\ncom.kordyne/featureconf/emanual.app_id=" + id + "\n");
  }
  void DatabaseNames(const std::string& id) { device.Configure("EMANUAL_ID", id); }
  // The result, and the id that was handed out or "untouched".
  static std::string Ask() {
    char before[] = "untouched";
    char* id = before;
    const int result = tav_get_emanual_id(&id);
    std::string answer = std::to_string(result) + " " + (id != nullptr ? id : "null");
    if (id != before) std::free(id);
    return answer;
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

// ---- From the platform ----

TEST_F(Emanual, IsThePlatformsWithoutTouchingTheDatabase) {
  PlatformNames("org.example.manual");
  DatabaseNames("org.example.other");
  EXPECT_EQ(Ask(), "0 org.example.manual");
  EXPECT_TRUE(log.Has("emanual's id is org.example.manual"));
  EXPECT_TRUE(log.Has("id from emanual is not NONE, is [org.example.manual]"));
  EXPECT_FALSE(log.Has(kAsksTheDatabase));
  EXPECT_FALSE(log.Has("Connected to DB"));
  EXPECT_EQ(log.Messages('E'), std::vector<std::string>());
}

TEST_F(Emanual, IsThePlatformsAlsoWithoutADatabase) {
  std::filesystem::remove(device.DatabaseFile());
  PlatformNames("org.example.manual");
  EXPECT_EQ(Ask(), "0 org.example.manual");
}

TEST_F(Emanual, IsThePlatformsWholeHoweverLong) {
  const std::string id(5000, 'm');
  PlatformNames(id);
  EXPECT_EQ(Ask(), "0 " + id);
}

TEST_F(Emanual, IsThePlatformsForAnythingButExactlyNone) {
  DatabaseNames("org.example.other");
  for (const std::string id : {"none", "NONE2", "NON", "50%s", "it's", ""}) {
    PlatformNames(id);
    EXPECT_EQ(Ask(), "0 " + id);
  }
  EXPECT_FALSE(log.Has("Connected to DB"));
}

// ---- From the database ----

TEST_F(Emanual, IsTheDatabasesWhenThePlatformNamesNone) {
  PlatformNames("NONE");
  DatabaseNames("org.example.manual");
  EXPECT_EQ(Ask(), "0 org.example.manual");
  EXPECT_TRUE(log.Has("emanual's id is NONE"));
  EXPECT_FALSE(log.Has(kNoPlatformId));
  EXPECT_TRUE(log.Has(kAsksTheDatabase));
  EXPECT_TRUE(log.Has("EmanualID in DB is[org.example.manual]"));
}

TEST_F(Emanual, IsTheDatabasesWhenThePlatformLacksTheKeyOrTheFile) {
  DatabaseNames("org.example.manual");
  EXPECT_EQ(Ask(), "0 org.example.manual");
  device.Write("system-info.ini", "[custom]\nanother.key=org.example.other\n");
  EXPECT_EQ(Ask(), "0 org.example.manual");
  EXPECT_EQ(log.Count(kNoPlatformId), 2);
  EXPECT_EQ(log.Count(kAsksTheDatabase), 2);
}

TEST_F(Emanual, IsTheDatabasesWhenThePlatformFailsAfterItHasWrittenSomething) {
  DatabaseNames("org.example.manual");
  g_platform = Platform::kFailsAfterWriting;
  EXPECT_EQ(Ask(), "0 org.example.manual");
  EXPECT_TRUE(log.Has(kNoPlatformId));
}

TEST_F(Emanual, IsTheDatabasesWhenThePlatformSucceedsWithoutAText) {
  DatabaseNames("org.example.manual");
  g_platform = Platform::kSucceedsWithNull;
  EXPECT_EQ(Ask(), "0 org.example.manual");
}

TEST_F(Emanual, OfTheDatabaseIsCutAt127Bytes) {
  for (const std::size_t length : {127, 128, 200}) {
    DatabaseNames(std::string(length, 'm'));
    EXPECT_EQ(Ask(), "0 " + std::string(127, 'm')) << length;
  }
}

TEST_F(Emanual, OfTheDatabaseMayBeAnyTextAndNoneAsWell) {
  for (const std::string id : {"NONE", "", "50%s", "it's"}) {
    DatabaseNames(id);
    EXPECT_EQ(Ask(), "0 " + id);
  }
  device.Sql("update TAVConfigTable set value = null");
  EXPECT_EQ(Ask(), "0 ");
}

// ---- Failures and refusals ----

TEST_F(Emanual, IsAFailureWhenTheDatabaseNamesNoneEither) {
  device.Configure("EMANUAL", "a").Configure("emanual_id", "b");
  EXPECT_EQ(Ask(), "-1 untouched");
  EXPECT_TRUE(log.HasError(kNoManualId));
}

TEST_F(Emanual, IsAFailureWithoutTheTableAndWithoutTheDatabase) {
  device.Sql("drop table TAVConfigTable");
  EXPECT_EQ(Ask(), "-1 untouched");
  EXPECT_EQ(log.Count(kNoManualId), 1);
  std::filesystem::remove(device.DatabaseFile());
  EXPECT_EQ(Ask(), "-1 untouched");
  EXPECT_EQ(log.Count(kNoManualId), 2);
}

TEST_F(Emanual, IsBusyWhileTheDatabaseIsKeptAndAnswersAfterwards) {
  DatabaseNames("org.example.manual");
  {
    const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
    EXPECT_EQ(Ask(), "-2 untouched");
    EXPECT_EQ(log.Count(kNoManualId), 1);
  }
  EXPECT_EQ(Ask(), "0 org.example.manual");
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  EXPECT_EQ(Ask(), "-2 untouched");
  EXPECT_EQ(log.Count(kNoManualId), 2);
}

TEST_F(Emanual, RefusesANullPointerWithAMessageThatEndsWithoutABlank) {
  PlatformNames("org.example.manual");
  EXPECT_EQ(tav_get_emanual_id(nullptr), -1);
  EXPECT_TRUE(log.HasNotice("in param is NULL"));
  EXPECT_FALSE(log.Has("in param is NULL "));
  EXPECT_FALSE(log.Has("emanual's id is org.example.manual"));
}

TEST_F(Emanual, IsGivenInAnyStateOfThePlatform) {
  DatabaseNames("org.example.database");
  device.FactoryReset(1).Write("opt/dbspace/pkgreinstall", "");
  EXPECT_EQ(Ask(), "0 org.example.database");
  PlatformNames("org.example.platform");
  EXPECT_EQ(Ask(), "0 org.example.platform");
  EXPECT_FALSE(log.Has("FactoryReset is true"));
  EXPECT_FALSE(log.Has("Pkgmgr is recovering"));
}

}  // namespace
