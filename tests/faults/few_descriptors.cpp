// SPDX-License-Identifier: Apache-2.0
//
// few_descriptors CALL FREE EXPECTED: makes a call of the table with so many file descriptors free,
// as the first of its process and as a later one, and after each again with enough of them. Ends
// with 0 when the former ended as the table says they may, and the latter as expected.
#include <cstdlib>
#include <iostream>
#include <sstream>

#include "faults/calls.h"
#include "support/few_descriptors.h"

namespace {

using test::Call;
using test::FewDescriptors;
using test::Outcome;

bool IsDocumented(const Call& call, const Outcome& outcome, const Outcome& whole) {
  if (outcome == whole) return true;
  for (const test::Endings& endings : {call.failed, call.broken, call.platform}) {
    if (test::IsOneOf(endings, outcome, whole)) return true;
  }
  return false;
}

}  // namespace

int main(int /*count*/, char** arguments) {
  const Call& call = test::EveryCall().at(static_cast<std::size_t>(std::atoi(arguments[1])));
  const std::string expected = arguments[3];
  for (const char* turn : {"first", "later"}) {
    Outcome outcome;
    {
      const FewDescriptors few(std::atoi(arguments[2]));
      outcome = call.run();
    }
    const Outcome whole = call.run();
    std::ostringstream text;
    text << whole;
    if (text.str() == expected && IsDocumented(call, outcome, whole)) continue;
    std::cerr << turn << ": " << outcome << "\nthen: " << whole << "\nexpected: " << expected
              << '\n';
    return 1;
  }
  return 0;
}
