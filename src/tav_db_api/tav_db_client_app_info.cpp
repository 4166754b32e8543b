// SPDX-License-Identifier: Apache-2.0
#include "tav_db_api/tav_db_client_app_info.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <type_traits>

#include "tav_db_api/tav_db_client_columns.h"
#include "tav_db_api/tav_db_client_text.h"

namespace {

struct Field {
  std::size_t offset;
  ColumnIndex column;
};

// One icon fills five fields: deliberate, the service keeps no other icon current.
constexpr Field kTextFields[] = {
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

// is_lock is computed and stands in neither table; the spare fields are never filled.
constexpr Field kIntegerFields[] = {
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

constexpr std::size_t kTextCount = sizeof(kTextFields) / sizeof(Field);
constexpr std::size_t kIntegerCount = sizeof(kIntegerFields) / sizeof(Field);
static_assert(kTextCount == 24 - 2 && kIntegerCount == 35 - 3, "each field has one source");
static_assert(sizeof(tav_app_info_s) == 3212, "the record's size is part of the interface");
static_assert(offsetof(tav_app_info_s, size) == std::size_t{24} * TAV_TEXT_SIZE,
              "texts stand before integers");
static_assert(std::is_trivial_v<tav_app_info_s>, "records are zeroed and moved as bytes");

constexpr int kLastBuiltInIndex = 299;

void SetRecord(tav_app_info_s* info, AgeRating& rating) REQUIRES(g_Mute) {
  m_GetWidgetInfo(info, rating);
  TAV_LOGI("set app_info success");
}

void LogRecord(const tav_app_info_s& app) {
  TAV_LOGI(
      "app_id = %s,app_index = %d,app_title = %s,app_version = %s,app_tizen_id = %s"
      ",app_runtitle = %s,app_featured = %d,is_removable = %d,is_lock = %d,is_need_update = %d"
      ",is_updated = %d,is_usb_app = %d,is_hidden = %d,is_network = %d,install_date = %s"
      ",installState = %d,gamepad = %s,app_type = %d,is_need_login = %d"
      ",installed_source_type = %d,is_multi_tasking = %d,is_age_auth = %d,app_age_limit = %d"
      ",ambient_screen_support = %s,is_icon_mutlilang_support = %d,launch_type = %d"
      ",app_icon_path = %s,app_installed_path = %s,app_panel_icon_path = %s"
      ",firstscreen_icon_dir = %s,ambient_icon_path = %s",
      app.app_id, app.app_index, app.app_title, app.app_version, app.app_tizen_id, app.app_runtitle,
      app.app_featured, app.is_removable, app.is_lock, app.is_need_update, app.is_updated,
      app.is_usb_app, app.is_hidden, app.is_network, app.install_date, app.installState,
      app.gamepad, app.app_type, app.is_need_login, app.installed_source_type, app.is_multi_tasking,
      app.is_age_auth, app.app_age_limit, app.ambient_screen_support, app.is_icon_mutlilang_support,
      app.launch_type, app.app_icon_path, app.app_installed_path, app.app_panel_icon_path,
      app.firstscreen_icon_dir, app.ambient_icon_path);
  TAV_LOGI(
      "app_widget_category = %s,type = %s,hbbtv = %s,native_id = %s,waiting_screen_type = %s"
      ",launch_user_data = %s,content_id = %s,use_count = %u,is_display = %d"
      ",is_multi_screen2 = %d,is_need_uninstall = %d,is_transparent_support = %d"
      ",is_partial_overlay_support = %d,is_websdi_support = %d,is_disk_cache = %d"
      ",is_force_launch_support = %d,is_premium_game = %d",
      app.app_widget_category, app.type, app.hbbtv, app.native_id, app.waiting_screen_type,
      app.launch_user_data, app.content_id, static_cast<unsigned int>(app.use_count),
      app.is_display, app.is_multi_screen2, app.is_need_uninstall, app.is_transparent_support,
      app.is_partial_overlay_support, app.is_websdi_support, app.is_disk_cache,
      app.is_force_launch_support, app.is_premium_game);
}

}  // namespace

const std::string& SelectApps() {
  // Never destroyed: other threads may still query while the process exits.
  static const auto& text = *new std::string([] {
    std::string columns;
    for (const auto& column : Column) {
      if (!columns.empty()) columns += ",";
      columns += column;
    }
    return "select " + columns + " from " + kAppsTable;
  }());
  return text;
}

void m_GetWidgetInfo(tav_app_info_s* info, AgeRating& rating) {
  if (info == nullptr) return;
  char* record = reinterpret_cast<char*>(info);
  for (const Field& field : kTextFields) {
    CopyText(record + field.offset, GetStringFromResult(field.column));
  }
  for (const Field& field : kIntegerFields) {
    const int32_t value = GetIntegerFromResult(field.column);
    std::memcpy(record + field.offset, &value, sizeof(value));
  }

  const bool is_locked_by_age = rating.Locks(info->app_age_limit).value_or(false);
  if (rating.IsKnown()) TAV_LOGI("app_info->app_age_limit[%d]", info->app_age_limit);
  info->is_lock = is_locked_by_age || GetIntegerFromResult(kIsLock) != 0 ? 1 : 0;
  TAV_LOGI("app %s is installed by %.*s", info->app_id, TAV_TEXT_SIZE - 1,
           GetStringFromResult(kReservedString24));
}

int GetAppsTableInfo(tav_app_info_s* info, const std::string& condition,
                     const std::vector<_TAVDB_BIND_T>& binds) {
  const int prepared = PrepareAndBind(SelectApps() + condition, binds);
  if (prepared != 0) return prepared;
  *info = {};

  AgeRating rating;
  const int result = ReadFirstRow([&]() REQUIRES(g_Mute) { SetRecord(info, rating); });
  if (result == kFound) LogRecord(*info);
  return result;
}

int GetAppsTableList(tav_app_info_s* list, int count, const std::string& condition, int /*ignored*/,
                     const std::vector<_TAVDB_BIND_T>& binds, bool lastDownload) {
  TAV_LOGI("sizeof(Column)/30-1 = %zu", sizeof(Column) / 30 - 1);
  const int prepared = PrepareAndBind(SelectApps() + condition, binds);
  if (prepared != 0) return prepared;
  const int records = std::max(count, 0);
  if (records > 0) std::memset(list, 0, sizeof(tav_app_info_s) * static_cast<std::size_t>(records));

  AgeRating rating;
  int stored = 0;
  RowWalk rows;
  while (rows.Next()) {
    if (stored == records) continue;
    SetRecord(&list[stored], rating);
    ++stored;
  }
  if (lastDownload) {
    TAV_LOGI("view mode : last download");
    sort_applist_lastdownload(list, count);
  }
  if (rows.WasBusy()) return kBusy;
  std::for_each(list, list + records, LogRecord);
  return 0;
}

void sort_applist_lastdownload(tav_app_info_s* list, int count) {
  if (count <= 0) return;
  tav_app_info_s* const end = list + count;
  tav_app_info_s* downloaded = end;
  while (downloaded != list && (downloaded - 1)->app_index > kLastBuiltInIndex) --downloaded;
  std::reverse(downloaded, end);
  std::rotate(list, downloaded, end);
}
