// SPDX-License-Identifier: Apache-2.0
//
// The schema of the service's database: the columns of the apps table with their kinds and the
// values a fresh row has, and the SQL that creates both tables.
#ifndef TOOLS_DEVICE_SCHEMA_H_
#define TOOLS_DEVICE_SCHEMA_H_

#include <cstddef>
#include <optional>
#include <string>

namespace tav_device {

inline constexpr char kAppsTable[] = "widgetinfo";
inline constexpr char kConfigTable[] = "TAVConfigTable";

// Where the database lies under the device root.
inline constexpr char kDatabaseFile[] = "dbspace/.tavcore.db";

enum class ColumnKind { kText, kInteger };

struct Column {
  const char* name;
  ColumnKind kind;
  int initial = 0;  // of an integer; a text is empty at first
};

// The first 71 columns are the ones that the library selects, in its order; the rest appear in
// conditions and single-value reads only.
inline constexpr Column kAppColumns[] = {
    {"id", ColumnKind::kText},
    {"title", ColumnKind::kText},
    {"run_title", ColumnKind::kText},
    {"pannel_icon_path", ColumnKind::kText},
    {"firstscreen_icon_path", ColumnKind::kText},
    {"version", ColumnKind::kText},
    {"install_date", ColumnKind::kText},
    {"tizen_id", ColumnKind::kText},
    {"size", ColumnKind::kInteger},
    {"app_index", ColumnKind::kInteger},
    {"app_featured", ColumnKind::kInteger},
    {"is_support_voice", ColumnKind::kInteger},
    {"is_support_gesture", ColumnKind::kInteger},
    {"is_removable", ColumnKind::kInteger},
    {"is_display", ColumnKind::kInteger},
    {"is_lock", ColumnKind::kInteger},
    {"install_source_type", ColumnKind::kInteger},
    {"is_usb_app", ColumnKind::kInteger},
    {"is_need_update", ColumnKind::kInteger},
    {"is_updated", ColumnKind::kInteger},
    {"is_multi_screen2", ColumnKind::kInteger},
    {"limit_age", ColumnKind::kInteger},
    {"is_age_auth", ColumnKind::kInteger},
    {"app_type", ColumnKind::kInteger},
    {"icon_path", ColumnKind::kText},
    {"install_path", ColumnKind::kText},
    {"is_hidden", ColumnKind::kInteger},
    {"is_network", ColumnKind::kInteger},
    {"is_premium_game", ColumnKind::kInteger},
    {"pkgname", ColumnKind::kText},
    {"widget_category", ColumnKind::kText},
    {"use_count", ColumnKind::kInteger},
    {"install_state", ColumnKind::kInteger, 3},
    {"is_need_login", ColumnKind::kInteger},
    {"is_ticker", ColumnKind::kInteger},
    {"is_multi_tasking", ColumnKind::kInteger},
    {"install_type", ColumnKind::kText},
    {"use_gamepad", ColumnKind::kInteger},
    {"hbbTV", ColumnKind::kText},
    {"hybrid_app", ColumnKind::kText},
    {"reserved_string_1", ColumnKind::kText},
    {"reserved_string_2", ColumnKind::kText},
    {"reserved_tinyint_1", ColumnKind::kInteger},
    {"reserved_tinyint_2", ColumnKind::kInteger},
    {"reserved_tinyint_3", ColumnKind::kInteger},
    {"reserved_tinyint_4", ColumnKind::kInteger},
    {"reserved_tinyint_5", ColumnKind::kInteger},
    {"reserved_tinyint_7", ColumnKind::kInteger},
    {"reserved_string_3", ColumnKind::kText},
    {"reserved_string_4", ColumnKind::kText},
    {"reserved_tinyint_8", ColumnKind::kInteger},
    {"reserved_string_5", ColumnKind::kText},
    {"reserved_string_6", ColumnKind::kText},
    {"reserved_int_1", ColumnKind::kInteger},
    {"reserved_string_9", ColumnKind::kText},
    {"reserved_tinyint_10", ColumnKind::kInteger},
    {"reserved_string_10", ColumnKind::kText},
    {"reserved_string_11", ColumnKind::kText},
    {"reserved_tinyint_11", ColumnKind::kInteger},
    {"reserved_string_16", ColumnKind::kText},
    {"reserved_string_14", ColumnKind::kText},
    {"reserved_string_18", ColumnKind::kText},
    {"tavorder", ColumnKind::kText},
    {"reserved_string_19", ColumnKind::kText},
    {"reserved_string_20", ColumnKind::kText},
    {"reserved_tinyint_15", ColumnKind::kInteger},
    {"reserved_tinyint_16", ColumnKind::kInteger},
    {"reserved_tinyint_17", ColumnKind::kInteger},
    {"reserved_string_21", ColumnKind::kText},
    {"reserved_tinyint_19", ColumnKind::kInteger},
    {"reserved_string_24", ColumnKind::kText},
    {"is_app_available", ColumnKind::kInteger, 1},
    {"is_need_reset", ColumnKind::kInteger},
    {"launch_date", ColumnKind::kText},
    {"is_ispbound", ColumnKind::kInteger},
    {"is_hybrid_tv", ColumnKind::kInteger},
    {"rating", ColumnKind::kInteger},
    {"ait_orgid", ColumnKind::kText},
    {"ait_appid", ColumnKind::kText},
};

inline constexpr std::size_t kAppColumnCount = sizeof(kAppColumns) / sizeof(kAppColumns[0]);
inline constexpr std::size_t kIdColumn = 0;
static_assert(kAppColumnCount == 71 + 8, "the apps table has 79 columns");

// The position of a column in kAppColumns, or nothing when the table has no such column.
std::optional<std::size_t> FindColumn(const std::string& name);

// The statements that create both tables.
std::string CreateTablesSql();

// The statement that adds one app, with a mark for each column in the order of kAppColumns.
std::string InsertAppSql();

}  // namespace tav_device

#endif  // TOOLS_DEVICE_SCHEMA_H_
