// SPDX-License-Identifier: Apache-2.0
//
// tavcore-sim: the reference service. Maps failures to exit statuses.
#include <csignal>
#include <exception>

#include "options.h"
#include "say.h"
#include "service.h"

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);  // a reader that left is a write error like any other
  try {
    const tavcore::CommandLine line = tavcore::ReadCommandLine(argc, argv);
    if (line.exit_status) return *line.exit_status;
    tavcore::Service(line.options).Run();
    return 0;
  } catch (const std::exception& error) {
    tavcore::Say(error.what());
    return 1;
  }
}
