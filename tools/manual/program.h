// SPDX-License-Identifier: Apache-2.0
//
// A program as its manual page and its completions are made from it.
#ifndef TOOLS_MANUAL_PROGRAM_H_
#define TOOLS_MANUAL_PROGRAM_H_

#include <memory>
#include <string>
#include <vector>

#include "manual/section.h"

namespace CLI {
class App;
}

namespace tav_manual {

struct Program {
  std::shared_ptr<CLI::App> app;      // its name is the program's
  std::string version;                // "libtav_db_api 0.1.0"
  std::string summary;                // what stands behind the name on the first line
  std::vector<std::string> synopsis;  // words in capitals stand for something else
  std::vector<Section> sections;
};

// Each program has one of its own, beside its options.
Program DescribeProgram();

}  // namespace tav_manual

#endif  // TOOLS_MANUAL_PROGRAM_H_
