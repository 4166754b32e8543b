// SPDX-License-Identifier: Apache-2.0
//
// What exactly becomes of an answer that the platform does not give: the packages of the
// catalogue, the directories, and the settings behind a decision.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "faults/calls.h"
#include "faults/platform.h"
#include "faults/seeded_device.h"

namespace {

using test::FailingPlatform;
using test::PlatformFault;
using Apps = std::vector<_APPS_INNER_INFO_T>;

const test::Call kNoCall = {"", "", nullptr};

struct Fault {
  const char* name;
  const char* function;
  PlatformFault fault;
};

void PrintTo(const Fault& fault, std::ostream* out) {
  *out << fault.name;
}

std::string NameOfFault(const ::testing::TestParamInfo<Fault>& info) {
  return info.param.name;
}

_APPS_INNER_INFO_T FirstOfTheCatalogue() {
  Apps apps;
  test::During([&] { return GetBuiltInAppList(apps, false); });
  return apps.empty() ? _APPS_INNER_INFO_T() : apps.front();
}

class AppWithoutItsVersion : public ::testing::TestWithParam<Fault> {
 protected:
  test::SeededDevice device{kNoCall};
};

TEST_P(AppWithoutItsVersion, HasItsIconAndNoGroup) {
  EXPECT_EQ(FirstOfTheCatalogue().strTargetGroupTag, "the tag of the first");
  const FailingPlatform failing(GetParam().function, GetParam().fault);
  const _APPS_INNER_INFO_T app = FirstOfTheCatalogue();
  EXPECT_EQ(app.strAppID, "the.first.app.of.the.catalogue");
  EXPECT_EQ(app.strVersion, "");
  EXPECT_EQ(app.strTargetGroupTag, "");
  EXPECT_EQ(app.strTargetGroupType, "");
  EXPECT_EQ(app.strIconPath, "/the/icon/of/the/first/package.png");
}

INSTANTIATE_TEST_SUITE_P(
    All, AppWithoutItsVersion,
    ::testing::Values(Fault{"NoPackage", "pkgmgrinfo_pkginfo_get_pkginfo", PlatformFault::kFails},
                      Fault{"NoPackageButAHandle", "pkgmgrinfo_pkginfo_get_pkginfo",
                            PlatformFault::kFailsAfterWriting},
                      Fault{"NoVersion", "pkgmgrinfo_pkginfo_get_version", PlatformFault::kFails},
                      Fault{"NoVersionButAText", "pkgmgrinfo_pkginfo_get_version",
                            PlatformFault::kFailsAfterWriting},
                      Fault{"NullVersion", "pkgmgrinfo_pkginfo_get_version",
                            PlatformFault::kGivesNull}),
    NameOfFault);

class AppWithoutItsIcon : public ::testing::TestWithParam<Fault> {
 protected:
  test::SeededDevice device{kNoCall};
};

TEST_P(AppWithoutItsIcon, HasItsVersionAndItsGroup) {
  const FailingPlatform failing(GetParam().function, GetParam().fault);
  const _APPS_INNER_INFO_T app = FirstOfTheCatalogue();
  EXPECT_EQ(app.strAppID, "the.first.app.of.the.catalogue");
  EXPECT_EQ(app.strVersion, "1.0.0 of the first package");
  EXPECT_EQ(app.strTargetGroupTag, "the tag of the first");
  EXPECT_EQ(app.strIconPath, "");
}

INSTANTIATE_TEST_SUITE_P(
    All, AppWithoutItsIcon,
    ::testing::Values(Fault{"NoApp", "pkgmgrinfo_appinfo_get_appinfo", PlatformFault::kFails},
                      Fault{"NoAppButAHandle", "pkgmgrinfo_appinfo_get_appinfo",
                            PlatformFault::kFailsAfterWriting},
                      Fault{"NoIcon", "pkgmgrinfo_appinfo_get_icon", PlatformFault::kFails},
                      Fault{"NoIconButAText", "pkgmgrinfo_appinfo_get_icon",
                            PlatformFault::kFailsAfterWriting},
                      Fault{"NullIcon", "pkgmgrinfo_appinfo_get_icon", PlatformFault::kGivesNull}),
    NameOfFault);

class PlatformCases : public ::testing::Test {
 protected:
  // The result of the XML export, and the path that it gave.
  static std::pair<int, std::string> Xml() {
    char* path = nullptr;
    const int result = test::During([&] { return tav_write_all_app_info_to_xml(&path); });
    const std::string text = path != nullptr ? path : "(null)";
    std::free(path);
    return {result, text};
  }
  std::string XmlPath() { return (device.Get().Root() / "data").string() + kXmlFile; }

  static constexpr char kXmlFile[] = "/tavcore/common/apps_info.xml";
  test::SeededDevice device{kNoCall};
};

TEST_F(PlatformCases, GiveAnXmlPathWithoutADirectoryAndFail) {
  const auto written = std::pair(0, XmlPath());
  EXPECT_EQ(Xml(), written);
  {
    // The directory of the file is asked for after none other: the first answer is null.
    const FailingPlatform failing("tzplatform_getenv", PlatformFault::kFails, 1);
    EXPECT_EQ(Xml(), std::pair(-1, std::string(kXmlFile)));
  }
  EXPECT_EQ(Xml(), written);
}

TEST_F(PlatformCases, RefuseAnXmlPathThatLeadsThroughItsParent) {
  const std::filesystem::path root = device.Get().Root();
  std::filesystem::create_directory(root / "aside");
  const std::string roundabout = root.string() + "/aside/..";
  setenv("TAV_DEVICE_ROOT", roundabout.c_str(), 1);
  const auto [result, path] = Xml();
  setenv("TAV_DEVICE_ROOT", root.c_str(), 1);
  EXPECT_EQ(result, -1);
  EXPECT_EQ(path, roundabout + "/data" + kXmlFile);
  EXPECT_EQ(std::filesystem::file_size(XmlPath()), 0U);
  EXPECT_EQ(Xml(), std::pair(0, XmlPath()));
}

TEST_F(PlatformCases, LeaveNoPackageOutWithoutTheDirectoryOfTheList) {
  EXPECT_EQ(GetUnsupportedPkgList().size(), 2U);
  const FailingPlatform failing("tzplatform_getenv", PlatformFault::kFails);
  std::size_t count = 77;
  test::During([&] {
    count = GetUnsupportedPkgList().size();
    return test::kVoid;
  });
  EXPECT_EQ(count, 0U);
}

TEST_F(PlatformCases, KnowNoSmallDeviceWithoutItsGrade) {
  for (const PlatformFault fault : {PlatformFault::kFails, PlatformFault::kFailsAfterWriting}) {
    const FailingPlatform failing("system_info_get_value_int", fault);
    EXPECT_EQ(test::During([] { return GetBuiltInBlacklistSupport() ? 1 : 0; }), 0);
  }
}

TEST_F(PlatformCases, TakeAnUnknownFlashForASmallOne) {
  for (const PlatformFault fault : {PlatformFault::kFails, PlatformFault::kFailsAfterWriting}) {
    const FailingPlatform failing("system_info_get_custom_int", fault);
    EXPECT_EQ(test::During([] { return GetBuiltInBlacklistSupport() ? 1 : 0; }), 1);
  }
}

TEST_F(PlatformCases, TakeAnUnreadableResetForNone) {
  for (const PlatformFault fault : {PlatformFault::kFails, PlatformFault::kFailsAfterWriting}) {
    const FailingPlatform failing("vconf_get_int", fault);
    tav_app_info_s info;
    EXPECT_EQ(test::During([&] { return tav_get_app_info(test::kAppA, &info); }), 0);
  }
}

TEST_F(PlatformCases, LockNoAppWithoutTheAgeRating) {
  device.Get().Setting("db/appstore/ratingvalue", "0+");
  tav_app_info_s info;
  ASSERT_EQ(tav_get_app_info(test::kAppA, &info), 0);
  EXPECT_EQ(info.is_lock, 1);
  const FailingPlatform failing("vconf_get_str", PlatformFault::kFails);
  EXPECT_EQ(test::During([&] { return tav_get_app_info(test::kAppA, &info); }), 0);
  EXPECT_EQ(info.is_lock, 0);
}

TEST_F(PlatformCases, FindNoDatabaseWithoutItsDirectoryUntilItIsKnown) {
  tav_app_info_s info;
  {
    const FailingPlatform failing("tzplatform_getenv", PlatformFault::kFails);
    EXPECT_EQ(test::During([&] { return tav_get_app_info(test::kAppA, &info); }), -1);
  }
  EXPECT_EQ(tav_get_app_info(test::kAppA, &info), 0);
}

TEST_F(PlatformCases, AskAgainForAWatchThatWasRefused) {
  const auto add = [] { return tav_register_appsync_start_changed_cb([](int, void*) {}, nullptr); };
  {
    const FailingPlatform failing("vconf_notify_key_changed", PlatformFault::kFails);
    EXPECT_EQ(test::During(add), -1);
  }
  EXPECT_EQ(test::PlatformCalls([&] { test::During(add); })["vconf_notify_key_changed"], 1);
}

}  // namespace
