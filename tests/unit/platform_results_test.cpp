// SPDX-License-Identifier: Apache-2.0
//
// Answers of the platform that its libraries on a PC never give: its functions stand here in the
// place of theirs.
#include <gtest/gtest.h>
#include <system_info.h>
#include <tzplatform_config.h>
#include <vconf.h>

#include <cstring>
#include <functional>
#include <string>

#include "support/device.h"
#include "tav_db_api/tav_db_client_checks.h"
#include "tav_db_api/tav_db_client_connection.h"
#include "tav_db_api_inner.h"

namespace {

std::function<int(char** value)> g_custom_string;
std::function<int(int* value)> g_setting;  // of the factory reset
std::string g_directory;                   // what the platform names, or null when it is empty

}  // namespace

extern "C" {

int system_info_get_custom_string(const char* /*key*/, char** value) {
  return g_custom_string(value);
}

int vconf_get_int(const char* /*key*/, int* value) {
  return g_setting(value);
}

const char* tzplatform_getenv(enum tzplatform_variable /*id*/) {
  return g_directory.empty() ? nullptr : g_directory.c_str();
}

}  // extern "C"

namespace {

using test::App;

constexpr char kNoWebId[] =
    "failed to get vitrine's web id, key:com.kordyne/featureconf/vitrine.webid";

class PlatformResults : public ::testing::Test {
 protected:
  PlatformResults() {
    device.Install(App("vitrine")).Install(App("web.demo"));
    std::memset(&info, 'x', sizeof(info));
    g_directory = device.DatabaseFile().parent_path();
    g_setting = [](int* value) { return *value = 0; };
  }
  bool RecordIsUntouched() const {
    const char* bytes = reinterpret_cast<const char*>(&info);
    return std::string(bytes, sizeof(info)) == std::string(sizeof(info), 'x');
  }

  test::Device device;
  test::Log& log = device.GetLog();
  tav_app_info_s info;
};

TEST_F(PlatformResults, WithoutATextHaveNoWebId) {
  g_custom_string = [](char** value) {
    *value = nullptr;
    return 0;
  };
  EXPECT_EQ(tav_get_app_info("vitrine", &info), -1);
  EXPECT_TRUE(log.HasError(kNoWebId));
  EXPECT_TRUE(RecordIsUntouched());
  EXPECT_FALSE(log.Has("Connected to DB"));
  EXPECT_EQ(tav_get_app_info("web.demo", &info), 0);
}

TEST_F(PlatformResults, OfAFailureHaveNoWebIdWhateverWasWritten) {
  static char no_block[] = "web.demo";  // to free it would end the test
  g_custom_string = [](char** value) {
    *value = no_block;
    return -1;
  };
  EXPECT_EQ(tav_get_app_info("vitrine", &info), -1);
  EXPECT_TRUE(log.HasError(kNoWebId));
  EXPECT_FALSE(log.Has("vitrine's web id is web.demo"));
  EXPECT_TRUE(RecordIsUntouched());
  EXPECT_FALSE(log.Has("Connected to DB"));
}

TEST_F(PlatformResults, OfAFailedReadAreNoFactoryReset) {
  for (const int written : {1, 2}) {
    log.Forget();
    g_setting = [&](int* value) {
      *value = written;
      return -1;
    };
    EXPECT_EQ(CkeckIsFactoryReset(), 0);
    EXPECT_EQ(log.Messages(),
              std::vector<std::string>{"Failed to get vconf value key=(db/tav/factory_reset)"});
    EXPECT_TRUE(log.HasError("Failed to get vconf value key=(db/tav/factory_reset)"));
    EXPECT_FALSE(PlatformRefuses());
    EXPECT_EQ(tav_get_app_info("web.demo", &info), 0);
    EXPECT_STREQ(info.app_id, "web.demo");
  }
}

TEST_F(PlatformResults, OfAReadThatWritesNothingAreNoFactoryReset) {
  g_setting = [](int*) { return 0; };
  EXPECT_EQ(CkeckIsFactoryReset(), 0);
  EXPECT_TRUE(log.Messages().empty());
}

TEST_F(PlatformResults, WithoutADirectoryHaveNoDatabase) {
  g_directory.clear();
  EXPECT_EQ(DatabasePath(), "/.tavcore.db");
  EXPECT_EQ(tav_get_app_info("web.demo", &info), -1);
  EXPECT_TRUE(RecordIsUntouched());
  EXPECT_TRUE(log.HasError("Failed to connect to DB : unable to open database file"));
  EXPECT_TRUE(log.HasError("/.tavcore.db is not a file"));
  EXPECT_TRUE(log.Has("Get app info by app_id:[web.demo] finish, ret [-1]"));

  g_directory = device.DatabaseFile().parent_path();
  EXPECT_EQ(tav_get_app_info("web.demo", &info), 0);
  EXPECT_STREQ(info.app_id, "web.demo");
}

}  // namespace
