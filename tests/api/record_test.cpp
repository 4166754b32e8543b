// SPDX-License-Identifier: Apache-2.0
//
// The public record: its layout, and the column that each of its fields comes from.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <map>

#include "support/device.h"
#include "tav_db_api.h"

namespace {

using test::App;

struct FieldOfRecord {
  const char* name;
  std::size_t offset;
  const char* column;  // null: never filled
};

#define TAV_FIELD(name, column) \
  { #name, offsetof(tav_app_info_s, name), column }

constexpr FieldOfRecord kTexts[] = {
    TAV_FIELD(app_id, "id"),
    TAV_FIELD(app_title, "title"),
    TAV_FIELD(app_installed_path, "install_path"),
    TAV_FIELD(app_icon_path, "icon_path"),
    TAV_FIELD(app_panel_icon_path, "icon_path"),
    TAV_FIELD(app_version, "version"),
    TAV_FIELD(install_date, "install_date"),
    TAV_FIELD(app_tizen_id, "tizen_id"),
    TAV_FIELD(pkgname, "pkgname"),
    TAV_FIELD(app_widget_category, "widget_category"),
    TAV_FIELD(app_runtitle, "run_title"),
    TAV_FIELD(type, "install_type"),
    TAV_FIELD(spare_string_1, nullptr),
    TAV_FIELD(spare_string_2, nullptr),
    TAV_FIELD(extra_icon_path, "icon_path"),
    TAV_FIELD(gamepad, "reserved_string_1"),
    TAV_FIELD(firstscreen_icon_dir, "icon_path"),
    TAV_FIELD(ambient_screen_support, "reserved_string_4"),
    TAV_FIELD(ambient_icon_path, "icon_path"),
    TAV_FIELD(hbbtv, "hbbTV"),
    TAV_FIELD(native_id, "hybrid_app"),
    TAV_FIELD(waiting_screen_type, "reserved_string_2"),
    TAV_FIELD(launch_user_data, "reserved_string_6"),
    TAV_FIELD(content_id, "reserved_string_9"),
};

constexpr FieldOfRecord kIntegers[] = {
    TAV_FIELD(size, "size"),
    TAV_FIELD(use_count, "use_count"),
    TAV_FIELD(app_index, "app_index"),
    TAV_FIELD(app_featured, "app_featured"),
    TAV_FIELD(app_type, "app_type"),
    TAV_FIELD(installState, "install_state"),
    TAV_FIELD(is_hidden, "is_hidden"),
    TAV_FIELD(is_support_voice, "is_support_voice"),
    TAV_FIELD(is_support_gesture, "is_support_gesture"),
    TAV_FIELD(is_network, "is_network"),
    TAV_FIELD(is_removable, "is_removable"),
    TAV_FIELD(is_display, "is_display"),
    TAV_FIELD(spare_int_1, nullptr),
    TAV_FIELD(is_lock, nullptr),  // computed
    TAV_FIELD(spare_int_2, nullptr),
    TAV_FIELD(is_premium_game, "is_premium_game"),
    TAV_FIELD(is_need_login, "is_need_login"),
    TAV_FIELD(is_need_update, "is_need_update"),
    TAV_FIELD(installed_source_type, "install_source_type"),
    TAV_FIELD(is_updated, "is_updated"),
    TAV_FIELD(is_ticker, "is_ticker"),
    TAV_FIELD(is_multi_screen2, "is_multi_screen2"),
    TAV_FIELD(is_multi_tasking, "is_multi_tasking"),
    TAV_FIELD(is_usb_app, "is_usb_app"),
    TAV_FIELD(is_age_auth, "is_age_auth"),
    TAV_FIELD(app_age_limit, "limit_age"),
    TAV_FIELD(use_gamepad, "use_gamepad"),
    TAV_FIELD(is_need_uninstall, "reserved_tinyint_1"),
    TAV_FIELD(is_icon_mutlilang_support, "reserved_tinyint_8"),
    TAV_FIELD(is_transparent_support, "reserved_tinyint_2"),
    TAV_FIELD(is_partial_overlay_support, "reserved_tinyint_3"),
    TAV_FIELD(is_websdi_support, "reserved_tinyint_4"),
    TAV_FIELD(is_disk_cache, "reserved_tinyint_5"),
    TAV_FIELD(is_force_launch_support, "reserved_tinyint_7"),
    TAV_FIELD(launch_type, "reserved_int_1"),
};

std::string TextOf(const tav_app_info_s& info, const FieldOfRecord& field) {
  return reinterpret_cast<const char*>(&info) + field.offset;
}

int IntegerOf(const tav_app_info_s& info, const FieldOfRecord& field) {
  int32_t value;
  std::memcpy(&value, reinterpret_cast<const char*>(&info) + field.offset, sizeof(value));
  return value;
}

class Record : public ::testing::Test {
 protected:
  tav_app_info_s Lookup(const std::string& id) {
    tav_app_info_s info;
    std::memset(&info, 'x', sizeof(info));
    EXPECT_EQ(tav_get_app_info(id.c_str(), &info), 0);
    return info;
  }
  int LockOf(const App& app) {
    device.Sql("delete from widgetinfo").Install(app);
    return Lookup("a").is_lock;
  }

  test::Device device;
};

TEST(RecordLayout, Has3212BytesAndSaysSo) {
  EXPECT_EQ(sizeof(tav_app_info_s), 3212U);
  EXPECT_EQ(get_size_of_tav_app_info_s(), 3212U);
}

TEST(RecordLayout, HasItsTextsOf128BytesBeforeItsIntegersInTheOrderOfTheInterface) {
  std::size_t offset = 0;
  for (const FieldOfRecord& field : kTexts) {
    EXPECT_EQ(field.offset, offset) << field.name;
    offset += 128;
  }
  EXPECT_EQ(offset, 24U * 128);
  for (const FieldOfRecord& field : kIntegers) {
    EXPECT_EQ(field.offset, offset) << field.name;
    offset += 4;
  }
  EXPECT_EQ(offset, sizeof(tav_app_info_s));
}

TEST_F(Record, TakesEachFieldFromItsOwnColumn) {
  const App app = test::AppWithEveryColumnSet("a");
  device.Install(app);
  const tav_app_info_s info = Lookup("a");
  for (const FieldOfRecord& field : kTexts) {
    const std::string expected = field.column == nullptr
                                     ? ""
                                     : std::get<std::string>(app.Values().count(field.column) != 0
                                                                 ? app.Values().at(field.column)
                                                                 : test::Value("missing"));
    EXPECT_EQ(TextOf(info, field), expected) << field.name;
  }
  for (const FieldOfRecord& field : kIntegers) {
    if (std::strcmp(field.name, "is_lock") == 0) continue;
    int expected = 0;
    if (field.column != nullptr) {
      expected = std::strcmp(field.column, "install_state") == 0
                     ? 3
                     : std::get<int>(app.Values().at(field.column));
    }
    EXPECT_EQ(IntegerOf(info, field), expected) << field.name;
  }
}

TEST_F(Record, CutsATextAt127BytesAndTerminatesIt) {
  for (const std::size_t length : {0U, 126U, 127U, 128U, 200U}) {
    const std::string text(length, 't');
    device.Sql("delete from widgetinfo").Install(App("a").Title(text));
    EXPECT_EQ(std::string(Lookup("a").app_title), text.substr(0, 127)) << length;
  }
}

TEST_F(Record, CutsATextInTheMiddleOfACharacter) {
  std::string text;
  for (int i = 0; i < 50; ++i) text += "\xED\x95\x9C";  // three bytes each; 127 = 42 × 3 + 1
  device.Install(App("a").Title(text));
  EXPECT_EQ(std::string(Lookup("a").app_title), text.substr(0, 127));
}

TEST_F(Record, ReadsNullAsEmptyAndZero) {
  App app("a");
  const App every_column = test::AppWithEveryColumnSet("a");
  for (const auto& [column, value] : every_column.Values()) {
    if (column != "id") app.Null(column);
  }
  device.Install(app);
  tav_app_info_s expected = {};
  std::strcpy(expected.app_id, "a");
  expected.installState = 3;
  const tav_app_info_s info = Lookup("a");
  EXPECT_EQ(std::memcmp(&info, &expected, sizeof(info)), 0);
}

TEST_F(Record, ReadsColumnsOfTheWrongKindAsSqliteConvertsThem) {
  device.Install(App("a").Set("title", 42).Set("size", "12 MB").Set("app_index", "many"));
  const tav_app_info_s info = Lookup("a");
  EXPECT_STREQ(info.app_title, "42");
  EXPECT_EQ(info.size, 12);
  EXPECT_EQ(info.app_index, 0);
}

TEST_F(Record, IsLockedByItsOwnColumnWhateverTheSetting) {
  for (const char* setting : {"OFF", "ALL", "", "18+"}) {
    device.Setting("db/appstore/ratingvalue", setting);
    EXPECT_EQ(LockOf(App("a").Locked()), 1) << setting;
    EXPECT_EQ(LockOf(App("a").Set("is_lock", -5)), 1) << setting;
  }
  device.Unset("db/appstore/ratingvalue");
  EXPECT_EQ(LockOf(App("a").Locked()), 1);
  EXPECT_EQ(LockOf(App("a").Set("is_lock", 7)), 1);
}

TEST_F(Record, IsLockedByItsAgeLimitFromTheSettingsAgeOn) {
  device.Setting("db/appstore/ratingvalue", "18+");
  EXPECT_EQ(LockOf(App("a").AgeLimit(17)), 0);
  EXPECT_EQ(LockOf(App("a").AgeLimit(18)), 1);
  EXPECT_EQ(LockOf(App("a").AgeLimit(21)), 1);
}

TEST_F(Record, IsNotLockedByAgeWhenTheSettingSetsNoLimit) {
  for (const char* setting : {"OFF", "ALL", "", "9"}) {
    device.Setting("db/appstore/ratingvalue", setting);
    EXPECT_EQ(LockOf(App("a").AgeLimit(99)), 0) << setting;
  }
  device.Unset("db/appstore/ratingvalue");
  EXPECT_EQ(LockOf(App("a").AgeLimit(99)), 0);
  EXPECT_TRUE(device.GetLog().HasError("failed to get db/appstore/ratingvalue value"));
}

TEST_F(Record, NamesTheSourceThatInstalledTheAppInTheLogAlone) {
  device.Install(App("a").Set("reserved_string_24", std::string(200, 's')));
  Lookup("a");
  EXPECT_TRUE(device.GetLog().Has("app a is installed by " + std::string(127, 's')));
}

}  // namespace
