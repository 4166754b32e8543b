// SPDX-License-Identifier: Apache-2.0
//
// tav-sandbox: devices on a PC. Maps failures to exit statuses.
#include <csignal>
#include <exception>
#include <iostream>

#include "create.h"
#include "default_seed.h"
#include "options.h"
#include "run.h"

namespace {

constexpr int kSuccess = 0;
constexpr int kFailed = 1;

int Run(int argc, char** argv) {
  CommandLine line = ReadCommandLine(argc, argv);
  if (line.exit_status) return *line.exit_status;
  Options& options = line.options;
  if (options.seed.empty()) options.seed = DefaultSeedPath();
  if (options.directory.empty()) return RunInSandbox(options);
  CreateDevice(options.directory, options.seed);
  return kSuccess;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);  // a reader that left is a write error like any other,
  std::signal(SIGXFSZ, SIG_IGN);  // and so is a file that may not grow
  std::signal(SIGCHLD, SIG_DFL);  // whoever ignores it is not told how his children ended
  int status = kFailed;
  try {
    status = Run(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "tav-sandbox: " << error.what() << "\n";
  }
  if (!std::cout.flush()) {
    std::cerr << "tav-sandbox: the output cannot be written\n";
    return kFailed;
  }
  return status;
}
