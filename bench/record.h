// SPDX-License-Identifier: Apache-2.0
//
// What the library's rivals know of a record: its fields with the columns that fill them. Written
// apart from the library's own tables, which a rival must not lean on.
#ifndef BENCH_RECORD_H_
#define BENCH_RECORD_H_

#include <tav_db_api.h>

#include <cstddef>
#include <cstring>
#include <string>

#include "tav_db_api/tav_db_client_columns.h"

namespace bench {

struct Field {
  std::size_t offset;
  ColumnIndex column;
};

inline constexpr Field kTexts[] = {
    {offsetof(tav_app_info_s, app_id), kId},
    {offsetof(tav_app_info_s, app_title), kTitle},
    {offsetof(tav_app_info_s, app_installed_path), kInstallPath},
    {offsetof(tav_app_info_s, app_icon_path), kIconPath},
    {offsetof(tav_app_info_s, app_panel_icon_path), kIconPath},
    {offsetof(tav_app_info_s, app_version), kVersion},
    {offsetof(tav_app_info_s, install_date), kInstallDate},
    {offsetof(tav_app_info_s, app_tizen_id), kTizenId},
    {offsetof(tav_app_info_s, pkgname), kPkgname},
    {offsetof(tav_app_info_s, app_widget_category), kWidgetCategory},
    {offsetof(tav_app_info_s, app_runtitle), kRunTitle},
    {offsetof(tav_app_info_s, type), kInstallType},
    {offsetof(tav_app_info_s, extra_icon_path), kIconPath},
    {offsetof(tav_app_info_s, gamepad), kReservedString1},
    {offsetof(tav_app_info_s, firstscreen_icon_dir), kIconPath},
    {offsetof(tav_app_info_s, ambient_screen_support), kReservedString4},
    {offsetof(tav_app_info_s, ambient_icon_path), kIconPath},
    {offsetof(tav_app_info_s, hbbtv), kHbbTV},
    {offsetof(tav_app_info_s, native_id), kHybridApp},
    {offsetof(tav_app_info_s, waiting_screen_type), kReservedString2},
    {offsetof(tav_app_info_s, launch_user_data), kReservedString6},
    {offsetof(tav_app_info_s, content_id), kReservedString9},
};

inline constexpr Field kIntegers[] = {
    {offsetof(tav_app_info_s, size), kSize},
    {offsetof(tav_app_info_s, use_count), kUseCount},
    {offsetof(tav_app_info_s, app_index), kAppIndex},
    {offsetof(tav_app_info_s, app_featured), kAppFeatured},
    {offsetof(tav_app_info_s, app_type), kAppType},
    {offsetof(tav_app_info_s, installState), kInstallState},
    {offsetof(tav_app_info_s, is_hidden), kIsHidden},
    {offsetof(tav_app_info_s, is_support_voice), kIsSupportVoice},
    {offsetof(tav_app_info_s, is_support_gesture), kIsSupportGesture},
    {offsetof(tav_app_info_s, is_network), kIsNetwork},
    {offsetof(tav_app_info_s, is_removable), kIsRemovable},
    {offsetof(tav_app_info_s, is_display), kIsDisplay},
    {offsetof(tav_app_info_s, is_lock), kIsLock},
    {offsetof(tav_app_info_s, is_premium_game), kIsPremiumGame},
    {offsetof(tav_app_info_s, is_need_login), kIsNeedLogin},
    {offsetof(tav_app_info_s, is_need_update), kIsNeedUpdate},
    {offsetof(tav_app_info_s, installed_source_type), kInstallSourceType},
    {offsetof(tav_app_info_s, is_updated), kIsUpdated},
    {offsetof(tav_app_info_s, is_ticker), kIsTicker},
    {offsetof(tav_app_info_s, is_multi_screen2), kIsMultiScreen2},
    {offsetof(tav_app_info_s, is_multi_tasking), kIsMultiTasking},
    {offsetof(tav_app_info_s, is_usb_app), kIsUsbApp},
    {offsetof(tav_app_info_s, is_age_auth), kIsAgeAuth},
    {offsetof(tav_app_info_s, app_age_limit), kLimitAge},
    {offsetof(tav_app_info_s, use_gamepad), kUseGamepad},
    {offsetof(tav_app_info_s, is_need_uninstall), kReservedTinyint1},
    {offsetof(tav_app_info_s, is_icon_mutlilang_support), kReservedTinyint8},
    {offsetof(tav_app_info_s, is_transparent_support), kReservedTinyint2},
    {offsetof(tav_app_info_s, is_partial_overlay_support), kReservedTinyint3},
    {offsetof(tav_app_info_s, is_websdi_support), kReservedTinyint4},
    {offsetof(tav_app_info_s, is_disk_cache), kReservedTinyint5},
    {offsetof(tav_app_info_s, is_force_launch_support), kReservedTinyint7},
    {offsetof(tav_app_info_s, launch_type), kReservedInt1},
};

inline void SetText(tav_app_info_s* info, const Field& field, const char* text) {
  char* target = reinterpret_cast<char*>(info) + field.offset;
  const std::size_t length = strnlen(text, TAV_TEXT_SIZE - 1);
  std::memcpy(target, text, length);
  target[length] = '\0';
}

inline void SetInteger(tav_app_info_s* info, const Field& field, int value) {
  std::memcpy(reinterpret_cast<char*>(info) + field.offset, &value, sizeof(value));
}

// The statements that the library sends, whole.
struct Statements {
  std::string lookup;
  std::string lookup_by_run_title;
  std::string count;
  std::string list;
  std::string most_used_list;
  std::string multi_screen_list;
  std::string inner_lookup;
  std::string inner_list;
  std::string count_all;
  std::string list_all;
};

const Statements& Sql();

}  // namespace bench

#endif  // BENCH_RECORD_H_
