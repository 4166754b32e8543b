// SPDX-License-Identifier: Apache-2.0
//
// The built-in apps: the catalogue and the test apps that the service keeps as configuration
// values, completed by the package manager, less those that are being uninstalled and those
// that are not offered on this device.
#include <pkgmgr-info.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "tav_common/tav_arguments.h"
#include "tav_common/tav_handles.h"
#include "tav_db_api/tav_db_api_border.h"
#include "tav_db_api/tav_db_api_catalogue_text.h"
#include "tav_db_api/tav_db_api_throwing.h"
#include "tav_db_api/tav_db_client_checks.h"
#include "tav_db_api/tav_db_client_connection.h"
#include "tav_db_api/tav_db_client_values.h"
#include "tav_db_api/tav_db_write_api.h"
#include "tav_db_api_inner.h"

namespace {

using Apps = std::vector<_APPS_INNER_INFO_T>;
using TestApps = std::map<std::string, _APPS_INNER_INFO_T>;
using Package = std::unique_ptr<void, CallOnRelease<pkgmgrinfo_pkginfo_destroy_pkginfo>>;
using PackageApp = std::unique_ptr<void, CallOnRelease<pkgmgrinfo_appinfo_destroy_appinfo>>;

constexpr char kCatalogueKey[] = "RESERVED_15";
constexpr char kTestAppsKey[] = "RESERVED_16";

void ReadTestApps(TestApps& test_apps) REQUIRES(g_Mute) {
  std::string text;
  if (!GetConfigText(kTestAppsKey, text)) return;
  TAV_LOGI("strTestAppList %s", text.c_str());
  ParseTestApps(text, test_apps);
}

// The version of the installed package, and the group of a test app of that very version.
void CompleteFromPackage(_APPS_INNER_INFO_T& app, const TestApps& test_apps) {
  pkgmgrinfo_pkginfo_h handle = nullptr;
  if (pkgmgrinfo_pkginfo_get_pkginfo(app.strPackageName.c_str(), &handle) != PMINFO_R_OK) return;
  const Package package(handle);
  char* version = nullptr;
  if (pkgmgrinfo_pkginfo_get_version(package.get(), &version) != PMINFO_R_OK ||
      version == nullptr) {
    return;
  }
  app.strVersion = version;
  TAV_LOGI("[%s] get version %s", app.strPackageName.c_str(), version);
  const auto test_app = test_apps.find(app.strAppID);
  if (test_app == test_apps.end() || test_app->second.strVersion != app.strVersion) return;
  app.strTargetGroupTag = test_app->second.strTargetGroupTag;
  app.strTargetGroupType = test_app->second.strTargetGroupType;
}

void CompleteFromPackageApp(_APPS_INNER_INFO_T& app) {
  pkgmgrinfo_appinfo_h handle = nullptr;
  if (pkgmgrinfo_appinfo_get_appinfo(app.strPackageName.c_str(), &handle) != PMINFO_R_OK) return;
  const PackageApp package_app(handle);
  char* icon = nullptr;
  if (pkgmgrinfo_appinfo_get_icon(package_app.get(), &icon) != PMINFO_R_OK || icon == nullptr) {
    return;
  }
  app.strIconPath = icon;
  TAV_LOGI("[%s] get icon %s", app.strPackageName.c_str(), icon);
}

// Removes, for each of the packages, the first app of that package.
void RemoveFirstOfEach(const std::map<std::string, std::string>& packages, Apps& list) {
  for (const auto& [package, unused] : packages) {
    const auto found = std::find_if(list.begin(), list.end(), [&id = package](const auto& app) {
      return app.strPackageName == id;
    });
    if (found == list.end()) continue;
    TAV_LOGI("delete %s from tMapAppsInfoList", package.c_str());
    list.erase(found);
  }
}

bool Contains(const std::vector<std::string>& ids, const std::string& id) {
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}

}  // namespace

int GetBuiltInAppList(std::vector<_APPS_INNER_INFO_T>& list, bool bTestOnly) try {
  const TavCall call;
  TAV_LOGI("GetBuiltInAppList start");
  const DatabaseLock lock;
  if (IsRecovering()) return kFailed;

  TestApps test_apps;
  ReadTestApps(test_apps);
  if (bTestOnly && test_apps.empty()) return 0;
  std::vector<std::string> uninstalling;
  GetUninstallingBuiltInAppID(uninstalling);
  std::string text;
  GetConfigText(kCatalogueKey, text);  // a missing value counts as an empty text
  Apps catalogue;
  if (!ParseCatalogue(text, catalogue)) return kFailed;

  Apps apps;
  for (_APPS_INNER_INFO_T& app : catalogue) {
    if (bTestOnly && test_apps.count(app.strAppID) == 0) continue;
    if (Contains(uninstalling, app.strAppID)) {
      TAV_LOGI("[%s] is in builtin app uninstalling list", app.strAppID.c_str());
      continue;
    }
    CompleteFromPackage(app, test_apps);
    CompleteFromPackageApp(app);
    apps.push_back(std::move(app));
  }
  const std::map<std::string, std::string> unsupported = throwing::GetUnsupportedPkgList();
  list.insert(list.end(), std::make_move_iterator(apps.begin()),
              std::make_move_iterator(apps.end()));
  RemoveFirstOfEach(unsupported, list);
  TAV_LOGI("GetBuiltInAppList end");
  return 0;
} catch (...) {
  return AnswerException(__func__);
}

void GetBuiltInTestAppList(std::map<std::string, _APPS_INNER_INFO_T>& testApps) try {
  const TavCall call;
  const DatabaseLock lock;
  TestApps added;
  ReadTestApps(added);
  testApps.merge(added);
} catch (...) {
  AnswerException(__func__);
}
