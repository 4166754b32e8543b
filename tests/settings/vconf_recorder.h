// SPDX-License-Identifier: Apache-2.0
//
// The platform's watches as the library asks for them: an executable that links this hears every
// request for one and every end of one.
#ifndef TESTS_SETTINGS_VCONF_RECORDER_H_
#define TESTS_SETTINGS_VCONF_RECORDER_H_

#include <vconf.h>

#include <string>
#include <vector>

namespace test {

// One text for each call, refused ones too: Notify(…) or Ignore(…).
using WatchCalls = std::vector<std::string>;

std::string Notify(const std::string& key, const void* user_data);
std::string Ignore(const std::string& key);

// The calls since the last one of this.
WatchCalls TakeWatchCalls();

// What the library gave the platform to call, last.
vconf_callback_fn LibraryCallback();

// The platform's own functions, for the test's part: nothing of them is recorded.
int RealNotify(const std::string& key, vconf_callback_fn callback, void* user_data);
int RealIgnore(const std::string& key, vconf_callback_fn callback);

}  // namespace test

#endif  // TESTS_SETTINGS_VCONF_RECORDER_H_
