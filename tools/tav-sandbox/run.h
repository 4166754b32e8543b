// SPDX-License-Identifier: Apache-2.0
//
// A throw-away device around a command.
#ifndef TOOLS_TAV_SANDBOX_RUN_H_
#define TOOLS_TAV_SANDBOX_RUN_H_

#include "options.h"

// Makes a device, a bus and the service, runs the command in them, removes everything and returns
// the command's exit status. Throws std::exception when it does not come to the command.
int RunInSandbox(const Options& options);

#endif  // TOOLS_TAV_SANDBOX_RUN_H_
