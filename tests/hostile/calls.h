// SPDX-License-Identifier: Apache-2.0
//
// Every exported function that reads the database, as a call that looks at all that it got.
#ifndef TESTS_HOSTILE_CALLS_H_
#define TESTS_HOSTILE_CALLS_H_

#include <vector>

namespace hostile {

struct Call {
  const char* name;
  // Whether it succeeded, as it does for every one of them on the good database. Throws when
  // what came back breaks the rules of the header, whatever stands in the database.
  bool (*make)();
};

const std::vector<Call>& Calls();

}  // namespace hostile

#endif  // TESTS_HOSTILE_CALLS_H_
