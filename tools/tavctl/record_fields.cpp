// SPDX-License-Identifier: Apache-2.0
//
// The table of the public record's fields. The names are the record's own.
#include "record_fields.h"

#include <cstring>

namespace {

// The kind follows from the field's own type, so that the table cannot contradict the record.
constexpr FieldKind KindOf(char (tav_app_info_s::*)[TAV_TEXT_SIZE]) {
  return FieldKind::kText;
}
constexpr FieldKind KindOf(std::int32_t tav_app_info_s::*) {
  return FieldKind::kInteger;
}

}  // namespace

#define RECORD_FIELD(name) \
  { #name, offsetof(tav_app_info_s, name), KindOf(&tav_app_info_s::name) }

constexpr RecordField kRecordFields[kRecordFieldCount] = {
    RECORD_FIELD(app_id),
    RECORD_FIELD(app_title),
    RECORD_FIELD(app_installed_path),
    RECORD_FIELD(app_icon_path),
    RECORD_FIELD(app_panel_icon_path),
    RECORD_FIELD(app_version),
    RECORD_FIELD(install_date),
    RECORD_FIELD(app_tizen_id),
    RECORD_FIELD(pkgname),
    RECORD_FIELD(app_widget_category),
    RECORD_FIELD(app_runtitle),
    RECORD_FIELD(type),
    RECORD_FIELD(spare_string_1),
    RECORD_FIELD(spare_string_2),
    RECORD_FIELD(extra_icon_path),
    RECORD_FIELD(gamepad),
    RECORD_FIELD(firstscreen_icon_dir),
    RECORD_FIELD(ambient_screen_support),
    RECORD_FIELD(ambient_icon_path),
    RECORD_FIELD(hbbtv),
    RECORD_FIELD(native_id),
    RECORD_FIELD(waiting_screen_type),
    RECORD_FIELD(launch_user_data),
    RECORD_FIELD(content_id),
    RECORD_FIELD(size),
    RECORD_FIELD(use_count),
    RECORD_FIELD(app_index),
    RECORD_FIELD(app_featured),
    RECORD_FIELD(app_type),
    RECORD_FIELD(installState),
    RECORD_FIELD(is_hidden),
    RECORD_FIELD(is_support_voice),
    RECORD_FIELD(is_support_gesture),
    RECORD_FIELD(is_network),
    RECORD_FIELD(is_removable),
    RECORD_FIELD(is_display),
    RECORD_FIELD(spare_int_1),
    RECORD_FIELD(is_lock),
    RECORD_FIELD(spare_int_2),
    RECORD_FIELD(is_premium_game),
    RECORD_FIELD(is_need_login),
    RECORD_FIELD(is_need_update),
    RECORD_FIELD(installed_source_type),
    RECORD_FIELD(is_updated),
    RECORD_FIELD(is_ticker),
    RECORD_FIELD(is_multi_screen2),
    RECORD_FIELD(is_multi_tasking),
    RECORD_FIELD(is_usb_app),
    RECORD_FIELD(is_age_auth),
    RECORD_FIELD(app_age_limit),
    RECORD_FIELD(use_gamepad),
    RECORD_FIELD(is_need_uninstall),
    RECORD_FIELD(is_icon_mutlilang_support),
    RECORD_FIELD(is_transparent_support),
    RECORD_FIELD(is_partial_overlay_support),
    RECORD_FIELD(is_websdi_support),
    RECORD_FIELD(is_disk_cache),
    RECORD_FIELD(is_force_launch_support),
    RECORD_FIELD(launch_type),
};

#undef RECORD_FIELD

std::string TextOf(const tav::AppInfo& info, const RecordField& field) {
  const char* text = reinterpret_cast<const char*>(&info) + field.offset;
  return std::string(text, strnlen(text, TAV_TEXT_SIZE));
}

std::int32_t IntegerOf(const tav::AppInfo& info, const RecordField& field) {
  std::int32_t value = 0;
  std::memcpy(&value, reinterpret_cast<const char*>(&info) + field.offset, sizeof(value));
  return value;
}
