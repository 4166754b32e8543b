// SPDX-License-Identifier: Apache-2.0
//
// The getters of single settings: values, failures and what is written of them.
#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "settings/watching.h"
#include "tav_db_api.h"

namespace {

using test::Texts;
using test::Written;

template <typename Out>
struct Getter {
  const char* function;
  int (*get)(Out* value);
  const char* key;
  const char* before;  // what stands before the value in the line of a success, or null
  const char* after;
  const char* failure;  // the line of a failure, or null

  Texts OnSuccess(const std::string& value) const {
    return before != nullptr ? Texts{std::string("I ") + before + value + after} : Texts();
  }
  Texts OnFailure() const { return Texts{std::string("E ") + failure}; }
};

template <typename Out>
std::ostream& operator<<(std::ostream& stream, const Getter<Out>& getter) {
  return stream << getter.function;
}

template <typename Out>
std::string NameOf(const ::testing::TestParamInfo<Getter<Out>>& info) {
  return info.param.function;
}

const Getter<int> kIntGetters[] = {
    {"tav_get_tv_sync_status", tav_get_tv_sync_status, "db/tav/app_sync_status", "Finish,status:[",
     "]", "Failed to get vconf value key= db/tav/app_sync_status"},
    {"tav_get_factory_reset_type", tav_get_factory_reset_type, "db/tav/factory_reset", nullptr,
     nullptr, "Failed to get vconf value key= db/tav/factory_reset"},
    {"tav_get_appsync_start_status", tav_get_appsync_start_status, "memory/tav/appsync", nullptr,
     nullptr, "Failed to get vconf value key= memory/tav/appsync"},
    {"tav_get_homedeck_reset_status", tav_get_homedeck_reset_status, "db/homedeck/reset/tavcore",
     nullptr, nullptr, "Failed to get vconf value key= db/homedeck/reset/tavcore"},
    {"tav_get_tav_boot_status", tav_get_tav_boot_status, "memory/tav/boot_status", nullptr, nullptr,
     "Failed to get vconf value key= memory/tav/boot_status"},
};

const Getter<char*> kTextGetters[] = {
    {"tav_get_appkey", tav_get_appkey, "db/comss/appkey", "App key info = [", "]",
     "Failed to get app key from [db/comss/appkey]."},
    {"tav_get_kestrana_ver", tav_get_kestrana_ver, "db/comss/kestranaversion",
     "Kestrana verison = [", "]",
     "Failed to get kestrana verison from [db/comss/kestranaversion]."},
    {"tav_get_installed_appid", tav_get_installed_appid, "memory/tav/app_install", nullptr, nullptr,
     "Failed to get vconf value key= memory/tav/app_install"},
};

// Every line is the getter's own.
void ExpectLinesOf(const std::string& function, const test::Log& log) {
  for (const auto& line : log.Lines()) {
    EXPECT_EQ(line.function, function);
    EXPECT_EQ(line.file, "tav_db_api_settings.cpp");
  }
}

class IntSetting : public ::testing::TestWithParam<Getter<int>> {
 protected:
  IntSetting() { device.Unset("db/tav/factory_reset"); }
  void ExpectFailure() {
    log.Forget();
    int value = 77;
    EXPECT_EQ(getter.get(&value), -1);
    EXPECT_EQ(value, 77);
    EXPECT_EQ(Written(log), getter.OnFailure());
    ExpectLinesOf(getter.function, log);
  }
  void ExpectValue(int expected) {
    log.Forget();
    int value = 77;
    EXPECT_EQ(getter.get(&value), 0);
    EXPECT_EQ(value, expected);
    EXPECT_EQ(Written(log), getter.OnSuccess(std::to_string(expected)));
    ExpectLinesOf(getter.function, log);
  }

  test::Device device;
  test::Log& log = device.GetLog();
  const Getter<int>& getter = GetParam();
};

TEST_P(IntSetting, IsReadAnewAtEveryCall) {
  for (const int value : {0, 1, 2, -1, INT_MAX, INT_MIN}) {
    device.Setting(getter.key, value);
    ExpectValue(value);
  }
}

TEST_P(IntSetting, IsAFailureWhileItIsMissing) {
  ExpectFailure();
  device.Setting(getter.key, 3);
  ExpectValue(3);
  device.Unset(getter.key);
  ExpectFailure();
}

TEST_P(IntSetting, IsAFailureWhenItIsAText) {
  device.Setting(getter.key, "3");
  ExpectFailure();
}

TEST_P(IntSetting, IsAFailureWhenItsFileIsDamaged) {
  device.Write(std::string("vconf/") + getter.key, "int\nthree\n");
  ExpectFailure();
}

TEST_P(IntSetting, IsAFailureWithNowhereToPutIt) {
  device.Setting(getter.key, 3);
  log.Forget();
  EXPECT_EQ(getter.get(nullptr), -1);
  EXPECT_EQ(Written(log), Texts{"W in param is NULL "});
  ExpectLinesOf(getter.function, log);
}

TEST_P(IntSetting, IsNotTakenFromAnotherKey) {
  for (const auto& other : kIntGetters) {
    if (std::string(other.key) != getter.key) device.Setting(other.key, 3);
  }
  ExpectFailure();
}

TEST_P(IntSetting, NeedsNoDatabaseAndIsReadDuringAResetAndARecovery) {
  std::filesystem::remove(device.DatabaseFile());
  device.Write("opt/dbspace/pkgreinstall", "");
  device.FactoryReset(1);
  device.Setting(getter.key, 1);
  ExpectValue(1);
}

INSTANTIATE_TEST_SUITE_P(Each, IntSetting, ::testing::ValuesIn(kIntGetters), NameOf<int>);

class TextSetting : public ::testing::TestWithParam<Getter<char*>> {
 protected:
  void ExpectFailure() {
    log.Forget();
    char mine[] = "mine";
    char* value = mine;
    EXPECT_EQ(getter.get(&value), -1);
    EXPECT_EQ(value, mine);
    EXPECT_STREQ(mine, "mine");
    EXPECT_EQ(Written(log), getter.OnFailure());
    ExpectLinesOf(getter.function, log);
  }
  void ExpectValue(const std::string& expected) {
    log.Forget();
    char* value = nullptr;
    ASSERT_EQ(getter.get(&value), 0);
    EXPECT_EQ(value, expected);
    std::free(value);
    EXPECT_EQ(Written(log), getter.OnSuccess(expected));
    ExpectLinesOf(getter.function, log);
  }

  test::Device device;
  test::Log& log = device.GetLog();
  const Getter<char*>& getter = GetParam();
};

TEST_P(TextSetting, IsReadAnewAtEveryCall) {
  const std::string values[] = {"org.example.clock", "",           "1",
                                "Uhr äöü %s %n",     "two\nlines", std::string(5000, 'x')};
  for (const std::string& value : values) {
    device.Setting(getter.key, value);
    ExpectValue(value);
  }
}

TEST_P(TextSetting, IsABlockOfItsOwnForEveryCaller) {
  device.Setting(getter.key, "first");
  char* first = nullptr;
  ASSERT_EQ(getter.get(&first), 0);
  device.Setting(getter.key, "second");
  char* second = nullptr;
  ASSERT_EQ(getter.get(&second), 0);
  EXPECT_NE(first, second);
  EXPECT_STREQ(first, "first");
  EXPECT_STREQ(second, "second");
  std::free(first);
  std::free(second);
}

TEST_P(TextSetting, IsAFailureWhileItIsMissing) {
  ExpectFailure();
  device.Setting(getter.key, "text");
  ExpectValue("text");
  device.Unset(getter.key);
  ExpectFailure();
}

TEST_P(TextSetting, IsAFailureWhenItIsANumber) {
  device.Setting(getter.key, 3);
  ExpectFailure();
}

TEST_P(TextSetting, IsAFailureWhenItsFileIsDamaged) {
  device.Write(std::string("vconf/") + getter.key, "strings\ntext\n");
  ExpectFailure();
}

TEST_P(TextSetting, IsAFailureWithNowhereToPutIt) {
  device.Setting(getter.key, "text");
  log.Forget();
  EXPECT_EQ(getter.get(nullptr), -1);
  EXPECT_EQ(Written(log), Texts{"W in param is NULL "});
  ExpectLinesOf(getter.function, log);
}

TEST_P(TextSetting, IsNotTakenFromAnotherKey) {
  for (const auto& other : kTextGetters) {
    if (std::string(other.key) != getter.key) device.Setting(other.key, "text");
  }
  ExpectFailure();
}

TEST_P(TextSetting, NeedsNoDatabaseAndIsReadDuringAResetAndARecovery) {
  std::filesystem::remove(device.DatabaseFile());
  device.Write("opt/dbspace/pkgreinstall", "");
  device.FactoryReset(1);
  device.Setting(getter.key, "text");
  ExpectValue("text");
}

INSTANTIATE_TEST_SUITE_P(Each, TextSetting, ::testing::ValuesIn(kTextGetters), NameOf<char*>);

}  // namespace
