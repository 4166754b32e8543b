// SPDX-License-Identifier: Apache-2.0
// Package data, from a real key file.
#include <pkgmgr-info.h>

#include "device.h"

namespace {

class Packages : public Device {
 protected:
  static constexpr char kFile[] = "packages.ini";

  static std::string Version(const char* id) {
    pkgmgrinfo_pkginfo_h handle = nullptr;
    if (pkgmgrinfo_pkginfo_get_pkginfo(id, &handle) != PMINFO_R_OK) return "no package";
    char* version = nullptr;
    const int result = pkgmgrinfo_pkginfo_get_version(handle, &version);
    std::string answer = result == PMINFO_R_OK ? version : "no version";
    EXPECT_EQ(result < 0, version == nullptr);
    EXPECT_EQ(pkgmgrinfo_pkginfo_destroy_pkginfo(handle), PMINFO_R_OK);
    return answer;
  }

  static std::string Icon(const char* id) {
    pkgmgrinfo_appinfo_h handle = nullptr;
    if (pkgmgrinfo_appinfo_get_appinfo(id, &handle) != PMINFO_R_OK) return "no app";
    char* icon = nullptr;
    const int result = pkgmgrinfo_appinfo_get_icon(handle, &icon);
    std::string answer = result == PMINFO_R_OK ? icon : "no icon";
    EXPECT_EQ(result < 0, icon == nullptr);
    EXPECT_EQ(pkgmgrinfo_appinfo_destroy_appinfo(handle), PMINFO_R_OK);
    return answer;
  }
};

TEST_F(Packages, GiveTheirVersionAndIcon) {
  WriteFile(kFile,
            "[org.example.clock]\nversion=1.2.3\nicon=/icons/clock.png\n"
            "[org.example.guide]\nversion=\nicon=/icons/guide.png\n");
  EXPECT_EQ(Version("org.example.clock"), "1.2.3");
  EXPECT_EQ(Icon("org.example.clock"), "/icons/clock.png");
  EXPECT_EQ(Version("org.example.guide"), "");
  EXPECT_EQ(TakeLog(), "");
}

TEST_F(Packages, KeepTheTextsOfAHandleWhileTheFileChanges) {
  WriteFile(kFile, "[a]\nversion=1\nicon=one\n");
  pkgmgrinfo_pkginfo_h package = nullptr;
  pkgmgrinfo_appinfo_h app = nullptr;
  ASSERT_EQ(pkgmgrinfo_pkginfo_get_pkginfo("a", &package), PMINFO_R_OK);
  ASSERT_EQ(pkgmgrinfo_appinfo_get_appinfo("a", &app), PMINFO_R_OK);
  char* version = nullptr;
  char* icon = nullptr;
  EXPECT_EQ(pkgmgrinfo_pkginfo_get_version(package, &version), PMINFO_R_OK);
  WriteFile(kFile, "[a]\nversion=2\nicon=two\n");
  EXPECT_EQ(pkgmgrinfo_appinfo_get_icon(app, &icon), PMINFO_R_OK);
  EXPECT_STREQ(version, "1");
  EXPECT_STREQ(icon, "one");
  EXPECT_EQ(pkgmgrinfo_appinfo_destroy_appinfo(app), PMINFO_R_OK);
  EXPECT_STREQ(version, "1");
  EXPECT_EQ(pkgmgrinfo_pkginfo_destroy_pkginfo(package), PMINFO_R_OK);
}

TEST_F(Packages, MayBeMissing) {
  WriteFile(kFile, "[a]\nversion=1\n");
  void* const untouched = this;
  void* handle = untouched;
  EXPECT_LT(pkgmgrinfo_pkginfo_get_pkginfo("b", &handle), 0);
  EXPECT_LT(pkgmgrinfo_appinfo_get_appinfo("", &handle), 0);
  EXPECT_EQ(handle, untouched);
  EXPECT_EQ(TakePriorities(), "DD");
}

TEST_F(Packages, MayLackAVersionOrAnIcon) {
  WriteFile(kFile, "[a]\nlabel=A\n");
  EXPECT_EQ(Version("a"), "no version");
  EXPECT_EQ(Icon("a"), "no icon");
  EXPECT_EQ(TakePriorities(), "DD");
}

TEST_F(Packages, AreAnErrorInTheLogWhenTheirFileIsMissingOrBroken) {
  EXPECT_EQ(Version("a"), "no package");
  EXPECT_EQ(TakePriorities(), "E");
  for (const char* content : {"version=1\n", "[a\nversion=1\n", "\xff\xfe[a]"}) {
    WriteFile(kFile, content);
    EXPECT_EQ(Version("a"), "no package") << content;
    EXPECT_EQ(Icon("a"), "no app") << content;
    EXPECT_EQ(TakePriorities(), "EE") << content;
  }
}

TEST_F(Packages, RefuseAHandleOfTheOtherKind) {
  WriteFile(kFile, "[a]\nversion=1\nicon=one\n");
  pkgmgrinfo_pkginfo_h package = nullptr;
  pkgmgrinfo_appinfo_h app = nullptr;
  ASSERT_EQ(pkgmgrinfo_pkginfo_get_pkginfo("a", &package), PMINFO_R_OK);
  ASSERT_EQ(pkgmgrinfo_appinfo_get_appinfo("a", &app), PMINFO_R_OK);
  char* text = nullptr;
  EXPECT_EQ(pkgmgrinfo_pkginfo_get_version(app, &text), PMINFO_R_EINVAL);
  EXPECT_EQ(pkgmgrinfo_appinfo_get_icon(package, &text), PMINFO_R_EINVAL);
  EXPECT_EQ(text, nullptr);
  EXPECT_EQ(pkgmgrinfo_pkginfo_destroy_pkginfo(app), PMINFO_R_EINVAL);
  EXPECT_EQ(pkgmgrinfo_appinfo_destroy_appinfo(package), PMINFO_R_EINVAL);
  EXPECT_EQ(TakePriorities(), "EEEE");
  EXPECT_EQ(pkgmgrinfo_pkginfo_destroy_pkginfo(package), PMINFO_R_OK);
  EXPECT_EQ(pkgmgrinfo_appinfo_destroy_appinfo(app), PMINFO_R_OK);
}

TEST_F(Packages, RefuseNullArguments) {
  WriteFile(kFile, "[a]\nversion=1\nicon=one\n");
  void* handle = nullptr;
  char* text = nullptr;
  EXPECT_LT(PMINFO_R_EINVAL, 0);
  EXPECT_EQ(pkgmgrinfo_pkginfo_get_pkginfo(nullptr, &handle), PMINFO_R_EINVAL);
  EXPECT_EQ(pkgmgrinfo_pkginfo_get_pkginfo("a", nullptr), PMINFO_R_EINVAL);
  EXPECT_EQ(pkgmgrinfo_appinfo_get_appinfo(nullptr, &handle), PMINFO_R_EINVAL);
  EXPECT_EQ(pkgmgrinfo_appinfo_get_appinfo("a", nullptr), PMINFO_R_EINVAL);
  EXPECT_EQ(pkgmgrinfo_pkginfo_get_version(nullptr, &text), PMINFO_R_EINVAL);
  EXPECT_EQ(pkgmgrinfo_appinfo_get_icon(nullptr, &text), PMINFO_R_EINVAL);
  EXPECT_EQ(pkgmgrinfo_pkginfo_destroy_pkginfo(nullptr), PMINFO_R_EINVAL);
  EXPECT_EQ(pkgmgrinfo_appinfo_destroy_appinfo(nullptr), PMINFO_R_EINVAL);
  ASSERT_EQ(pkgmgrinfo_pkginfo_get_pkginfo("a", &handle), PMINFO_R_OK);
  EXPECT_EQ(pkgmgrinfo_pkginfo_get_version(handle, nullptr), PMINFO_R_EINVAL);
  EXPECT_EQ(pkgmgrinfo_pkginfo_destroy_pkginfo(handle), PMINFO_R_OK);
  EXPECT_EQ(TakePriorities(), "EEEEEEEEE");
}

}  // namespace
