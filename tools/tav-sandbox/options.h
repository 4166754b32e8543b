// SPDX-License-Identifier: Apache-2.0
//
// The sandbox's command line.
#ifndef TOOLS_TAV_SANDBOX_OPTIONS_H_
#define TOOLS_TAV_SANDBOX_OPTIONS_H_

#include <optional>
#include <string>
#include <vector>

#include "manual/program.h"

struct Options {
  std::string directory;  // where to make a device and leave it; empty: a sandbox
  std::string seed;       // empty: the seed that came along
  std::string ready_file = "none";
  std::vector<std::string> service_options;
  std::vector<std::string> command;  // empty: a shell
};

struct CommandLine {
  Options options;
  std::optional<int> exit_status;  // when there is nothing to do: help was shown, wrong usage
};

// The options, which are stored in `options` when the command line is parsed.
tav_manual::Program Describe(Options& options);

CommandLine ReadCommandLine(int argc, char** argv);

#endif  // TOOLS_TAV_SANDBOX_OPTIONS_H_
