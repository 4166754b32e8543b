// SPDX-License-Identifier: Apache-2.0
//
// tavctl info: how it finds an app, what it prints, and what its exit status says.
#include <json/value.h>

#include "json_text.h"
#include "program_test.h"

namespace test {
namespace {

constexpr char kTwoApps[] = R"({
  "settings": {"db/tav/factory_reset": 0, "db/appstore/ratingvalue": "16+"},
  "features": {"custom": {"com.kordyne/featureconf/vitrine.webid": "org.example.full"}},
  "apps": [
    {"id": "org.example.bare"},
    {"id": "org.example.full", "title": "Größe \"∞\" \\ 🦔", "run_title": "Full",
     "pannel_icon_path": "unused-1", "firstscreen_icon_path": "unused-2", "version": "1.2.3",
     "install_date": "2026-01-02 03:04:05", "tizen_id": "Ab1Cd2.full", "size": 1001,
     "app_index": 1002, "app_featured": 1003, "is_support_voice": 1004,
     "is_support_gesture": 1005, "is_removable": 1006, "is_display": 1007, "is_lock": 0,
     "install_source_type": 1008, "is_usb_app": 1009, "is_need_update": 1010,
     "is_updated": 1011, "is_multi_screen2": 1012, "limit_age": 16, "is_age_auth": 1013,
     "app_type": 1014, "icon_path": "/icons/full.png", "install_path": "/apps/full",
     "is_hidden": 1015, "is_network": 1016, "is_premium_game": 1017, "pkgname": "Ab1Cd2",
     "widget_category": "category", "use_count": 1018, "install_state": 3,
     "is_need_login": 1019, "is_ticker": 1020, "is_multi_tasking": 1021,
     "install_type": "download", "use_gamepad": 1022, "hbbTV": "hbb", "hybrid_app": "native",
     "reserved_string_1": "pad", "reserved_string_2": "splash", "reserved_tinyint_1": 1023,
     "reserved_tinyint_2": 1024, "reserved_tinyint_3": 1025, "reserved_tinyint_4": 1026,
     "reserved_tinyint_5": 1027, "reserved_tinyint_7": -1028, "reserved_string_3": "unused-3",
     "reserved_string_4": "ambient", "reserved_tinyint_8": 1029,
     "reserved_string_5": "unused-4", "reserved_string_6": "user data",
     "reserved_int_1": 1030, "reserved_string_9": "content"}
  ]})";

constexpr char kFullRecord[] = R"({
  "app_id": "org.example.full", "app_title": "Größe \"∞\" \\ 🦔",
  "app_installed_path": "/apps/full", "app_icon_path": "/icons/full.png",
  "app_panel_icon_path": "/icons/full.png", "app_version": "1.2.3",
  "install_date": "2026-01-02 03:04:05", "app_tizen_id": "Ab1Cd2.full", "pkgname": "Ab1Cd2",
  "app_widget_category": "category", "app_runtitle": "Full", "type": "download",
  "spare_string_1": "", "spare_string_2": "", "extra_icon_path": "/icons/full.png",
  "gamepad": "pad", "firstscreen_icon_dir": "/icons/full.png",
  "ambient_screen_support": "ambient", "ambient_icon_path": "/icons/full.png", "hbbtv": "hbb",
  "native_id": "native", "waiting_screen_type": "splash", "launch_user_data": "user data",
  "content_id": "content", "size": 1001, "use_count": 1018, "app_index": 1002,
  "app_featured": 1003, "app_type": 1014, "installState": 3, "is_hidden": 1015,
  "is_support_voice": 1004, "is_support_gesture": 1005, "is_network": 1016,
  "is_removable": 1006, "is_display": 1007, "spare_int_1": 0, "is_lock": 1, "spare_int_2": 0,
  "is_premium_game": 1017, "is_need_login": 1019, "is_need_update": 1010,
  "installed_source_type": 1008, "is_updated": 1011, "is_ticker": 1020,
  "is_multi_screen2": 1012, "is_multi_tasking": 1021, "is_usb_app": 1009, "is_age_auth": 1013,
  "app_age_limit": 16, "use_gamepad": 1022, "is_need_uninstall": 1023,
  "is_icon_mutlilang_support": 1029, "is_transparent_support": 1024,
  "is_partial_overlay_support": 1025, "is_websdi_support": 1026, "is_disk_cache": 1027,
  "is_force_launch_support": -1028, "launch_type": 1030})";

// The record of an app of which nothing but the id is known.
Json::Value BareRecord(const std::string& id) {
  Json::Value record = Parse(kFullRecord);
  for (const std::string& name : record.getMemberNames()) {
    if (record[name].isString()) {
      record[name] = "";
    } else {
      record[name] = 0;
    }
  }
  record["app_id"] = id;
  record["installState"] = 3;
  return record;
}

std::string TitleSeed(const std::string& json_title) {
  return R"({"apps": [{"id": "a", "title": ")" + json_title + R"("}]})";
}

class TavctlInfo : public ProgramTest {
 protected:
  Json::Value JsonOf(const std::vector<std::string>& arguments) const {
    std::vector<std::string> all = {"info", "--json"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const Result result = Tavctl(all);
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.err, "");
    return Parse(result.out);
  }

  // The readable record's first line, which holds the title.
  std::string TitleLine(const std::string& id) const {
    const std::string out = Tavctl({"info", id}).out;
    return out.substr(0, out.find('\n'));
  }
};

TEST_F(TavctlInfo, PrintsEveryFieldOfARecordAsJson) {
  MakeDevice(kTwoApps);
  EXPECT_EQ(JsonOf({"org.example.full"}), Parse(kFullRecord));
  EXPECT_EQ(JsonOf({"org.example.bare"}), BareRecord("org.example.bare"));
}

TEST_F(TavctlInfo, FindsAnAppByEachKindOfName) {
  MakeDevice(kTwoApps);
  const Json::Value full = Parse(kFullRecord);
  EXPECT_EQ(JsonOf({"--by", "id", "org.example.full"}), full);
  EXPECT_EQ(JsonOf({"--by", "tizen-id", "Ab1Cd2.full"}), full);
  EXPECT_EQ(JsonOf({"--by", "run-title", "Full"}), full);
  EXPECT_EQ(JsonOf({"Ab1Cd2.full"}), full);
  EXPECT_EQ(JsonOf({"vitrine"}), full);
}

TEST_F(TavctlInfo, DoesNotMistakeOneKindOfNameForAnother) {
  MakeDevice(kTwoApps);
  EXPECT_EQ(Tavctl({"info", "Full"}).status, 1);
  EXPECT_EQ(Tavctl({"info", "--by", "run-title", "org.example.full"}).status, 1);
}

TEST_F(TavctlInfo, PrintsAReadableRecordWithTheMostAskedForFirstAndWithoutEmptyTexts) {
  MakeDevice(R"({"apps": [{"id": "org.example.clock", "title": "Kettle Clock",
                           "version": "1.4", "pkgname": "Gk8", "use_count": 12}]})");
  EXPECT_EQ(Tavctl({"info", "org.example.clock"}),
            (Result{0,
                    "app_title                   Kettle Clock\n"
                    "app_id                      org.example.clock\n"
                    "app_version                 1.4\n"
                    "is_lock                     0\n"
                    "pkgname                     Gk8\n"
                    "size                        0\n"
                    "use_count                   12\n"
                    "app_index                   0\n"
                    "app_featured                0\n"
                    "app_type                    0\n"
                    "installState                3\n"
                    "is_hidden                   0\n"
                    "is_support_voice            0\n"
                    "is_support_gesture          0\n"
                    "is_network                  0\n"
                    "is_removable                0\n"
                    "is_display                  0\n"
                    "spare_int_1                 0\n"
                    "spare_int_2                 0\n"
                    "is_premium_game             0\n"
                    "is_need_login               0\n"
                    "is_need_update              0\n"
                    "installed_source_type       0\n"
                    "is_updated                  0\n"
                    "is_ticker                   0\n"
                    "is_multi_screen2            0\n"
                    "is_multi_tasking            0\n"
                    "is_usb_app                  0\n"
                    "is_age_auth                 0\n"
                    "app_age_limit               0\n"
                    "use_gamepad                 0\n"
                    "is_need_uninstall           0\n"
                    "is_icon_mutlilang_support   0\n"
                    "is_transparent_support      0\n"
                    "is_partial_overlay_support  0\n"
                    "is_websdi_support           0\n"
                    "is_disk_cache               0\n"
                    "is_force_launch_support     0\n"
                    "launch_type                 0\n",
                    ""}));
}

TEST_F(TavctlInfo, WritesOutWhatCouldSteerATerminal) {
  MakeDevice(TitleSeed(R"(a\u001b[31m\n\r\t\u007f\u009b\u2028\u202eb\\é)"));
  EXPECT_EQ(TitleLine("a"),
            "app_title                   a\\x1b[31m\\n\\r\\t\\x7f\\u009b\\u2028\\u202eb\\\\é");
}

TEST_F(TavctlInfo, KeepsTheJoinersThatScriptsAndEmojiNeed) {
  MakeDevice(TitleSeed("क\u200dष 👩\u200d🚀"));
  EXPECT_EQ(TitleLine("a"), "app_title                   क\u200dष 👩\u200d🚀");
}

TEST_F(TavctlInfo, DropsTheRestOfACharacterThatTheRecordCutsInTwo) {
  const std::string whole(126, 'x');
  for (const char* cut : {"é", "€", "🦔"}) {
    std::filesystem::remove_all(Device());
    MakeDevice(TitleSeed(whole + cut));
    EXPECT_EQ(JsonOf({"a"})["app_title"].asString(), whole);
    EXPECT_EQ(TitleLine("a"), "app_title                   " + whole);
  }
}

TEST_F(TavctlInfo, ReplacesBytesThatAreNoText) {
  MakeDevice(R"({"apps": [{"id": "a"}]})");
  Execute(DatabaseFile(), "update widgetinfo set title = cast(x'61ff62c3' as text)");
  EXPECT_EQ(JsonOf({"a"})["app_title"].asString(), "a\uFFFDb");
}

TEST_F(TavctlInfo, SaysThatAnAppIsNotThere) {
  MakeDevice(kTwoApps);
  EXPECT_EQ(Tavctl({"info", "--by", "tizen-id", "none\x1b[m"}),
            (Result{1, "",
                    "tavctl: no app with the tizen-id \"none\\x1b[m\" was found, or the call was "
                    "refused; the platform log says why\n"}));
  EXPECT_EQ(Tavctl({"info", ""}).status, 1);
}

TEST_F(TavctlInfo, IsRefusedDuringAFactoryReset) {
  MakeDevice(R"({"settings": {"db/tav/factory_reset": 1}, "apps": [{"id": "a"}]})");
  const Result result = Tavctl({"info", "a"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");
}

TEST_F(TavctlInfo, FailsWithoutADatabase) {
  MakeDevice(kTwoApps);
  std::filesystem::remove(DatabaseFile());
  EXPECT_EQ(Tavctl({"info", "org.example.full"}).status, 1);
  std::filesystem::remove_all(Device());
  EXPECT_EQ(Tavctl({"info", "org.example.full"}).status, 1);
}

TEST_F(TavctlInfo, TellsABusyDatabaseFromOtherFailures) {
  MakeDevice(kTwoApps);
  const ExclusiveTransaction busy(DatabaseFile());
  EXPECT_EQ(Tavctl({"info", "org.example.full"}),
            (Result{3, "", "tavctl: the database stayed busy\n"}));
}

}  // namespace
}  // namespace test
