// SPDX-License-Identifier: Apache-2.0
//
// What makes a lookup refuse: states of the platform and arguments, in the order of the checks.
#include <gtest/gtest.h>

#include <cstring>

#include "support/device.h"
#include "tav_db_api_inner.h"

namespace {

using test::App;

struct Lookup {
  const char* name;
  int (*call)(const char* key, tav_app_info_s* info);
  const char* empty_complaint;
};

std::ostream& operator<<(std::ostream& out, const Lookup& lookup) {
  return out << lookup.name;
}

const Lookup kLookups[] = {
    {"tav_get_app_info", tav_get_app_info, "app_id is empty "},
    {"tav_get_app_info_by_tizenid", tav_get_app_info_by_tizenid, "app_id is empty "},
    {"tav_get_app_info_by_runtitle", tav_get_app_info_by_runtitle, "runtitile is empty "},
    {"m_tav_get_app_info", m_tav_get_app_info, "app_id is empty "},
    {"GetAppInfoByRuntitle",
     [](const char* key, tav_app_info_s* info) { return GetAppInfoByRuntitle(info, key); },
     "runtitile is empty "},
};

class LookupGuards : public ::testing::TestWithParam<Lookup> {
 protected:
  LookupGuards() {
    device.Install(App("key").RunTitle("key"));
    std::memset(&info, 'x', sizeof(info));
  }
  int Call(const char* key) { return GetParam().call(key, &info); }
  bool RecordIsUntouched() const {
    const char* bytes = reinterpret_cast<const char*>(&info);
    return std::string(bytes, sizeof(info)) == std::string(sizeof(info), 'x');
  }

  test::Device device;
  test::Log& log = device.GetLog();
  tav_app_info_s info;
};

TEST_P(LookupGuards, RefusesDuringAFactoryResetAndLeavesTheRecordUntouched) {
  for (const int type : {1, 2}) {
    device.FactoryReset(type);
    EXPECT_EQ(Call("key"), -1);
    EXPECT_TRUE(RecordIsUntouched());
  }
  EXPECT_TRUE(log.HasNotice("FactoryReset is true"));
  EXPECT_FALSE(log.Has("Connected to DB"));
  device.FactoryReset(3);
  EXPECT_EQ(Call("key"), 0);
  EXPECT_STREQ(info.app_id, "key");
}

TEST_P(LookupGuards, RefusesDuringARecoveryOfThePackageManager) {
  device.Write("opt/dbspace/pkgreinstall", "");
  EXPECT_EQ(Call("key"), -1);
  EXPECT_TRUE(RecordIsUntouched());
  EXPECT_TRUE(log.HasError("Pkgmgr is recovering"));
  EXPECT_FALSE(log.Has("Connected to DB"));
  std::filesystem::remove(device.Root() / "opt/dbspace/pkgreinstall");
  EXPECT_EQ(Call("key"), 0);
}

TEST_P(LookupGuards, RefusesNullArguments) {
  EXPECT_EQ(Call(nullptr), -1);
  EXPECT_EQ(GetParam().call("key", nullptr), -1);
  EXPECT_EQ(GetParam().call(nullptr, nullptr), -1);
  EXPECT_EQ(log.Count("in param is NULL "), 3);
  EXPECT_TRUE(RecordIsUntouched());
  EXPECT_FALSE(log.Has("Connected to DB"));
}

TEST_P(LookupGuards, SaysInAYellowNoticeThatAnArgumentIsNull) {
  EXPECT_EQ(Call(nullptr), -1);
  EXPECT_EQ(log.Messages('W'), std::vector<std::string>{"in param is NULL "});
  EXPECT_TRUE(log.HasNotice("in param is NULL "));
  EXPECT_TRUE(log.Messages('E').empty());
}

TEST_P(LookupGuards, AsksForNullBeforeItAsksForAnEmptyKey) {
  EXPECT_EQ(GetParam().call("", nullptr), -1);
  EXPECT_EQ(log.Messages('W'), std::vector<std::string>{"in param is NULL "});
  EXPECT_TRUE(log.HasNotice("in param is NULL "));
  EXPECT_FALSE(log.Has(GetParam().empty_complaint));
}

TEST_P(LookupGuards, RefusesAnEmptyKey) {
  EXPECT_EQ(Call(""), -1);
  EXPECT_EQ(log.Messages('W'), std::vector<std::string>{GetParam().empty_complaint});
  EXPECT_TRUE(log.HasNotice(GetParam().empty_complaint));
  EXPECT_TRUE(RecordIsUntouched());
  EXPECT_FALSE(log.Has("Connected to DB"));
}

TEST_P(LookupGuards, AsksForTheResetFirstThenTheRecoveryThenTheArguments) {
  device.FactoryReset(1).Write("opt/dbspace/pkgreinstall", "");
  EXPECT_EQ(Call(nullptr), -1);
  EXPECT_FALSE(log.Has("Pkgmgr is recovering"));
  device.FactoryReset(0);
  EXPECT_EQ(Call(nullptr), -1);
  EXPECT_TRUE(log.Has("Pkgmgr is recovering"));
  EXPECT_FALSE(log.Has("in param is NULL "));
}

TEST_P(LookupGuards, ReleasesTheLockOnEveryPath) {
  // Were it kept on one of them, the next call would never return.
  Call(nullptr);
  Call("");
  device.FactoryReset(1);
  Call("key");
  device.FactoryReset(0).Write("opt/dbspace/pkgreinstall", "");
  Call("key");
  std::filesystem::remove(device.Root() / "opt/dbspace/pkgreinstall");
  Call("none");
  EXPECT_EQ(tav_get_app_info("key", &info), 0);
}

INSTANTIATE_TEST_SUITE_P(All, LookupGuards, ::testing::ValuesIn(kLookups),
                         [](const auto& lookup) { return std::string(lookup.param.name); });

}  // namespace
