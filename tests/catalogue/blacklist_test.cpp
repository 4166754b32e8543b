// SPDX-License-Identifier: Apache-2.0
//
// The packages that are not offered on a device of the entry grade with a small flash.
#include <algorithm>

#include "catalogue.h"

namespace {

using test::Ids;
using test::IdsOf;
using test::InnerApp;
using test::InnerApps;
using PackageIds = std::map<std::string, std::string>;

constexpr char kFlashFailed[] = "failed to get com.kordyne/featureconf/flash_size";
constexpr char kSupported[] = "entry type and flash is 4G, support blacklist";
constexpr char kOtherGrade[] = "Not entry type, do not support blacklist";
constexpr char kOtherFlash[] = "Not 4G type, do not support blacklist";
constexpr char kGradeFailed[] = "system_info_get_value_int error -1";

class BlackList : public test::BuiltInApps {
 protected:
  // Whether the blacklist applies on a device with these features.
  bool Supported(const std::string& grade, const std::string& flash) {
    log.Forget();
    const auto line = [](const std::string& key, const std::string& value) {
      return value == "missing" ? "" : key + "=" + value + "\n";
    };
    device.Write("system-info.ini", "[value]\n" + line("701", grade) + "[custom]\n" +
                                        line("com.kordyne/featureconf/flash_size", flash));
    return GetBuiltInBlacklistSupport();
  }
  PackageIds Read(const std::string& lines) {
    Blacklist(lines);
    return GetUnsupportedPkgList();
  }
  static PackageIds Of(const std::vector<std::string>& ids) {
    PackageIds packages;
    for (const std::string& id : ids) packages[id] = id;
    return packages;
  }
};

TEST_F(BlackList, IsSupportedByTheEntryGradeWithASmallFlash) {
  EXPECT_TRUE(Supported("1", "0"));
  EXPECT_TRUE(log.Has(kSupported));
  EXPECT_FALSE(log.Has(kFlashFailed));
}

TEST_F(BlackList, TakesAFlashThatCannotBeReadForASmallOne) {
  for (const char* flash : {"missing", "4G", "", "1.5", "99999999999"}) {
    EXPECT_TRUE(Supported("1", flash)) << flash;
    EXPECT_TRUE(log.Has(kFlashFailed)) << flash;
    EXPECT_TRUE(log.Has(kSupported)) << flash;
  }
}

TEST_F(BlackList, IsNotSupportedByAnotherFlash) {
  for (const char* flash : {"1", "2", "-1", "8"}) {
    EXPECT_FALSE(Supported("1", flash)) << flash;
    EXPECT_TRUE(log.Has(kOtherFlash)) << flash;
  }
}

TEST_F(BlackList, IsNotSupportedByAnotherGrade) {
  for (const char* grade : {"2", "0", "-1"}) {
    EXPECT_FALSE(Supported(grade, "0")) << grade;
    EXPECT_TRUE(log.Has(kOtherGrade)) << grade;
    EXPECT_FALSE(log.Has(kFlashFailed)) << grade;
  }
}

TEST_F(BlackList, IsNotSupportedByAGradeThatCannotBeRead) {
  EXPECT_FALSE(GetBuiltInBlacklistSupport());
  EXPECT_TRUE(log.Has(kGradeFailed));
  for (const char* grade : {"missing", "entry", ""}) {
    EXPECT_FALSE(Supported(grade, "0")) << grade;
    EXPECT_TRUE(log.Has(kGradeFailed)) << grade;
  }
}

TEST_F(BlackList, HasOnePackageALineAsKeyAndValue) {
  EXPECT_EQ(Read("b\na\n b c \nb\n"), Of({" b c ", "a", "b"}));
  EXPECT_EQ(log.Count("pkgid b is found in entry_smart_blacklist.txt"), 2);
  EXPECT_EQ(log.Count("pkgid a is found in entry_smart_blacklist.txt"), 1);
}

TEST_F(BlackList, NeedsNoNewlineAtItsEnd) {
  EXPECT_EQ(Read("a\nb"), Of({"a", "b"}));
}

TEST_F(BlackList, KeepsCarriageReturnsAndEmptyLines) {
  EXPECT_EQ(Read("a\r\n\nb\r"), Of({"", "a\r", "b\r"}));
}

TEST_F(BlackList, IsEmptyWhenItsFileIs) {
  EXPECT_EQ(Read(""), PackageIds{});
}

TEST_F(BlackList, CutsALineThatIsTooLongIntoSeveral) {
  const std::string fits(1022, 'f');
  const std::string exactly(1023, 'e');
  const std::string longer(1500, 'l');
  EXPECT_EQ(Read(fits + "\n"), Of({fits}));
  EXPECT_EQ(Read(exactly + "\n"), Of({exactly, ""}));
  EXPECT_EQ(Read(exactly), Of({exactly}));
  EXPECT_EQ(Read(longer + "\nnext\n"), Of({longer.substr(0, 1023), longer.substr(1023), "next"}));
}

TEST_F(BlackList, IsEmptyWithoutItsFileOrWithADirectoryInItsPlace) {
  Supported("1", "0");
  EXPECT_EQ(GetUnsupportedPkgList(), PackageIds{});
  EXPECT_TRUE(log.Has("do not have unsupported pkg file"));
  std::filesystem::create_directories(device.Root() /
                                      "etc/tavcore/built_in_app/entry_smart_blacklist.txt");
  EXPECT_EQ(GetUnsupportedPkgList(), PackageIds{});
}

TEST_F(BlackList, IsNotReadOnAnotherDevice) {
  Blacklist("a\n");
  Supported("1", "1");
  EXPECT_EQ(GetUnsupportedPkgList(), PackageIds{});
  EXPECT_TRUE(log.Has("do not support unsupported pkg list"));
  EXPECT_FALSE(log.Has("do not have unsupported pkg file"));
}

TEST_F(BlackList, RemovesItsPackagesFromTheBuiltInAppsInAscendingOrder) {
  Catalogue(Ids{"d", "c", "b", "a"});
  Blacklist("d\nelsewhere\nb\n");
  EXPECT_EQ(ListedIds(), (Ids{"c", "a"}));
  const std::vector<std::string> messages = log.Messages();
  const auto at = [&](const std::string& id) {
    return std::find(messages.begin(), messages.end(), "delete " + id + " from tMapAppsInfoList");
  };
  EXPECT_LT(at("b"), at("d"));
  EXPECT_NE(at("d"), messages.end());
  EXPECT_EQ(at("elsewhere"), messages.end());
}

TEST_F(BlackList, GoesOnBehindAPackageThatNoAppIsOf) {
  Catalogue(Ids{"b", "d", "e"});
  Blacklist("a\nb\nc\nd\n");
  EXPECT_EQ(ListedIds(), Ids{"e"});
}

TEST_F(BlackList, RemovesByPackageAndNotByAppId) {
  Catalogue(
      test::BuiltIns{{"x", "", "p", "", "", "", "", ""}, {"p", "p", "q", "", "", "", "", ""}});
  Blacklist("p\n");
  EXPECT_EQ(ListedIds(), Ids{"p"});
}

TEST_F(BlackList, RemovesOnlyTheFirstAppOfAPackage) {
  Catalogue(test::BuiltIns{{"first", "", "p", "", "", "", "", ""},
                           {"second", "", "p", "", "", "", "", ""},
                           {"third", "", "p", "", "", "", "", ""}});
  Blacklist("p\np\n");
  EXPECT_EQ(ListedIds(), (Ids{"second", "third"}));
}

TEST_F(BlackList, RemovesFromWhatWasInTheListBeforeToo) {
  Catalogue(Ids{"a", "p"});
  Blacklist("p\n");
  InnerApps list = {InnerApp("other", "o"), InnerApp("before", "p")};
  EXPECT_EQ(GetBuiltInAppList(list, false), 0);
  EXPECT_EQ(IdsOf(list), (Ids{"other", "a", "p"}));
  EXPECT_EQ(GetBuiltInAppList(list, false), 0);
  EXPECT_EQ(IdsOf(list), (Ids{"other", "a", "a", "p"}));
}

TEST_F(BlackList, RemovesAnAppWithoutAPackageForAnEmptyLine) {
  Document(R"({"rsp":{"stat":"ok","apps":[{"id":"none"},{"id":"a","packageId":"a"}]}})");
  Blacklist("\n");
  EXPECT_EQ(ListedIds(), Ids{"a"});
}

TEST_F(BlackList, RemovesNothingWhenTheCatalogueFails) {
  Document("no JSON");
  Blacklist("p\n");
  InnerApps list = {InnerApp("before", "p")};
  EXPECT_EQ(GetBuiltInAppList(list, false), -1);
  EXPECT_EQ(IdsOf(list), Ids{"before"});
}

}  // namespace
