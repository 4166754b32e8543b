// SPDX-License-Identifier: Apache-2.0
//
// The requests that ask the service to change an app's state, or to tell what it alone knows.
// Each is one call over the bus, behind a heartbeat from the second request on. 0, or -1 on any
// failure, the out value then untouched unless said otherwise. No lock; arguments that are texts
// must not be null.
#ifndef TAV_DB_API_TAV_DB_WRITE_API_H_
#define TAV_DB_API_TAV_DB_WRITE_API_H_

#include <string>
#include <vector>

class CTAVGdbus;

// The process's one client of the bus.
CTAVGdbus* get_db_proxy();

// Anything above 0 locks.
int TavSetAppLock(const char* appId, int isLock);
int TavSetAppRating(const char* appId, int rating);
int TavUpdateAppUseCount(const char* appId);
int TavSetAppUpdted(const char* appId);  // the misspelling is kept
int SetTickerModeToLaunch(int mode);
// *mode is 0 when the service answers with a failure.
int GetTickerModeFromLaunch(int* mode);
// A text that the caller releases with g_free. 0 with *list untouched while the service is not
// ready.
int TavGetUninstallingBuiltInApp(char** list);

// Appends the ids of the built-in apps that are being uninstalled; nothing when that fails.
void GetUninstallingBuiltInAppID(std::vector<std::string>& appIds);

#endif  // TAV_DB_API_TAV_DB_WRITE_API_H_
