// SPDX-License-Identifier: Apache-2.0
//
// Answers of the platform that its libraries on a PC never give: its functions stand here before
// theirs, and pass on what a test does not answer itself.
#include <app_control.h>
#include <dlfcn.h>
#include <pkgmgr-info.h>
#include <system_info.h>
#include <tzplatform_config.h>

#include <cstring>
#include <functional>
#include <map>

#include "catalogue.h"
#include "exports.h"
#include "memory.h"

namespace {

int g_missing_directory = 0;  // the number of one that the platform does not name
std::function<int(int*)> g_grade;
std::function<int(int*)> g_flash_size;
std::function<int(char**)> g_version;
std::function<int(char**)> g_icon;
std::function<int(char**)> g_extra_data;

// The handles of a kind that were given out, and those of them that were not released. A release
// of anything else is counted apart.
struct Handles {
  int given = 0;
  int wrong_releases = 0;
  std::map<void*, int> held;

  int Give(int result, void** handle) {
    if (result == PMINFO_R_OK) {
      ++given;
      ++held[*handle];
    }
    return result;
  }
  void Release(void* handle) {
    const auto found = held.find(handle);
    if (found == held.end()) {
      ++wrong_releases;
    } else {
      held.erase(found);
    }
  }
};

Handles g_packages;
Handles g_apps;

template <typename Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

const char* tzplatform_getenv(enum tzplatform_variable id) {
  if (static_cast<int>(id) == g_missing_directory) return nullptr;
  return Real<decltype(tzplatform_getenv)>("tzplatform_getenv")(id);
}

int system_info_get_value_int(system_info_key_e key, int* value) {
  if (g_grade) return static_cast<int>(key) == 701 ? g_grade(value) : -99;
  return Real<decltype(system_info_get_value_int)>("system_info_get_value_int")(key, value);
}

int system_info_get_custom_int(const char* key, int* value) {
  if (g_flash_size) {
    return std::strcmp(key, "com.kordyne/featureconf/flash_size") == 0 ? g_flash_size(value) : -99;
  }
  return Real<decltype(system_info_get_custom_int)>("system_info_get_custom_int")(key, value);
}

int pkgmgrinfo_pkginfo_get_pkginfo(const char* id, pkgmgrinfo_pkginfo_h* handle) {
  return g_packages.Give(
      Real<decltype(pkgmgrinfo_pkginfo_get_pkginfo)>("pkgmgrinfo_pkginfo_get_pkginfo")(id, handle),
      handle);
}

int pkgmgrinfo_pkginfo_get_version(pkgmgrinfo_pkginfo_h handle, char** version) {
  if (g_version) return g_version(version);
  return Real<decltype(pkgmgrinfo_pkginfo_get_version)>("pkgmgrinfo_pkginfo_get_version")(handle,
                                                                                          version);
}

int pkgmgrinfo_pkginfo_destroy_pkginfo(pkgmgrinfo_pkginfo_h handle) {
  g_packages.Release(handle);
  return Real<decltype(pkgmgrinfo_pkginfo_destroy_pkginfo)>("pkgmgrinfo_pkginfo_destroy_pkginfo")(
      handle);
}

int pkgmgrinfo_appinfo_get_appinfo(const char* id, pkgmgrinfo_appinfo_h* handle) {
  return g_apps.Give(
      Real<decltype(pkgmgrinfo_appinfo_get_appinfo)>("pkgmgrinfo_appinfo_get_appinfo")(id, handle),
      handle);
}

int pkgmgrinfo_appinfo_get_icon(pkgmgrinfo_appinfo_h handle, char** icon) {
  if (g_icon) return g_icon(icon);
  return Real<decltype(pkgmgrinfo_appinfo_get_icon)>("pkgmgrinfo_appinfo_get_icon")(handle, icon);
}

int pkgmgrinfo_appinfo_destroy_appinfo(pkgmgrinfo_appinfo_h handle) {
  g_apps.Release(handle);
  return Real<decltype(pkgmgrinfo_appinfo_destroy_appinfo)>("pkgmgrinfo_appinfo_destroy_appinfo")(
      handle);
}

int app_control_get_extra_data(app_control_h request, const char* key, char** value) {
  if (g_extra_data) return g_extra_data(value);
  return Real<decltype(app_control_get_extra_data)>("app_control_get_extra_data")(request, key,
                                                                                  value);
}

}  // extern "C"

namespace {

using test::App;
using test::BuiltIns;
using test::Ids;
using test::Plain;

constexpr char kSupported[] = "entry type and flash is 4G, support blacklist";
constexpr char kFlashFailed[] = "failed to get com.kordyne/featureconf/flash_size";

class PlatformAnswers : public test::BuiltInApps {
 protected:
  // A getter that writes a value, if any, and gives a result.
  static std::function<int(int*)> Number(int written, int result) {
    return [=](int* value) {
      *value = written;
      return result;
    };
  }
  static int NoText(char** text) {
    *text = nullptr;
    return 0;
  }
};

TEST_F(PlatformAnswers, OfAFlashSizeThatFailWithANumberCountAsASmallFlash) {
  g_grade = Number(1, 0);
  for (const int result : {-1, 1, -22}) {
    log.Forget();
    g_flash_size = Number(8, result);
    EXPECT_TRUE(GetBuiltInBlacklistSupport()) << result;
    EXPECT_TRUE(log.HasError(kFlashFailed));
    EXPECT_TRUE(log.Has(kSupported));
  }
  g_flash_size = Number(8, 0);
  EXPECT_FALSE(GetBuiltInBlacklistSupport());
}

TEST_F(PlatformAnswers, OfAFlashSizeMayLeaveItAsItWas) {
  g_grade = Number(1, 0);
  g_flash_size = [](int* value) { return *value; };
  EXPECT_TRUE(GetBuiltInBlacklistSupport());
  EXPECT_FALSE(log.Has(kFlashFailed));
}

TEST_F(PlatformAnswers, OfAGradeThatFailAreSaidWithTheirNumber) {
  for (const int result : {-22, 7, -2147483647 - 1}) {
    g_grade = Number(1, result);
    EXPECT_FALSE(GetBuiltInBlacklistSupport());
    EXPECT_TRUE(log.HasError("system_info_get_value_int error " + std::to_string(result)));
  }
  EXPECT_FALSE(log.Has(kSupported));
  EXPECT_FALSE(log.Has("Not entry type, do not support blacklist"));
}

TEST_F(PlatformAnswers, OfAGradeMayLeaveItAtOne) {
  g_grade = [](int* value) { return *value - 1; };
  EXPECT_TRUE(GetBuiltInBlacklistSupport());
}

TEST_F(PlatformAnswers, WithoutTheDirectoryOfTheBlacklistGiveNoPackages) {
  Catalogue(Ids{"a"});
  Blacklist("a\n");
  g_missing_directory = 27;
  EXPECT_TRUE(GetUnsupportedPkgList().empty());
  EXPECT_TRUE(log.Has("do not have unsupported pkg file"));
  EXPECT_EQ(ListedIds(), Ids{"a"});
  g_missing_directory = 0;
  EXPECT_EQ(ListedIds(), Ids{});
}

TEST_F(PlatformAnswers, WithoutTheDirectoryOfTheXmlFileNameAPathThatCannotBeOpened) {
  device.Install(App("a"));
  g_missing_directory = 2;
  EXPECT_EQ(test::Ask(tav_write_all_app_info_to_xml),
            (test::Answer{-1, "/tavcore/common/apps_info.xml"}));
  EXPECT_TRUE(log.Has("RealPath is [(null)]"));
  EXPECT_EQ(log.Messages('E'), std::vector<std::string>{"failed to open xml file"});
}

TEST_F(PlatformAnswers, OfAVersionWithoutATextLeaveItEmptyAndTheGroupUnset) {
  Catalogue(Ids{"a"});
  TestApps("a,,type,tag");
  Packages("[a]\nversion=1\nicon=/a.png\n");
  g_version = NoText;
  BuiltIns expected = {Plain("a")};
  expected[0].icon = "/a.png";
  EXPECT_EQ(Listed(), expected);
  for (const std::string& message : log.Messages()) {
    EXPECT_EQ(message.find("get version"), std::string::npos) << message;
  }
}

TEST_F(PlatformAnswers, OfAnIconWithoutATextLeaveItEmpty) {
  Catalogue(Ids{"a"});
  Packages("[a]\nversion=1\nicon=/a.png\n");
  g_icon = NoText;
  BuiltIns expected = {Plain("a")};
  expected[0].version = "1";
  EXPECT_EQ(Listed(), expected);
  for (const std::string& message : log.Messages()) {
    EXPECT_EQ(message.find("get icon"), std::string::npos) << message;
  }
}

TEST_F(PlatformAnswers, ThatFailWithATextAreNotBelieved) {
  static char text[] = "9.9";
  Catalogue(Ids{"a"});
  Packages("[a]\nversion=1\nicon=/a.png\n");
  g_version = g_icon = [](char** out) {
    *out = text;
    return -1;
  };
  EXPECT_EQ(Listed(), BuiltIns{Plain("a")});
}

TEST_F(PlatformAnswers, AreReleasedOnceForEachPackageAndEachApp) {
  Catalogue(Ids{"both", "version", "icon", "neither", "missing", "both", "black"});
  TestApps("both,1,t,g");
  Packages(
      "[both]\nversion=1\nicon=/i\n[version]\nversion=1\n[icon]\nicon=/i\n[neither]\n"
      "[black]\nversion=1\nicon=/i\n");
  Blacklist("black\n");
  int given = 0;
  const auto expect_released = [&given](int more) {
    given += more;
    for (const Handles* handles : {&g_packages, &g_apps}) {
      EXPECT_EQ(handles->given, given);
      EXPECT_TRUE(handles->held.empty());
      EXPECT_EQ(handles->wrong_releases, 0);
    }
  };
  EXPECT_EQ(ListedIds().size(), 6U);
  expect_released(6);
  EXPECT_EQ(ListedIds(true).size(), 2U);
  expect_released(2);
  g_version = g_icon = NoText;
  ListedIds();
  expect_released(6);
  g_version = g_icon = [](char**) { return -1; };
  ListedIds();
  expect_released(6);
}

TEST_F(PlatformAnswers, OfExtraDataThatFailWithATextAreReleasedAndNotBelieved) {
  constexpr std::size_t kSize = 1 << 20;
  g_extra_data = [](char** value) {
    *value = static_cast<char*>(std::malloc(kSize));
    std::memset(*value, 'x', kSize - 1);
    (*value)[kSize - 1] = '\0';
    return -1;
  };
  std::string value = "untouched";
  EXPECT_FALSE(db_get_app_control_data(nullptr, "key", value));
  const std::size_t before = test::AllocatedBytes();
  for (int i = 0; i < 10; ++i) EXPECT_FALSE(db_get_app_control_data(nullptr, "key", value));
  EXPECT_LT(test::AllocatedBytes(), before + kSize);
  EXPECT_EQ(value, "untouched");
  EXPECT_EQ(log.Count("do not have key[key]!!"), 11);
}

TEST_F(PlatformAnswers, OfExtraDataAreReleased) {
  constexpr std::size_t kSize = 1 << 20;
  g_extra_data = [](char** value) {
    *value = static_cast<char*>(std::calloc(1, kSize));
    (*value)[0] = '5';
    return 0;
  };
  std::string value;
  EXPECT_TRUE(db_get_app_control_data(nullptr, "key", value));
  const std::size_t before = test::AllocatedBytes();
  for (int i = 0; i < 10; ++i) EXPECT_TRUE(db_get_app_control_data(nullptr, "key", value));
  EXPECT_LT(test::AllocatedBytes(), before + kSize);
  EXPECT_EQ(value, "5");
}

TEST_F(PlatformAnswers, OfExtraDataWithoutATextAreNone) {
  g_extra_data = NoText;
  std::string value = "untouched";
  EXPECT_FALSE(db_get_app_control_data(nullptr, "key", value));
  EXPECT_EQ(value, "untouched");
  EXPECT_EQ(log.Messages(), std::vector<std::string>{"do not have key[key]!!"});
}

}  // namespace
