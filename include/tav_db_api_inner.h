// SPDX-License-Identifier: Apache-2.0
//
// Helpers of libtav_db_api that other components of the platform call. C++ only: their
// exported names carry their parameter types. An application needs tav_db_api.h alone.
#ifndef TAV_DB_API_INNER_H_
#define TAV_DB_API_INNER_H_

#include <map>
#include <string>
#include <vector>

#include "tav_db_api.h"

// One app as the platform's components exchange it: a row of the apps table, an entry of the
// built-in catalogue or a test app. Texts are whole, whatever their length.
struct _APPS_INNER_INFO_T {
  std::string strAppID;
  std::string strTitle;
  std::string strInstallPath;
  std::string strIconPath;
  std::string strIconPath2;
  std::string strVersion;
  std::string strInstallDate;
  std::string strTizenID;
  std::string strPackageName;
  std::string strCategory;
  std::string strAppCategory;
  std::string strRunTitle;
  std::string strType;
  std::string strIconPath3;
  std::string strGamepad;
  std::string strIconPath4;
  std::string strAmbientScreenSupport;
  std::string strIconPath5;
  std::string strHbbTV;
  std::string strNativeID;
  std::string strWaitingScreenType;
  std::string strLaunchUserData;
  std::string strContentID;
  std::string strReservedString10;
  std::string strReservedString11;
  std::string strAndroidID;
  std::string strHomeRecentPolicy;
  std::string strOrderType;
  std::string strTargetGroupTag;
  std::string strTargetGroupType;
  std::string strAndroidExtraData;
  int iSize = 0;
  int iUseCount = 0;
  int iIndex = 0;
  int iFeatured = 0;
  int iAppType = 0;
  int iInstallState = 0;
  int iIsHidden = 0;
  int iIsSupportVoice = 0;
  int iIsSupportGesture = 0;
  int iIsNetwork = 0;
  int iIsRemovable = 0;
  int iIsDisplay = 0;
  int iIsLock = 0;
  int iIsPremiumGame = 0;
  int iIsNeedLogin = 0;
  int iIsNeedUpdate = 0;
  int iIsUpdated = 0;
  int iIsTicker = 0;
  int iIsMultiScreen2 = 0;
  int iIsMultiTasking = 0;
  int iIsUsbApp = 0;
  int iIsAgeAuth = 0;
  int iAgeLimit = 0;
  int iIsNeedUninstall = 0;
  int iIsIconMultilangSupport = 0;
  int iIsTransparentSupport = 0;
  int iIsPartialOverlaySupport = 0;
  int iIsWebsdiSupport = 0;
  int iIsDiskCache = 0;
  int iIsForceLaunchSupport = 0;
  int iLaunchType = 0;
  int iSourceType = 1;
  bool bReserved10 = false;
  bool bReserved11 = false;
  bool bReserved15 = false;
  bool bIsDisableDelete = false;
  bool bIsMultiHome = false;
  bool bIsAppDrm = false;
};

// The two lookups below take no lock: inside the library they run in a section that holds it.
// From outside, no other function of the library may run in the process at the same time, and no
// thread may fork.

// Fills *info with the app whose id, Tizen id or package name is app_id. Returns 0; -1 when
// nothing matches, an argument is null or empty, or the call is refused (factory reset,
// package-manager recovery); -2 when the database stayed busy. *info is untouched when the
// call was refused or the query could not be prepared, and zeroed when nothing matched.
TAV_API int m_tav_get_app_info(const char* app_id, tav_app_info_s* info);

// Fills *info with the app whose run title is run_title; note the order of the arguments.
// Results as m_tav_get_app_info.
TAV_API int GetAppInfoByRuntitle(tav_app_info_s* info, const char* run_title);

// ---- Built-in apps ----

// Appends the apps of the built-in catalogue, or with bTestOnly those that are test apps as
// well, with the versions and icons of their installed packages; then removes from the whole
// list the packages that are not offered on this device. Takes the lock for the whole call, which
// asks the service over the bus. Returns 0; -1, with list untouched, when the package manager
// recovers or the catalogue is no JSON or not ok.
TAV_API int GetBuiltInAppList(std::vector<_APPS_INNER_INFO_T>& list, bool bTestOnly);

// Adds the test apps, by their ids; the first of an id stays. Takes the lock.
TAV_API void GetBuiltInTestAppList(std::map<std::string, _APPS_INNER_INFO_T>& testApps);

// The ids of the packages that are not offered on this device, each as key and value. No lock.
TAV_API std::map<std::string, std::string> GetUnsupportedPkgList();

// Whether this device leaves packages out: one of the entry grade with a 4G flash. No lock.
TAV_API bool GetBuiltInBlacklistSupport();

// ---- Group lists ----

// The app that a run title stands for. state becomes 0 when it is installed, 1 when it is not,
// and 3, with appId untouched, when the list does not know the title; without a list both stay
// as they are. Both take the lock.
TAV_API void GetAppIDFromAndroidGroupList(const std::string& runTitle, std::string& appId,
                                          int& state);
TAV_API void GetAppIDFromAppGroupList(const std::string& runTitle, std::string& appId, int& state);

// Cuts text at every character that occurs in itemSeparator into items, and each item at the
// first character that occurs in pairSeparator into a key and a value, which are added to out;
// the first value of a key stays. An item without a pair separator is skipped. With an empty
// pairSeparator each item is a key with an empty value. An empty text adds nothing. No lock.
TAV_API void ParseStringToList(std::string text, std::string itemSeparator,
                               std::string pairSeparator, std::map<std::string, std::string>& out);

#endif  // TAV_DB_API_INNER_H_
