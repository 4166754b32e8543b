// SPDX-License-Identifier: Apache-2.0
//
// The fixture of the tests of what the build makes from the programs' options, and those options
// as --help shows them.
#ifndef TESTS_TOOLS_MANUAL_TEST_H_
#define TESTS_TOOLS_MANUAL_TEST_H_

#include <map>
#include <string>
#include <vector>

#include "program_test.h"

namespace test {

// What --help says of a program, or of a command of it.
struct Help {
  std::string path;                            // "tavctl export json"
  std::map<std::string, std::string> options;  // each name of each option, and its description
  std::vector<std::string> arguments;
  std::vector<std::string> commands;
};

std::ostream& operator<<(std::ostream& stream, const Help& help);

class ManualTest : public ProgramTest {
 protected:
  // A program that is found by PATH, or by its place.
  Result Run(const std::vector<std::string>& words) const;

  // The help of a program, tavctl for example, and of each of its commands.
  std::vector<Help> HelpOf(const std::string& program) const;

 private:
  void AddHelp(const std::string& program, const std::vector<std::string>& commands,
               const std::string& path, std::vector<Help>& all) const;
};

// Where a program is, by its name.
std::string PlaceOf(const std::string& program);

}  // namespace test

#endif  // TESTS_TOOLS_MANUAL_TEST_H_
