// SPDX-License-Identifier: Apache-2.0
//
// Every exported call, as it is made on the seeded device, with the ways in which it may end
// when something below it fails. A call whose paths differ much stands here more than once.
#ifndef TESTS_FAULTS_CALLS_H_
#define TESTS_FAULTS_CALLS_H_

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "faults/outcome.h"

namespace test {

struct Call {
  const char* name;     // of the function
  const char* variant;  // "" or what sets it apart from its other entries
  Outcome (*run)();
  Endings failed = {};    // no memory, no database, an argument or a platform that fails
  Endings busy = {};      // the database stayed busy
  Endings broken = {};    // rows that break off, or a part that could not be read, pass for an end
  Endings platform = {};  // a value that the platform cannot tell counts as another one
  bool has_bus = false;
};

// How calls end that fill nothing, and those that fill a value.
inline const Endings kFailure = {{-1, ""}};
inline const Endings kBusy = {{-2, ""}};
inline const Endings kNoValue = {{-1, kUntouched}};
inline const Endings kBusyValue = {{-2, kUntouched}};

using Calls = std::vector<Call>;

Calls LookupCalls();
Calls ListCalls();
Calls PropertyCalls();
Calls ChangeCalls();
Calls ExportCalls();
Calls SettingCalls();
Calls WatchCalls();
Calls InnerCalls();

// All of the above.
const Calls& EveryCall();

inline void PrintTo(const Call& call, std::ostream* out) {
  *out << call.name << call.variant;
}

std::string NameOfCall(const ::testing::TestParamInfo<Call>& info);

}  // namespace test

#endif  // TESTS_FAULTS_CALLS_H_
