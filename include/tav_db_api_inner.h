// SPDX-License-Identifier: Apache-2.0
//
/// @file
/// Helpers of libtav_db_api that other components of the platform call. C++ only: their exported
/// names carry their parameter types. An application needs tav_db_api.h alone, whose conventions
/// hold here too.
#ifndef TAV_DB_API_INNER_H_
#define TAV_DB_API_INNER_H_

#include <map>
#include <string>
#include <vector>

#include "tav_db_api.h"

/// One app as the platform's components exchange it: a row of the apps table, an entry of the
/// built-in catalogue or a test app. Texts are whole, whatever their length.
struct _APPS_INNER_INFO_T {
  std::string strAppID;                 ///< the id
  std::string strTitle;                 ///< the title that people see
  std::string strInstallPath;           ///< the directory it is installed in
  std::string strIconPath;              ///< the file of its icon
  std::string strIconPath2;             ///< the same path as strIconPath
  std::string strVersion;               ///< the version
  std::string strInstallDate;           ///< when it was installed
  std::string strTizenID;               ///< the platform id
  std::string strPackageName;           ///< the name of its package
  std::string strCategory;              ///< the category
  std::string strAppCategory;           ///< the service's "app_category"
  std::string strRunTitle;              ///< the run title
  std::string strType;                  ///< how it was installed
  std::string strIconPath3;             ///< the same path as strIconPath
  std::string strGamepad;               ///< its game pad support
  std::string strIconPath4;             ///< the same path as strIconPath
  std::string strAmbientScreenSupport;  ///< its ambient screen support
  std::string strIconPath5;             ///< the same path as strIconPath
  std::string strHbbTV;                 ///< what it is in HbbTV
  std::string strNativeID;              ///< the native id
  std::string strWaitingScreenType;     ///< the type of its waiting screen
  std::string strLaunchUserData;        ///< the user data of its launch
  std::string strContentID;             ///< the content id
  std::string strReservedString10;      ///< the apps that it requires, separated by commas
  std::string strReservedString11;      ///< reserved by the service
  std::string strAndroidID;             ///< the Android id
  std::string strHomeRecentPolicy;      ///< the service's "home_recent_policy"
  std::string strOrderType;             ///< the service's "order_type"
  std::string strTargetGroupTag;        ///< the tag of its target group
  std::string strTargetGroupType;       ///< the type of its target group
  std::string strAndroidExtraData;      ///< extra data of an Android app
  int iSize = 0;                        ///< the size, in the service's unit
  int iUseCount = 0;                    ///< how often it was used
  int iIndex = 0;                       ///< its place; downloaded apps: above 299
  int iFeatured = 0;                    ///< what tav_app_filter_s::featured selects
  int iAppType = 0;                     ///< what tav_app_filter_s::app_type selects
  int iInstallState = 0;                ///< 3, fully installed
  int iIsHidden = 0;                    ///< left out of most lists
  int iIsSupportVoice = 0;              ///< supports voice control
  int iIsSupportGesture = 0;            ///< supports gestures
  int iIsNetwork = 0;                   ///< uses the network
  int iIsRemovable = 0;                 ///< may be removed
  int iIsDisplay = 0;                   ///< is displayed
  int iIsLock = 0;                      ///< 0 or 1; without an age rating, as stored
  int iIsPremiumGame = 0;               ///< is a premium game
  int iIsNeedLogin = 0;                 ///< needs a login
  int iIsNeedUpdate = 0;                ///< needs an update
  int iIsUpdated = 0;                   ///< is marked as updated
  int iIsTicker = 0;                    ///< is marked for the ticker
  int iIsMultiScreen2 = 0;              ///< is marked for multi-screen use
  int iIsMultiTasking = 0;              ///< supports multi-tasking
  int iIsUsbApp = 0;                    ///< came from a USB device
  int iIsAgeAuth = 0;                   ///< asks for an authentication of age
  int iAgeLimit = 0;                    ///< the least age, in years
  int iIsNeedUninstall = 0;             ///< is to be uninstalled
  int iIsIconMultilangSupport = 0;      ///< supports icons by language
  int iIsTransparentSupport = 0;        ///< supports transparency
  int iIsPartialOverlaySupport = 0;     ///< supports a partial overlay
  int iIsWebsdiSupport = 0;             ///< supports WebSDI
  int iIsDiskCache = 0;                 ///< uses a disk cache
  int iIsForceLaunchSupport = 0;        ///< supports a forced launch
  int iLaunchType = 0;                  ///< the type of its launch
  int iSourceType = 1;                  ///< the type of its source; read in lists alone
  bool bReserved10 = false;             ///< is being installed or updated
  bool bReserved11 = false;             ///< is not being updated
  bool bReserved15 = false;             ///< reserved by the service
  bool bIsDisableDelete = false;        ///< cannot be deleted
  bool bIsMultiHome = false;            ///< the service's "is_multi_home"
  bool bIsAppDrm = false;               ///< the service's "is_appdrm"
};

/// @defgroup unlocked Lookups for sections that hold the lock
/// These two take no lock: inside the library they run in a section that holds it. From outside,
/// no other function of the library may run in the process at the same time.
/// @code{.cpp}
/// tav_app_info_s app;
/// if (m_tav_get_app_info("org.example.package", &app) == 0) std::puts(app.app_title);
/// @endcode
/// @{

/// Fills a record with the app of this id.
/// @param app_id     the app's id, platform id or package name
/// @param[out] info  the record; untouched when the call was refused or the query could not be
///                   prepared, and zeroed when nothing matched
/// @return 0; -1 when nothing matches, an argument is null or empty, or the call is refused
///         (factory reset, package-manager recovery); -2 when the database stayed busy
/// @unlocked
TAV_API int m_tav_get_app_info(const char* app_id, tav_app_info_s* info);

/// Fills a record with the app of this run title; note the order of the arguments.
/// @param[out] info  as with m_tav_get_app_info
/// @param run_title  the run title
/// @return as m_tav_get_app_info
/// @unlocked
TAV_API int GetAppInfoByRuntitle(tav_app_info_s* info, const char* run_title);

/// @}

/// @defgroup builtin Built-in apps
/// @code{.cpp}
/// std::vector<_APPS_INNER_INFO_T> apps;
/// if (GetBuiltInAppList(apps, false) != 0) return;
/// for (const auto& app : apps) std::puts(app.strTitle.c_str());
/// @endcode
/// @{

/// Appends the apps of the built-in catalogue, with the versions and icons of their installed
/// packages; then removes from the whole list the packages that are not offered on this device.
/// @param[in,out] list  what the apps are appended to; untouched on a failure
/// @param bTestOnly     whether to append only those that are test apps as well
/// @return 0; -1 when the package manager recovers, memory ran out, the catalogue is missing, no
///         JSON or not ok, or the database cannot be read or stays busy; with bTestOnly that is 0,
///         and nothing is appended, when no test app is found, whatever else is wrong
/// @locks{two statements and one request\, the last only while the service is ready}
TAV_API int GetBuiltInAppList(std::vector<_APPS_INNER_INFO_T>& list, bool bTestOnly);

/// Adds the test apps.
/// @param[in,out] testApps  receives them by their ids; the first of an id stays
/// @locks{one statement}
TAV_API void GetBuiltInTestAppList(std::map<std::string, _APPS_INNER_INFO_T>& testApps);

/// The packages that are not offered on this device.
/// @return their ids, each as key and value; nothing where there is no such list
/// @nolock
TAV_API std::map<std::string, std::string> GetUnsupportedPkgList();

/// Whether this device leaves packages out.
/// @return true for one of the entry grade with a 4G flash
/// @nolock
TAV_API bool GetBuiltInBlacklistSupport();

/// @}

/// @defgroup groups Group lists
/// @code{.cpp}
/// std::string id;
/// int state = 3;
/// GetAppIDFromAppGroupList("HarbourNews", id, state);
/// if (state == 0) std::puts(id.c_str());
/// @endcode
/// @{

/// The app that a run title stands for in the list of Android apps.
/// @param runTitle    the run title
/// @param[out] appId  the app's id; untouched when the list does not know the title, or is not
///                    there
/// @param[out] state  0 when the app is installed, 1 when it is not, or when reads are refused or
///                    fail, 3 when the list does not know the title; untouched without a list, or
///                    when the list cannot be read
/// @locks{two statements}
TAV_API void GetAppIDFromAndroidGroupList(const std::string& runTitle, std::string& appId,
                                          int& state);
/// The same in the list of apps.
/// @param runTitle    the run title
/// @param[out] appId  as with GetAppIDFromAndroidGroupList
/// @param[out] state  likewise
/// @locks{two statements}
TAV_API void GetAppIDFromAppGroupList(const std::string& runTitle, std::string& appId, int& state);

/// Cuts a text into items, and each item into a key and a value. An empty text adds nothing.
/// @param text           the text
/// @param itemSeparator  each of its characters ends an item
/// @param pairSeparator  the first of its characters in an item ends the key; an item without one
///                       is skipped. When it is empty, each item is a key with an empty value
/// @param[in,out] out    what is added to; the first value of a key stays
/// @nolock
TAV_API void ParseStringToList(std::string text, std::string itemSeparator,
                               std::string pairSeparator, std::map<std::string, std::string>& out);

/// @}

#endif  // TAV_DB_API_INNER_H_
