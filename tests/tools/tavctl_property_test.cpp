// SPDX-License-Identifier: Apache-2.0
//
// tavctl show-property: the answers about one app, and the keys that they are asked with.
#include <json/value.h>

#include "json_text.h"
#include "program_test.h"

namespace test {
namespace {

using Texts = std::vector<std::string>;

constexpr char kApps[] = R"({
  "config": {"EMANUAL_ID": "org.example.manual"},
  "apps": [
    {"id": "full", "tizen_id": "Tz1.full", "run_title": "Full", "is_ispbound": 1,
     "is_hybrid_tv": 1, "is_usb_app": 1, "rating": 4, "hybrid_app": "native.full",
     "pkgname": "Pkg1", "ait_orgid": "12", "ait_appid": "34", "use_count": 1,
     "launch_date": "2026-01-09"},
    {"id": "bare"},
    {"id": "used1", "run_title": "One", "use_count": 9, "launch_date": "2026-01-01"},
    {"id": "used2", "use_count": 8, "launch_date": "2026-01-02"},
    {"id": "used3", "use_count": 7, "launch_date": "2026-01-03"},
    {"id": "gone", "run_title": "Gone", "is_need_reset": 1, "is_ispbound": 1}
  ]})";

class TavctlShowProperty : public ProgramTest {
 protected:
  Result Show(Texts arguments) const {
    arguments.insert(arguments.begin(), "show-property");
    return Tavctl(arguments);
  }

  Json::Value JsonOf(Texts arguments) const {
    arguments.emplace_back("--json");
    const Result result = Show(arguments);
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.err, "");
    return Parse(result.out);
  }

  // The line of one property.
  std::string One(const std::string& property, Texts keys) const {
    keys.insert(keys.end(), {"--property", property});
    const Result result = Show(keys);
    EXPECT_EQ(result.status, 0) << result;
    return result.out;
  }
};

Result Unanswered(const std::string& property) {
  return {1, "",
          "tavctl: there is no answer for " + property +
              ", or the call was refused; the platform log says why\n"};
}

TEST_F(TavctlShowProperty, ShowsEverythingAboutAnApp) {
  MakeDevice(kApps);
  EXPECT_EQ(Show({"full"}), (Result{0,
                                    "isp            yes\n"
                                    "hybrid         yes\n"
                                    "usb            yes\n"
                                    "rating         4\n"
                                    "package-name   Pkg1\n"
                                    "run-title      Full\n"
                                    "app-id         full\n"
                                    "installed      yes\n"
                                    "recently-used  yes\n"
                                    "most-used      no\n"
                                    "emanual        org.example.manual\n",
                                    ""}));
}

TEST_F(TavctlShowProperty, ShowsEverythingAsJson) {
  MakeDevice(kApps);
  EXPECT_EQ(JsonOf({"full"}), Parse(R"({
    "isp": true, "hybrid": true, "usb": true, "rating": 4, "package-name": "Pkg1",
    "run-title": "Full", "app-id": "full", "installed": true, "recently-used": true,
    "most-used": false, "emanual": "org.example.manual"})"));
}

TEST_F(TavctlShowProperty, TellsClearFlagsAndMissingAnswersApart) {
  MakeDevice(kApps);
  EXPECT_EQ(JsonOf({"bare"}), Parse(R"({
    "isp": false, "hybrid": false, "usb": false, "rating": 0, "package-name": null,
    "run-title": null, "app-id": null, "installed": null, "recently-used": false,
    "most-used": false, "emanual": "org.example.manual"})"));
  EXPECT_EQ(Show({"bare"}), (Result{0,
                                    "isp            no\n"
                                    "hybrid         no\n"
                                    "usb            no\n"
                                    "rating         0\n"
                                    "package-name   -\n"
                                    "run-title      -\n"
                                    "app-id         -\n"
                                    "installed      -\n"
                                    "recently-used  no\n"
                                    "most-used      no\n"
                                    "emanual        org.example.manual\n",
                                    ""}));
}

TEST_F(TavctlShowProperty, AsksAboutTheAppThatAPlatformIdNames) {
  MakeDevice(kApps);
  EXPECT_EQ(JsonOf({"Tz1.full"}), JsonOf({"full"}));
}

TEST_F(TavctlShowProperty, ShowsOnlyThePropertiesThatAreNamed) {
  MakeDevice(kApps);
  EXPECT_EQ(Show({"--property", "rating", "full", "--property=isp", "--property", "rating"}),
            (Result{0, "isp     yes\nrating  4\n", ""}));
  EXPECT_EQ(JsonOf({"full", "--property", "hybrid"}), Parse(R"({"hybrid": true})"));
}

TEST_F(TavctlShowProperty, KnowsWhichAppsAreUsedMostAndLast) {
  MakeDevice(kApps);
  EXPECT_EQ(One("most-used", {"used3"}), "most-used  yes\n");
  EXPECT_EQ(One("most-used", {"full"}), "most-used  no\n");
  EXPECT_EQ(One("recently-used", {"full"}), "recently-used  yes\n");
  EXPECT_EQ(One("recently-used", {"used1"}), "recently-used  no\n");
}

TEST_F(TavctlShowProperty, AsksForAPackageNameWithANativeId) {
  MakeDevice(kApps);
  EXPECT_EQ(One("package-name", {"--native-id", "native.full"}), "package-name  Pkg1\n");
  EXPECT_EQ(One("package-name", {"bare", "--native-id", "native.full"}), "package-name  Pkg1\n");
}

TEST_F(TavctlShowProperty, AsksForARunTitleWithBroadcastIds) {
  MakeDevice(kApps);
  EXPECT_EQ(One("run-title", {"--ait", "12", "34"}), "run-title  Full\n");
  EXPECT_EQ(One("run-title", {"bare", "--ait", "12", "34"}), "run-title  Full\n");
}

TEST_F(TavctlShowProperty, AsksForAnAppAndItsPresenceWithARunTitle) {
  MakeDevice(kApps);
  EXPECT_EQ(One("app-id", {"--run-title", "One"}), "app-id  used1\n");
  EXPECT_EQ(One("app-id", {"full", "--run-title", "One"}), "app-id  used1\n");
  EXPECT_EQ(One("installed", {"--run-title", "One"}), "installed  yes\n");
  EXPECT_EQ(One("installed", {"--run-title", "Gone"}), "installed  no\n");
  EXPECT_EQ(One("installed", {"--run-title", "None"}), "installed  no\n");
}

TEST_F(TavctlShowProperty, AsksForTheManualWithoutAKey) {
  MakeDevice(kApps);
  EXPECT_EQ(One("emanual", {}), "emanual  org.example.manual\n");
}

TEST_F(TavctlShowProperty, TakesThePlatformsManualBeforeTheDatabases) {
  MakeDevice(R"({"config": {"EMANUAL_ID": "database"}, "apps": [],
                 "features": {"custom": {"com.kordyne/featureconf/emanual.app_id": "platform"}}})");
  EXPECT_EQ(One("emanual", {}), "emanual  platform\n");
}

TEST_F(TavctlShowProperty, GoesOnWithoutAManualUnlessItIsNamed) {
  MakeDevice(R"({"apps": [{"id": "a"}]})");
  EXPECT_EQ(JsonOf({"a"})["emanual"], Json::Value());
  EXPECT_EQ(Show({"a", "--property", "emanual"}), Unanswered("emanual"));
}

TEST_F(TavctlShowProperty, FailsForANamedPropertyWithoutAnAnswer) {
  MakeDevice(kApps);
  EXPECT_EQ(Show({"bare", "--property", "run-title"}), Unanswered("run-title"));
  EXPECT_EQ(Show({"bare", "--property", "isp", "--property", "app-id"}), Unanswered("app-id"));
  EXPECT_EQ(Show({"--property", "app-id", "--run-title", "None"}), Unanswered("app-id"));
  EXPECT_EQ(Show({"--property", "installed", "--run-title", ""}), Unanswered("installed"));
  EXPECT_EQ(Show({"--property", "package-name", "--native-id", "none"}),
            Unanswered("package-name"));
  EXPECT_EQ(Show({"--property", "run-title", "--ait", "12", "35"}), Unanswered("run-title"));
}

TEST_F(TavctlShowProperty, SaysWhatAPropertyHasToBeAskedWith) {
  EXPECT_EQ(Show({"--property", "package-name"}),
            (Result{2, "",
                    "package-name: needs ID or --native-id\nRun with --help for more "
                    "information.\n"}));
  EXPECT_EQ(
      Show({}),
      (Result{2, "", "ID or --property is required\nRun with --help for more information.\n"}));
}

TEST_F(TavctlShowProperty, SaysThatAnAppIsNotThere) {
  MakeDevice(kApps);
  for (const char* id : {"gone", "none", ""}) {
    EXPECT_EQ(Show({id, "--property", "isp"}),
              (Result{1, "",
                      "tavctl: no app with the id \"" + std::string(id) +
                          "\" was found, or the call was refused; the platform log says why\n"}));
  }
}

TEST_F(TavctlShowProperty, WritesOutWhatCouldSteerATerminal) {
  MakeDevice(R"({"config": {"EMANUAL_ID": "a\u001b[2J\n"}, "apps": []})");
  EXPECT_EQ(One("emanual", {}), "emanual  a\\x1b[2J\\n\n");
}

TEST_F(TavctlShowProperty, IsRefusedDuringAFactoryResetExceptForTheManual) {
  MakeDevice(R"({"settings": {"db/tav/factory_reset": 1}, "config": {"EMANUAL_ID": "m"},
                 "apps": [{"id": "a", "run_title": "A", "hybrid_app": "n", "pkgname": "P"}]})");
  EXPECT_EQ(Show({"a"}).status, 1);
  EXPECT_EQ(Show({"a"}).out, "");
  EXPECT_EQ(Show({"--property", "package-name", "--native-id", "n"}), Unanswered("package-name"));
  EXPECT_EQ(Show({"--property", "app-id", "--run-title", "A"}), Unanswered("app-id"));
  EXPECT_EQ(One("emanual", {}), "emanual  m\n");
}

TEST_F(TavctlShowProperty, TellsABusyDatabaseFromOtherFailures) {
  MakeDevice(kApps);
  const ExclusiveTransaction transaction(DatabaseFile());
  const Result busy{3, "", "tavctl: the database stayed busy\n"};
  EXPECT_EQ(Show({"full"}), busy);
  EXPECT_EQ(Show({"--property", "installed", "--run-title", "Full"}), busy);
  EXPECT_EQ(Show({"--property", "emanual"}), busy);
}

}  // namespace
}  // namespace test
