// SPDX-License-Identifier: Apache-2.0
#include "tav_db_api/tav_db_client_checks.h"

#include <sys/stat.h>
#include <vconf.h>

#include "tav_common/tav_settings_keys.h"

namespace {

constexpr char kRecoveryMarker[] = "/opt/dbspace/pkgreinstall";

}  // namespace

int CkeckIsFactoryReset() {
  int type = 0;
  if (vconf_get_int(kFactoryResetKey, &type) != 0) {
    TAV_LOGE("Failed to get vconf value key=(%s)", kFactoryResetKey);
    return 0;  // whatever a failed read has left in type
  }
  if (type != 1 && type != 2) return 0;
  TAV_LOGW("factory reset[%d]", type);
  return 1;
}

bool CheckPkgmgrRecovering() {
  struct stat status;
  if (stat(kRecoveryMarker, &status) != 0) return false;
  TAV_LOGW("/opt/dbspace/pkgreinstall exists");
  return true;
}

bool IsRecovering(const LogPlace& place) {
  if (!CheckPkgmgrRecovering()) return false;
  TAV_LOGE_FOR(place, "Pkgmgr is recovering");
  return true;
}

bool PlatformRefuses(const LogPlace& place) {
  if (CkeckIsFactoryReset() == 1) {
    TAV_LOGW_FOR(place, "FactoryReset is true");
    return true;
  }
  return IsRecovering(place);
}
