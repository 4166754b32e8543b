// SPDX-License-Identifier: Apache-2.0
//
// Runs a program in an environment of the test's choice and gathers what it says.
#ifndef TESTS_TOOLS_PROGRAM_H_
#define TESTS_TOOLS_PROGRAM_H_

#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace test {

struct Result {
  int status = -1;  // 128 and the signal's number when a signal ended the program
  std::string out;
  std::string err;

  bool operator==(const Result& other) const {
    return status == other.status && out == other.out && err == other.err;
  }
};

std::ostream& operator<<(std::ostream& stream, const Result& result);

struct Command {
  std::string program;
  std::vector<std::string> arguments;
  std::map<std::string, std::string> environment;  // all of it
  int out = -1;  // a descriptor that takes the place of standard output, or -1 to gather it
};

// Runs the command to its end. Throws when it cannot be started or does not end in time.
Result RunCommand(const Command& command);

}  // namespace test

#endif  // TESTS_TOOLS_PROGRAM_H_
