// SPDX-License-Identifier: Apache-2.0
//
// tavctl builtin, group and export, on the device of the default seed.
#include <gmock/gmock.h>

#include "json_text.h"
#include "program_test.h"

namespace test {
namespace {

using testing::HasSubstr;
using testing::Not;

class TavctlExport : public ProgramTest {
 protected:
  TavctlExport() { EXPECT_EQ(Sandbox({"--create", Device()}).status, 0); }

  Json::Value Json(const std::vector<std::string>& arguments) {
    const Result result = Tavctl(arguments);
    EXPECT_EQ(result.status, 0) << result;
    return Parse(result.out);
  }
  static std::vector<std::string> Ids(const Json::Value& apps) {
    std::vector<std::string> ids;
    for (const Json::Value& app : apps) ids.push_back(app["app_id"].asString());
    return ids;
  }
};

using Names = std::vector<std::string>;

TEST_F(TavctlExport, ShowsTheCatalogueWithoutThePackagesThatAreNotOffered) {
  const Json::Value apps = Json({"builtin", "--json"});
  EXPECT_EQ(Ids(apps),
            (Names{"org.example.harbour-news", "org.example.browser", "org.example.store",
                   "org.example.lighthouse", "org.example.quiet-piano"}));
  EXPECT_EQ(apps[0]["version"], "4.2.0");
  EXPECT_EQ(apps[4]["version"], "");
  EXPECT_EQ(apps[4]["icon_path"], "");
}

TEST_F(TavctlExport, ShowsTheTestAppsWithTheGroupOfTheirInstalledVersion) {
  const Json::Value apps = Json({"builtin", "--test-only", "--json"});
  EXPECT_EQ(Ids(apps), (Names{"org.example.store", "org.example.lighthouse"}));
  EXPECT_EQ(apps[0]["target_group_tag"], "");
  EXPECT_EQ(apps[1]["target_group_tag"], "green");
  EXPECT_EQ(apps[1]["target_group_type"], "beta");
  EXPECT_THAT(Tavctl({"builtin"}).out, HasSubstr("Quiet Piano"));
}

TEST_F(TavctlExport, FailsForACatalogueThatCannotBeRead) {
  Execute(DatabaseFile(), "update TAVConfigTable set value = '{' where name = 'RESERVED_15'");
  const Result result = Tavctl({"builtin"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, HasSubstr("the catalogue cannot be read"));
}

TEST_F(TavctlExport, FindsTheAppThatARunTitleStandsFor) {
  EXPECT_EQ(Tavctl({"group", "HarbourNews"}).out, "org.example.harbour-news  installed\n");
  EXPECT_EQ(Tavctl({"group", "Teapot"}).out, "org.example.teapot  not installed\n");
  EXPECT_EQ(Tavctl({"group", "--android", "Lantern"}).out, "Be9Dn2Fx4G  installed\n");
  const Result result = Tavctl({"group", "Kettle"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, HasSubstr("no group list holds the run title \"Kettle\""));
}

TEST_F(TavctlExport, PrintsTheLibrarysJsonOfAList) {
  const Json::Value visible = Json({"export", "json", "--featured", "65535", "--view", "3"});
  EXPECT_EQ(visible["app_list"].size(), 35U);
  EXPECT_EQ(visible["app_list"][0].size(), 60U);
  const Json::Value all = Json({"export", "json", "--all"});
  EXPECT_GT(all["app_list"].size(), 35U);
  const Json::Value built_in = Json({"export", "json", "--built-in", "--test-only"});
  EXPECT_EQ(Ids(built_in["app_list"]), (Names{"org.example.store", "org.example.lighthouse"}));
  EXPECT_EQ(built_in["app_list"][0].size(), 8U);
}

TEST_F(TavctlExport, PrintsTheLibrarysJsonOfOneApp) {
  const Json::Value app = Json({"export", "json", "--app", "org.example.lighthouse"});
  ASSERT_EQ(app["app_info"].size(), 1U);
  EXPECT_EQ(app["app_info"][0]["app_id"], "org.example.lighthouse");
  EXPECT_EQ(app["app_info"][0].size(), 60U);
  const Result result = Tavctl({"export", "json", "--app", "org.example.none"});
  EXPECT_EQ(result.status, 1) << result;
  EXPECT_THAT(result.err, HasSubstr("no app with the id \"org.example.none\" was found"));
}

TEST_F(TavctlExport, PrintsADocumentAlsoForNoApp) {
  Execute(DatabaseFile(), "delete from widgetinfo");
  EXPECT_EQ(Json({"export", "json", "--all"})["app_list"].size(), 0U);
}

TEST_F(TavctlExport, FailsForAListThatTheLibraryRefuses) {
  EXPECT_EQ(Tavctl({"export", "json"}).status, 1);
  EXPECT_EQ(Tavctl({"export", "json", "--featured", "16"}).status, 1);
}

TEST_F(TavctlExport, WritesTheXmlFileAndPrintsItsPath) {
  const Result result = Tavctl({"export", "xml"});
  EXPECT_EQ(result.status, 0) << result;
  EXPECT_EQ(result.out, (Device() / "data/tavcore/common/apps_info.xml").string() + "\n");
  const std::string document = ReadFile(Device() / "data/tavcore/common/apps_info.xml");
  EXPECT_THAT(document,
              testing::StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<list>\n"));
  EXPECT_THAT(document, HasSubstr("<widget id=\"org.example.weather\" "));
  EXPECT_THAT(document, testing::EndsWith("</widget>\n</list>\n"));
}

TEST_F(TavctlExport, CallsOptionsThatExcludeEachOtherWrongUsage) {
  for (const Names& arguments :
       {Names{"export"}, Names{"export", "json", "--all", "--built-in"},
        Names{"export", "json", "--all", "--featured", "1"}, Names{"export", "json", "--test-only"},
        Names{"group"}, Names{"export", "csv"}}) {
    EXPECT_EQ(Tavctl(arguments).status, 2);
  }
}

}  // namespace
}  // namespace test
