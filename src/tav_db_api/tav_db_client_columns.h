// SPDX-License-Identifier: Apache-2.0
//
// The columns that every app query selects, in the order in which it selects them, and the
// table they come from. The gaps and the order of the reserved names are the service's schema.
#ifndef TAV_DB_API_TAV_DB_CLIENT_COLUMNS_H_
#define TAV_DB_API_TAV_DB_CLIENT_COLUMNS_H_

#include <cstddef>

constexpr char kAppsTable[] = "widgetinfo";

// Position of a column in a row, and its name: one list, so that both have the same order.
#define TAV_APP_COLUMNS(COLUMN)                         \
  COLUMN(kId, "id")                                     \
  COLUMN(kTitle, "title")                               \
  COLUMN(kRunTitle, "run_title")                        \
  COLUMN(kPannelIconPath, "pannel_icon_path")           \
  COLUMN(kFirstscreenIconPath, "firstscreen_icon_path") \
  COLUMN(kVersion, "version")                           \
  COLUMN(kInstallDate, "install_date")                  \
  COLUMN(kTizenId, "tizen_id")                          \
  COLUMN(kSize, "size")                                 \
  COLUMN(kAppIndex, "app_index")                        \
  COLUMN(kAppFeatured, "app_featured")                  \
  COLUMN(kIsSupportVoice, "is_support_voice")           \
  COLUMN(kIsSupportGesture, "is_support_gesture")       \
  COLUMN(kIsRemovable, "is_removable")                  \
  COLUMN(kIsDisplay, "is_display")                      \
  COLUMN(kIsLock, "is_lock")                            \
  COLUMN(kInstallSourceType, "install_source_type")     \
  COLUMN(kIsUsbApp, "is_usb_app")                       \
  COLUMN(kIsNeedUpdate, "is_need_update")               \
  COLUMN(kIsUpdated, "is_updated")                      \
  COLUMN(kIsMultiScreen2, "is_multi_screen2")           \
  COLUMN(kLimitAge, "limit_age")                        \
  COLUMN(kIsAgeAuth, "is_age_auth")                     \
  COLUMN(kAppType, "app_type")                          \
  COLUMN(kIconPath, "icon_path")                        \
  COLUMN(kInstallPath, "install_path")                  \
  COLUMN(kIsHidden, "is_hidden")                        \
  COLUMN(kIsNetwork, "is_network")                      \
  COLUMN(kIsPremiumGame, "is_premium_game")             \
  COLUMN(kPkgname, "pkgname")                           \
  COLUMN(kWidgetCategory, "widget_category")            \
  COLUMN(kUseCount, "use_count")                        \
  COLUMN(kInstallState, "install_state")                \
  COLUMN(kIsNeedLogin, "is_need_login")                 \
  COLUMN(kIsTicker, "is_ticker")                        \
  COLUMN(kIsMultiTasking, "is_multi_tasking")           \
  COLUMN(kInstallType, "install_type")                  \
  COLUMN(kUseGamepad, "use_gamepad")                    \
  COLUMN(kHbbTV, "hbbTV")                               \
  COLUMN(kHybridApp, "hybrid_app")                      \
  COLUMN(kReservedString1, "reserved_string_1")         \
  COLUMN(kReservedString2, "reserved_string_2")         \
  COLUMN(kReservedTinyint1, "reserved_tinyint_1")       \
  COLUMN(kReservedTinyint2, "reserved_tinyint_2")       \
  COLUMN(kReservedTinyint3, "reserved_tinyint_3")       \
  COLUMN(kReservedTinyint4, "reserved_tinyint_4")       \
  COLUMN(kReservedTinyint5, "reserved_tinyint_5")       \
  COLUMN(kReservedTinyint7, "reserved_tinyint_7")       \
  COLUMN(kReservedString3, "reserved_string_3")         \
  COLUMN(kReservedString4, "reserved_string_4")         \
  COLUMN(kReservedTinyint8, "reserved_tinyint_8")       \
  COLUMN(kReservedString5, "reserved_string_5")         \
  COLUMN(kReservedString6, "reserved_string_6")         \
  COLUMN(kReservedInt1, "reserved_int_1")               \
  COLUMN(kReservedString9, "reserved_string_9")         \
  COLUMN(kReservedTinyint10, "reserved_tinyint_10")     \
  COLUMN(kReservedString10, "reserved_string_10")       \
  COLUMN(kReservedString11, "reserved_string_11")       \
  COLUMN(kReservedTinyint11, "reserved_tinyint_11")     \
  COLUMN(kReservedString16, "reserved_string_16")       \
  COLUMN(kReservedString14, "reserved_string_14")       \
  COLUMN(kReservedString18, "reserved_string_18")       \
  COLUMN(kTavorder, "tavorder")                         \
  COLUMN(kReservedString19, "reserved_string_19")       \
  COLUMN(kReservedString20, "reserved_string_20")       \
  COLUMN(kReservedTinyint15, "reserved_tinyint_15")     \
  COLUMN(kReservedTinyint16, "reserved_tinyint_16")     \
  COLUMN(kReservedTinyint17, "reserved_tinyint_17")     \
  COLUMN(kReservedString21, "reserved_string_21")       \
  COLUMN(kReservedTinyint19, "reserved_tinyint_19")     \
  COLUMN(kReservedString24, "reserved_string_24")

enum ColumnIndex : unsigned int {
#define TAV_COLUMN_INDEX(index, name) index,
  TAV_APP_COLUMNS(TAV_COLUMN_INDEX)
#undef TAV_COLUMN_INDEX
};

constexpr char Column[][30] = {
#define TAV_COLUMN_NAME(index, name) name,
    TAV_APP_COLUMNS(TAV_COLUMN_NAME)
#undef TAV_COLUMN_NAME
};

constexpr std::size_t kColumnCount = sizeof(Column) / sizeof(Column[0]);
static_assert(kColumnCount == 71, "the service's table has 71 columns that apps are read from");
static_assert(kReservedString24 == kColumnCount - 1, "names and positions have the same order");

#endif  // TAV_DB_API_TAV_DB_CLIENT_COLUMNS_H_
