// SPDX-License-Identifier: Apache-2.0
//
// The inner record's one table: the member, the column that fills it, and the key under which
// it is written as JSON, null for one that is not. Reading and rendering both walk it.
#ifndef TAV_DB_API_TAV_DB_CLIENT_INNER_FIELDS_H_
#define TAV_DB_API_TAV_DB_CLIENT_INNER_FIELDS_H_

#include "tav_db_api/tav_db_client_columns.h"
#include "tav_db_api_inner.h"

template <typename Value>
struct InnerField {
  Value _APPS_INNER_INFO_T::*member;
  ColumnIndex column;
  const char* key;
};

// One icon fills five members, of which one is exported.
constexpr InnerField<std::string> kInnerTexts[] = {
    {&_APPS_INNER_INFO_T::strAppID, kId, "app_id"},
    {&_APPS_INNER_INFO_T::strTitle, kTitle, "title"},
    {&_APPS_INNER_INFO_T::strInstallPath, kInstallPath, "installed_path"},
    {&_APPS_INNER_INFO_T::strIconPath, kIconPath, "icon_path"},
    {&_APPS_INNER_INFO_T::strIconPath2, kIconPath, nullptr},
    {&_APPS_INNER_INFO_T::strVersion, kVersion, "version"},
    {&_APPS_INNER_INFO_T::strInstallDate, kInstallDate, "install_date"},
    {&_APPS_INNER_INFO_T::strTizenID, kTizenId, "tizen_id"},
    {&_APPS_INNER_INFO_T::strPackageName, kPkgname, "package_name"},
    {&_APPS_INNER_INFO_T::strCategory, kWidgetCategory, "category"},
    {&_APPS_INNER_INFO_T::strAppCategory, kReservedString18, "app_category"},
    {&_APPS_INNER_INFO_T::strRunTitle, kRunTitle, "runtitle"},
    {&_APPS_INNER_INFO_T::strType, kInstallType, "type"},
    {&_APPS_INNER_INFO_T::strIconPath3, kIconPath, nullptr},
    {&_APPS_INNER_INFO_T::strGamepad, kReservedString1, "gamepad"},
    {&_APPS_INNER_INFO_T::strIconPath4, kIconPath, nullptr},
    {&_APPS_INNER_INFO_T::strAmbientScreenSupport, kReservedString4, "ambient_screen_support"},
    {&_APPS_INNER_INFO_T::strIconPath5, kIconPath, nullptr},
    {&_APPS_INNER_INFO_T::strHbbTV, kHbbTV, "hbbtv"},
    {&_APPS_INNER_INFO_T::strNativeID, kHybridApp, "native_id"},
    {&_APPS_INNER_INFO_T::strWaitingScreenType, kReservedString2, "waiting_screen_type"},
    {&_APPS_INNER_INFO_T::strLaunchUserData, kReservedString6, "launch_user_data"},
    {&_APPS_INNER_INFO_T::strContentID, kReservedString9, "content_id"},
    {&_APPS_INNER_INFO_T::strReservedString10, kReservedString10, nullptr},
    {&_APPS_INNER_INFO_T::strReservedString11, kReservedString11, nullptr},
    {&_APPS_INNER_INFO_T::strAndroidID, kReservedString16, "android_id"},
    {&_APPS_INNER_INFO_T::strHomeRecentPolicy, kReservedString14, "home_recent_policy"},
    {&_APPS_INNER_INFO_T::strOrderType, kTavorder, "order_type"},
    {&_APPS_INNER_INFO_T::strTargetGroupTag, kReservedString20, "target_group_tag"},
    {&_APPS_INNER_INFO_T::strTargetGroupType, kReservedString19, "target_group_type"},
    {&_APPS_INNER_INFO_T::strAndroidExtraData, kReservedString21, "android_extra_data"},
};

constexpr InnerField<int> kInnerIntegers[] = {
    {&_APPS_INNER_INFO_T::iSize, kSize, "size"},
    {&_APPS_INNER_INFO_T::iUseCount, kUseCount, "use_count"},
    {&_APPS_INNER_INFO_T::iIndex, kAppIndex, "index"},
    {&_APPS_INNER_INFO_T::iFeatured, kAppFeatured, "featured"},
    {&_APPS_INNER_INFO_T::iAppType, kAppType, "app_type"},
    {&_APPS_INNER_INFO_T::iInstallState, kInstallState, "installState"},
    {&_APPS_INNER_INFO_T::iIsHidden, kIsHidden, "is_hidden"},
    {&_APPS_INNER_INFO_T::iIsSupportVoice, kIsSupportVoice, "is_support_voice"},
    {&_APPS_INNER_INFO_T::iIsSupportGesture, kIsSupportGesture, "is_support_gesture"},
    {&_APPS_INNER_INFO_T::iIsNetwork, kIsNetwork, "is_network"},
    {&_APPS_INNER_INFO_T::iIsRemovable, kIsRemovable, "is_removable"},
    {&_APPS_INNER_INFO_T::iIsDisplay, kIsDisplay, "is_display"},
    {&_APPS_INNER_INFO_T::iIsLock, kIsLock, "is_lock"},
    {&_APPS_INNER_INFO_T::iIsPremiumGame, kIsPremiumGame, "is_premium_game"},
    {&_APPS_INNER_INFO_T::iIsNeedLogin, kIsNeedLogin, "is_need_login"},
    {&_APPS_INNER_INFO_T::iIsNeedUpdate, kIsNeedUpdate, "is_need_update"},
    {&_APPS_INNER_INFO_T::iIsUpdated, kIsUpdated, "is_updated"},
    {&_APPS_INNER_INFO_T::iIsTicker, kIsTicker, "is_ticker"},
    {&_APPS_INNER_INFO_T::iIsMultiScreen2, kIsMultiScreen2, "is_multi_screen2"},
    {&_APPS_INNER_INFO_T::iIsMultiTasking, kIsMultiTasking, "is_multi_tasking"},
    {&_APPS_INNER_INFO_T::iIsUsbApp, kIsUsbApp, "is_usb_app"},
    {&_APPS_INNER_INFO_T::iIsAgeAuth, kIsAgeAuth, "is_age_auth"},
    {&_APPS_INNER_INFO_T::iAgeLimit, kLimitAge, "app_age_limit"},
    {&_APPS_INNER_INFO_T::iIsNeedUninstall, kReservedTinyint1, "is_need_uninstall"},
    {&_APPS_INNER_INFO_T::iIsIconMultilangSupport, kReservedTinyint8, "is_icon_multilang_support"},
    {&_APPS_INNER_INFO_T::iIsTransparentSupport, kReservedTinyint2, "is_transparent_support"},
    {&_APPS_INNER_INFO_T::iIsPartialOverlaySupport, kReservedTinyint3,
     "is_partial_overlay_support"},
    {&_APPS_INNER_INFO_T::iIsWebsdiSupport, kReservedTinyint4, "is_websdi_support"},
    {&_APPS_INNER_INFO_T::iIsDiskCache, kReservedTinyint5, "is_disk_cache"},
    {&_APPS_INNER_INFO_T::iIsForceLaunchSupport, kReservedTinyint7, "is_force_launch_support"},
    {&_APPS_INNER_INFO_T::iLaunchType, kReservedInt1, "launch_type"},
    {&_APPS_INNER_INFO_T::iSourceType, kInstallSourceType, "source_type"},
};

// True for any value of the column but 0.
constexpr InnerField<bool> kInnerFlags[] = {
    {&_APPS_INNER_INFO_T::bReserved10, kReservedTinyint10, nullptr},
    {&_APPS_INNER_INFO_T::bReserved11, kReservedTinyint11, nullptr},
    {&_APPS_INNER_INFO_T::bReserved15, kReservedTinyint15, nullptr},
    {&_APPS_INNER_INFO_T::bIsDisableDelete, kReservedTinyint16, "is_disable_delete"},
    {&_APPS_INNER_INFO_T::bIsMultiHome, kReservedTinyint17, "is_multi_home"},
    {&_APPS_INNER_INFO_T::bIsAppDrm, kReservedTinyint19, "is_appdrm"},
};

static_assert(sizeof(kInnerTexts) / sizeof(kInnerTexts[0]) == 31, "31 texts");
static_assert(sizeof(kInnerIntegers) / sizeof(kInnerIntegers[0]) == 32, "32 integers");
static_assert(sizeof(kInnerFlags) / sizeof(kInnerFlags[0]) == 6, "6 flags");

#endif  // TAV_DB_API_TAV_DB_CLIENT_INNER_FIELDS_H_
