// SPDX-License-Identifier: Apache-2.0
//
// The states of the platform in which reads are refused.
#ifndef TAV_DB_API_TAV_DB_CLIENT_CHECKS_H_
#define TAV_DB_API_TAV_DB_CLIENT_CHECKS_H_

#include "tav_common/tav_log.h"

// 1 while the TV is being reset to its factory state, else 0. The misspelt name is kept.
int CkeckIsFactoryReset();

// True while the platform's package manager rebuilds its own database.
bool CheckPkgmgrRecovering();

// True, after a log, while the package manager rebuilds its database.
bool IsRecovering(const LogPlace& place = LogPlace::Here());

// True, after a log of the reason, in either of these states.
bool PlatformRefuses(const LogPlace& place = LogPlace::Here());

#endif  // TAV_DB_API_TAV_DB_CLIENT_CHECKS_H_
