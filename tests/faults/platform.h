// SPDX-License-Identifier: Apache-2.0
//
// The platform's functions as the library calls them: an executable that links this can have one
// of them fail. While nothing fails they are the host's own, but for the log, which only
// formats its lines.
#ifndef TESTS_FAULTS_PLATFORM_H_
#define TESTS_FAULTS_PLATFORM_H_

#include <functional>
#include <map>
#include <string>

namespace test {

enum class PlatformFault {
  kFails,              // and writes nothing
  kFailsAfterWriting,  // something that is nobody's and no answer
  kGivesNull,          // a success without a text
};

// How often each of the functions is called while body runs inside the library.
std::map<std::string, int> PlatformCalls(const std::function<void()>& body);

// Lets the nth call of a function end with a fault, or all of its calls for 0, while it lives.
class FailingPlatform {
 public:
  FailingPlatform(const std::string& function, PlatformFault fault, int nth = 0);
  ~FailingPlatform();
  FailingPlatform(const FailingPlatform&) = delete;
  FailingPlatform& operator=(const FailingPlatform&) = delete;
};

// True while one of the functions runs on this thread on behalf of the library.
bool IsInThePlatform();

}  // namespace test

#endif  // TESTS_FAULTS_PLATFORM_H_
