// SPDX-License-Identifier: Apache-2.0
//
// few_descriptors CALL FREE EXPECTED: makes a call of the table with so many file descriptors free,
// as the first of its process and as a later one, and after each again with enough of them. Ends
// with 0 when the former ended as the table says they may, and the latter as expected.
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <sstream>
#include <vector>

#include "faults/calls.h"

namespace {

using test::Call;
using test::Outcome;

constexpr rlim_t kDescriptors = 64;

// Leaves so many descriptors free while it lives.
class FewDescriptors {
 public:
  explicit FewDescriptors(int free) {
    getrlimit(RLIMIT_NOFILE, &m_limit);
    const rlimit few = {kDescriptors, m_limit.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    for (int one; (one = open("/dev/null", O_RDONLY | O_CLOEXEC)) >= 0;) m_taken.push_back(one);
    for (; free > 0; --free) {
      close(m_taken.back());
      m_taken.pop_back();
    }
  }
  ~FewDescriptors() {
    for (const int one : m_taken) close(one);
    setrlimit(RLIMIT_NOFILE, &m_limit);
  }
  FewDescriptors(const FewDescriptors&) = delete;
  FewDescriptors& operator=(const FewDescriptors&) = delete;

 private:
  rlimit m_limit = {};
  std::vector<int> m_taken;
};

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
