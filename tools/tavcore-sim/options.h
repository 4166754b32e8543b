// SPDX-License-Identifier: Apache-2.0
//
// The service's command line.
#ifndef TOOLS_TAVCORE_SIM_OPTIONS_H_
#define TOOLS_TAVCORE_SIM_OPTIONS_H_

#include <optional>
#include <string>
#include <vector>

#include "faults.h"
#include "manual/program.h"

namespace tavcore {

struct Options {
  std::string ready_file = "/run/tav_ready";  // empty: none
  int ready_descriptor = -1;                  // gets a line when the service is ready, or -1
  std::optional<std::string> uninstalling;
  int ticker_mode = 0;
  int busy_milliseconds = 2000;
  bool is_verbose = false;
  bool is_benchmark = false;
  Faults faults;
};

struct CommandLine {
  Options options;
  std::optional<int> exit_status;  // when there is nothing to run: help was shown, wrong usage
};

// The options, which are stored when the command line is parsed; the faults still as texts.
tav_manual::Program Describe(Options& options, std::vector<std::string>& faults);

CommandLine ReadCommandLine(int argc, char** argv);

}  // namespace tavcore

#endif  // TOOLS_TAVCORE_SIM_OPTIONS_H_
