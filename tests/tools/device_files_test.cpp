// SPDX-License-Identifier: Apache-2.0
//
// What a made device holds: its files, its database, its settings and its key files.
#include <gmock/gmock.h>
#include <json/reader.h>
#include <json/value.h>

#include <algorithm>
#include <memory>

#include "program_test.h"

namespace test {
namespace {

namespace fs = std::filesystem;

using Rows = std::vector<std::vector<std::string>>;

// The apps table, told once more by hand: the library's queries rely on every one of these.
constexpr const char* kColumns[] = {"id text",
                                    "title text",
                                    "run_title text",
                                    "pannel_icon_path text",
                                    "firstscreen_icon_path text",
                                    "version text",
                                    "install_date text",
                                    "tizen_id text",
                                    "size integer",
                                    "app_index integer",
                                    "app_featured integer",
                                    "is_support_voice integer",
                                    "is_support_gesture integer",
                                    "is_removable integer",
                                    "is_display integer",
                                    "is_lock integer",
                                    "install_source_type integer",
                                    "is_usb_app integer",
                                    "is_need_update integer",
                                    "is_updated integer",
                                    "is_multi_screen2 integer",
                                    "limit_age integer",
                                    "is_age_auth integer",
                                    "app_type integer",
                                    "icon_path text",
                                    "install_path text",
                                    "is_hidden integer",
                                    "is_network integer",
                                    "is_premium_game integer",
                                    "pkgname text",
                                    "widget_category text",
                                    "use_count integer",
                                    "install_state integer",
                                    "is_need_login integer",
                                    "is_ticker integer",
                                    "is_multi_tasking integer",
                                    "install_type text",
                                    "use_gamepad integer",
                                    "hbbTV text",
                                    "hybrid_app text",
                                    "reserved_string_1 text",
                                    "reserved_string_2 text",
                                    "reserved_tinyint_1 integer",
                                    "reserved_tinyint_2 integer",
                                    "reserved_tinyint_3 integer",
                                    "reserved_tinyint_4 integer",
                                    "reserved_tinyint_5 integer",
                                    "reserved_tinyint_7 integer",
                                    "reserved_string_3 text",
                                    "reserved_string_4 text",
                                    "reserved_tinyint_8 integer",
                                    "reserved_string_5 text",
                                    "reserved_string_6 text",
                                    "reserved_int_1 integer",
                                    "reserved_string_9 text",
                                    "reserved_tinyint_10 integer",
                                    "reserved_string_10 text",
                                    "reserved_string_11 text",
                                    "reserved_tinyint_11 integer",
                                    "reserved_string_16 text",
                                    "reserved_string_14 text",
                                    "reserved_string_18 text",
                                    "tavorder text",
                                    "reserved_string_19 text",
                                    "reserved_string_20 text",
                                    "reserved_tinyint_15 integer",
                                    "reserved_tinyint_16 integer",
                                    "reserved_tinyint_17 integer",
                                    "reserved_string_21 text",
                                    "reserved_tinyint_19 integer",
                                    "reserved_string_24 text",
                                    "is_app_available integer",
                                    "is_need_reset integer",
                                    "launch_date text",
                                    "is_ispbound integer",
                                    "is_hybrid_tv integer",
                                    "rating integer",
                                    "ait_orgid text",
                                    "ait_appid text"};

class DeviceFiles : public ProgramTest {
 protected:
  void MakeDefaultDevice() const {
    const Result result = Sandbox({"--create", Device()});
    ASSERT_EQ(result.status, 0) << result;
  }

  Rows QueryDevice(const std::string& sql) const { return Query(DatabaseFile(), sql); }

  std::string Content(const std::string& path) const { return ReadFile(Device() / path); }
};

TEST_F(DeviceFiles, AreAllThereAndNoOthers) {
  MakeDefaultDevice();
  std::vector<std::string> paths;
  for (const auto& entry : fs::recursive_directory_iterator(Device())) {
    const std::string path = fs::relative(entry.path(), Device());
    paths.push_back(entry.is_directory() ? path + "/" : path);
  }
  std::sort(paths.begin(), paths.end());
  EXPECT_EQ(paths, (std::vector<std::string>{
                       "data/",
                       "data/tavcore/",
                       "data/tavcore/common/",
                       "dbspace/",
                       "dbspace/.tavcore.db",
                       "etc/",
                       "etc/tavcore/",
                       "etc/tavcore/built_in_app/",
                       "etc/tavcore/built_in_app/entry_smart_blacklist.txt",
                       "packages.ini",
                       "system-info.ini",
                       "vconf/",
                       "vconf/db/",
                       "vconf/db/appstore/",
                       "vconf/db/appstore/ratingvalue",
                       "vconf/db/comss/",
                       "vconf/db/comss/appkey",
                       "vconf/db/comss/kestranaversion",
                       "vconf/db/homedeck/",
                       "vconf/db/homedeck/reset/",
                       "vconf/db/homedeck/reset/tavcore",
                       "vconf/db/tav/",
                       "vconf/db/tav/app_sync_status",
                       "vconf/db/tav/factory_reset",
                       "vconf/memory/",
                       "vconf/memory/tav/",
                       "vconf/memory/tav/app_install",
                       "vconf/memory/tav/appsync",
                       "vconf/memory/tav/boot_status",
                   }));
}

TEST_F(DeviceFiles, GiveTheAppsTableEveryColumnInTheLibrarysOrder) {
  MakeDefaultDevice();
  std::vector<std::string> expected;
  for (const char* column : kColumns) expected.push_back(std::string("text:") + column);
  std::vector<std::string> found;
  for (const auto& row : QueryDevice(
           "select name || ' ' || lower(type) from pragma_table_info('widgetinfo') order by cid")) {
    found.push_back(row.at(0));
  }
  EXPECT_EQ(found, expected);
}

TEST_F(DeviceFiles, KeepIdsAndConfigurationNamesUnique) {
  MakeDefaultDevice();
  EXPECT_EQ(
      QueryDevice("select name, lower(type) from pragma_table_info('widgetinfo') where pk > 0"),
      (Rows{{"text:id", "text:text"}}));
  EXPECT_EQ(
      QueryDevice("select name, lower(type), pk from pragma_table_info('TAVConfigTable')"),
      (Rows{{"text:name", "text:text", "integer:1"}, {"text:value", "text:text", "integer:0"}}));
}

TEST_F(DeviceFiles, HoldASoundDatabaseWithEveryAppOfTheSeed) {
  MakeDefaultDevice();
  EXPECT_EQ(QueryDevice("pragma integrity_check"), (Rows{{"text:ok"}}));
  const std::string seed = ReadFile(DEFAULT_SEED);
  Json::Value parsed;
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  ASSERT_TRUE(reader->parse(seed.data(), seed.data() + seed.size(), &parsed, nullptr));
  EXPECT_EQ(QueryDevice("select count(*) from widgetinfo"),
            (Rows{{"integer:" + std::to_string(parsed["apps"].size())}}));
  EXPECT_GE(parsed["apps"].size(), 40U);
}

TEST_F(DeviceFiles, HaveAnAppOfEveryKindByDefault) {
  MakeDefaultDevice();
  for (const char* kind : {"length(cast(title as blob)) > 127",
                           "is_hidden = 1",
                           "is_lock = 1",
                           "limit_age = 7",
                           "limit_age = 12",
                           "limit_age = 16",
                           "limit_age = 18",
                           "is_usb_app = 1",
                           "is_ispbound = 1",
                           "is_hybrid_tv = 1 and hybrid_app <> ''",
                           "is_premium_game = 1",
                           "use_count = 0 and launch_date = ''",
                           "use_count > 100 and launch_date <> ''",
                           "install_state <> 3",
                           "is_app_available = 0",
                           "is_need_reset = 1",
                           "app_index < 300 and install_type = 'builtin'",
                           "app_index > 299",
                           "app_featured = 1",
                           "app_featured = 2",
                           "app_featured = 4",
                           "app_featured = 8",
                           "app_type = 2",
                           "app_type = 4",
                           "ait_orgid <> '' and ait_appid <> ''",
                           "reserved_string_16 <> ''",
                           "reserved_string_10 <> ''",
                           "reserved_tinyint_10 = 1",
                           "tizen_id = 'org.tizen.browser'",
                           "id = 'org.example.vitrine-loop'"}) {
    EXPECT_NE(QueryDevice(std::string("select count(*) from widgetinfo where ") + kind),
              (Rows{{"integer:0"}}))
        << kind;
  }
}

TEST_F(DeviceFiles, FillColumnsThatTheSeedLeavesOut) {
  MakeDevice(R"({"apps": [{"id": "org.example.bare"}]})");
  std::vector<std::string> expected;
  for (const std::string column : kColumns) {
    if (column == "id text") {
      expected.push_back("text:org.example.bare");
    } else if (column == "install_state integer") {
      expected.push_back("integer:3");
    } else if (column == "is_app_available integer") {
      expected.push_back("integer:1");
    } else {
      expected.push_back(column.find(" text") != std::string::npos ? "text:" : "integer:0");
    }
  }
  EXPECT_EQ(QueryDevice("select * from widgetinfo"), (Rows{expected}));
}

TEST_F(DeviceFiles, KeepValuesAsTheSeedGivesThem) {
  MakeDevice(R"({"apps": [
    {"id": "b", "title": "Größe '\"; drop table x;--", "size": -2147483648, "rating": null},
    {"id": "a", "title": null, "size": 2147483647, "install_state": 1}],
    "config": {"SYNC_STATE": "2", "EMPTY": ""}})");
  EXPECT_EQ(QueryDevice("select id, title, size, rating, install_state from widgetinfo"),
            (Rows{{"text:b", "text:Größe '\"; drop table x;--", "integer:-2147483648",
                   "null:", "integer:3"},
                  {"text:a", "null:", "integer:2147483647", "integer:0", "integer:1"}}));
  EXPECT_EQ(QueryDevice("select name, value from TAVConfigTable order by name"),
            (Rows{{"text:EMPTY", "text:"}, {"text:SYNC_STATE", "text:2"}}));
}

TEST_F(DeviceFiles, HoldSettingsWithTheirTypes) {
  MakeDevice(R"({"settings": {"db/tav/factory_reset": 2, "db/comss/appkey": "7"}})");
  EXPECT_EQ(Content("vconf/db/tav/factory_reset"), "int\n2\n");
  EXPECT_EQ(Content("vconf/db/comss/appkey"), "string\n7\n");
}

TEST_F(DeviceFiles, HoldFeaturesPackagesAndTheBlacklist) {
  MakeDevice(R"({
    "features": {"custom": {"com.example/size": 8, "com.example/id": "a=b"}, "value": {"701": 1}},
    "packages": {"Ab1": {"version": "1.0", "icon": "/i.png"}, "Cd2": {}},
    "blacklist": ["Cd2", "Ab1"]})");
  EXPECT_EQ(Content("system-info.ini"),
            "[custom]\ncom.example/id=a=b\ncom.example/size=8\n\n[value]\n701=1\n");
  EXPECT_EQ(Content("packages.ini"), "[Ab1]\nversion=1.0\nicon=/i.png\n\n[Cd2]\nversion=\nicon=\n");
  EXPECT_EQ(Content("etc/tavcore/built_in_app/entry_smart_blacklist.txt"), "Cd2\nAb1\n");
}

TEST_F(DeviceFiles, AreThereForAnEmptySeedToo) {
  MakeDevice("{}");
  EXPECT_EQ(QueryDevice("select (select count(*) from widgetinfo), "
                        "(select count(*) from TAVConfigTable)"),
            (Rows{{"integer:0", "integer:0"}}));
  EXPECT_TRUE(fs::is_directory(Device() / "vconf"));
  EXPECT_TRUE(fs::is_directory(Device() / "data/tavcore/common"));
  EXPECT_EQ(Content("etc/tavcore/built_in_app/entry_smart_blacklist.txt"), "");
}

}  // namespace
}  // namespace test
