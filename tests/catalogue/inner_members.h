// SPDX-License-Identifier: Apache-2.0
//
// The inner record's members in the order of their declaration, each with the column that fills
// it and the key of its JSON text. A table of the tests' own: the library's must agree with it.
#ifndef TESTS_CATALOGUE_INNER_MEMBERS_H_
#define TESTS_CATALOGUE_INNER_MEMBERS_H_

#include <map>
#include <string>

#include "support/app.h"
#include "tav_db_api_inner.h"

namespace test {

template <typename Value>
struct InnerMember {
  const char* name;
  Value _APPS_INNER_INFO_T::*member;
  const char* column;
  const char* key;  // null for one that is not written
};

inline const InnerMember<std::string> kInnerTexts[] = {
    {"strAppID", &_APPS_INNER_INFO_T::strAppID, "id", "app_id"},
    {"strTitle", &_APPS_INNER_INFO_T::strTitle, "title", "title"},
    {"strInstallPath", &_APPS_INNER_INFO_T::strInstallPath, "install_path", "installed_path"},
    {"strIconPath", &_APPS_INNER_INFO_T::strIconPath, "icon_path", "icon_path"},
    {"strIconPath2", &_APPS_INNER_INFO_T::strIconPath2, "icon_path", nullptr},
    {"strVersion", &_APPS_INNER_INFO_T::strVersion, "version", "version"},
    {"strInstallDate", &_APPS_INNER_INFO_T::strInstallDate, "install_date", "install_date"},
    {"strTizenID", &_APPS_INNER_INFO_T::strTizenID, "tizen_id", "tizen_id"},
    {"strPackageName", &_APPS_INNER_INFO_T::strPackageName, "pkgname", "package_name"},
    {"strCategory", &_APPS_INNER_INFO_T::strCategory, "widget_category", "category"},
    {"strAppCategory", &_APPS_INNER_INFO_T::strAppCategory, "reserved_string_18", "app_category"},
    {"strRunTitle", &_APPS_INNER_INFO_T::strRunTitle, "run_title", "runtitle"},
    {"strType", &_APPS_INNER_INFO_T::strType, "install_type", "type"},
    {"strIconPath3", &_APPS_INNER_INFO_T::strIconPath3, "icon_path", nullptr},
    {"strGamepad", &_APPS_INNER_INFO_T::strGamepad, "reserved_string_1", "gamepad"},
    {"strIconPath4", &_APPS_INNER_INFO_T::strIconPath4, "icon_path", nullptr},
    {"strAmbientScreenSupport", &_APPS_INNER_INFO_T::strAmbientScreenSupport, "reserved_string_4",
     "ambient_screen_support"},
    {"strIconPath5", &_APPS_INNER_INFO_T::strIconPath5, "icon_path", nullptr},
    {"strHbbTV", &_APPS_INNER_INFO_T::strHbbTV, "hbbTV", "hbbtv"},
    {"strNativeID", &_APPS_INNER_INFO_T::strNativeID, "hybrid_app", "native_id"},
    {"strWaitingScreenType", &_APPS_INNER_INFO_T::strWaitingScreenType, "reserved_string_2",
     "waiting_screen_type"},
    {"strLaunchUserData", &_APPS_INNER_INFO_T::strLaunchUserData, "reserved_string_6",
     "launch_user_data"},
    {"strContentID", &_APPS_INNER_INFO_T::strContentID, "reserved_string_9", "content_id"},
    {"strReservedString10", &_APPS_INNER_INFO_T::strReservedString10, "reserved_string_10",
     nullptr},
    {"strReservedString11", &_APPS_INNER_INFO_T::strReservedString11, "reserved_string_11",
     nullptr},
    {"strAndroidID", &_APPS_INNER_INFO_T::strAndroidID, "reserved_string_16", "android_id"},
    {"strHomeRecentPolicy", &_APPS_INNER_INFO_T::strHomeRecentPolicy, "reserved_string_14",
     "home_recent_policy"},
    {"strOrderType", &_APPS_INNER_INFO_T::strOrderType, "tavorder", "order_type"},
    {"strTargetGroupTag", &_APPS_INNER_INFO_T::strTargetGroupTag, "reserved_string_20",
     "target_group_tag"},
    {"strTargetGroupType", &_APPS_INNER_INFO_T::strTargetGroupType, "reserved_string_19",
     "target_group_type"},
    {"strAndroidExtraData", &_APPS_INNER_INFO_T::strAndroidExtraData, "reserved_string_21",
     "android_extra_data"},
};

inline const InnerMember<int> kInnerNumbers[] = {
    {"iSize", &_APPS_INNER_INFO_T::iSize, "size", "size"},
    {"iUseCount", &_APPS_INNER_INFO_T::iUseCount, "use_count", "use_count"},
    {"iIndex", &_APPS_INNER_INFO_T::iIndex, "app_index", "index"},
    {"iFeatured", &_APPS_INNER_INFO_T::iFeatured, "app_featured", "featured"},
    {"iAppType", &_APPS_INNER_INFO_T::iAppType, "app_type", "app_type"},
    {"iInstallState", &_APPS_INNER_INFO_T::iInstallState, "install_state", "installState"},
    {"iIsHidden", &_APPS_INNER_INFO_T::iIsHidden, "is_hidden", "is_hidden"},
    {"iIsSupportVoice", &_APPS_INNER_INFO_T::iIsSupportVoice, "is_support_voice",
     "is_support_voice"},
    {"iIsSupportGesture", &_APPS_INNER_INFO_T::iIsSupportGesture, "is_support_gesture",
     "is_support_gesture"},
    {"iIsNetwork", &_APPS_INNER_INFO_T::iIsNetwork, "is_network", "is_network"},
    {"iIsRemovable", &_APPS_INNER_INFO_T::iIsRemovable, "is_removable", "is_removable"},
    {"iIsDisplay", &_APPS_INNER_INFO_T::iIsDisplay, "is_display", "is_display"},
    {"iIsLock", &_APPS_INNER_INFO_T::iIsLock, "is_lock", "is_lock"},
    {"iIsPremiumGame", &_APPS_INNER_INFO_T::iIsPremiumGame, "is_premium_game", "is_premium_game"},
    {"iIsNeedLogin", &_APPS_INNER_INFO_T::iIsNeedLogin, "is_need_login", "is_need_login"},
    {"iIsNeedUpdate", &_APPS_INNER_INFO_T::iIsNeedUpdate, "is_need_update", "is_need_update"},
    {"iIsUpdated", &_APPS_INNER_INFO_T::iIsUpdated, "is_updated", "is_updated"},
    {"iIsTicker", &_APPS_INNER_INFO_T::iIsTicker, "is_ticker", "is_ticker"},
    {"iIsMultiScreen2", &_APPS_INNER_INFO_T::iIsMultiScreen2, "is_multi_screen2",
     "is_multi_screen2"},
    {"iIsMultiTasking", &_APPS_INNER_INFO_T::iIsMultiTasking, "is_multi_tasking",
     "is_multi_tasking"},
    {"iIsUsbApp", &_APPS_INNER_INFO_T::iIsUsbApp, "is_usb_app", "is_usb_app"},
    {"iIsAgeAuth", &_APPS_INNER_INFO_T::iIsAgeAuth, "is_age_auth", "is_age_auth"},
    {"iAgeLimit", &_APPS_INNER_INFO_T::iAgeLimit, "limit_age", "app_age_limit"},
    {"iIsNeedUninstall", &_APPS_INNER_INFO_T::iIsNeedUninstall, "reserved_tinyint_1",
     "is_need_uninstall"},
    {"iIsIconMultilangSupport", &_APPS_INNER_INFO_T::iIsIconMultilangSupport, "reserved_tinyint_8",
     "is_icon_multilang_support"},
    {"iIsTransparentSupport", &_APPS_INNER_INFO_T::iIsTransparentSupport, "reserved_tinyint_2",
     "is_transparent_support"},
    {"iIsPartialOverlaySupport", &_APPS_INNER_INFO_T::iIsPartialOverlaySupport,
     "reserved_tinyint_3", "is_partial_overlay_support"},
    {"iIsWebsdiSupport", &_APPS_INNER_INFO_T::iIsWebsdiSupport, "reserved_tinyint_4",
     "is_websdi_support"},
    {"iIsDiskCache", &_APPS_INNER_INFO_T::iIsDiskCache, "reserved_tinyint_5", "is_disk_cache"},
    {"iIsForceLaunchSupport", &_APPS_INNER_INFO_T::iIsForceLaunchSupport, "reserved_tinyint_7",
     "is_force_launch_support"},
    {"iLaunchType", &_APPS_INNER_INFO_T::iLaunchType, "reserved_int_1", "launch_type"},
    {"iSourceType", &_APPS_INNER_INFO_T::iSourceType, "install_source_type", "source_type"},
};

inline const InnerMember<bool> kInnerFlags[] = {
    {"bReserved10", &_APPS_INNER_INFO_T::bReserved10, "reserved_tinyint_10", nullptr},
    {"bReserved11", &_APPS_INNER_INFO_T::bReserved11, "reserved_tinyint_11", nullptr},
    {"bReserved15", &_APPS_INNER_INFO_T::bReserved15, "reserved_tinyint_15", nullptr},
    {"bIsDisableDelete", &_APPS_INNER_INFO_T::bIsDisableDelete, "reserved_tinyint_16",
     "is_disable_delete"},
    {"bIsMultiHome", &_APPS_INNER_INFO_T::bIsMultiHome, "reserved_tinyint_17", "is_multi_home"},
    {"bIsAppDrm", &_APPS_INNER_INFO_T::bIsAppDrm, "reserved_tinyint_19", "is_appdrm"},
};

// A record as texts by the names of its members: two records are equal when these are.
inline std::map<std::string, std::string> MembersOf(const _APPS_INNER_INFO_T& app) {
  std::map<std::string, std::string> members;
  for (const auto& text : kInnerTexts) members[text.name] = app.*text.member;
  for (const auto& number : kInnerNumbers) {
    members[number.name] = std::to_string(app.*number.member);
  }
  for (const auto& flag : kInnerFlags) members[flag.name] = app.*flag.member ? "1" : "0";
  return members;
}

// What a column of the app holds, as a text; a flag is true for anything but 0.
inline std::string TextOf(const App& app, const std::string& column, bool is_flag = false) {
  const auto found = app.Values().find(column);
  const int initial = column == "install_state" ? 3 : 0;
  if (found == app.Values().end()) return std::to_string(initial);
  if (const auto* text = std::get_if<std::string>(&found->second)) return *text;
  const int number = std::get<int>(found->second);
  return std::to_string(is_flag ? (number != 0 ? 1 : 0) : number);
}

// The members that an app with every column set has.
inline std::map<std::string, std::string> ExpectedMembers(const App& app) {
  std::map<std::string, std::string> members;
  for (const auto& text : kInnerTexts) members[text.name] = TextOf(app, text.column);
  for (const auto& number : kInnerNumbers) members[number.name] = TextOf(app, number.column);
  for (const auto& flag : kInnerFlags) members[flag.name] = TextOf(app, flag.column, true);
  return members;
}

}  // namespace test

#endif  // TESTS_CATALOGUE_INNER_MEMBERS_H_
