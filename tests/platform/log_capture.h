// SPDX-License-Identifier: Apache-2.0
// A log in memory, which stands in for the platform's in this executable.
#ifndef TAV_TESTS_PLATFORM_LOG_CAPTURE_H_
#define TAV_TESTS_PLATFORM_LOG_CAPTURE_H_

#include <dlog.h>

#include <string>

// The lines since the last call, "PRIO/TAG: text" each with a newline.
std::string TakeLog();

// The priorities of those lines alone: "EED" for two errors and a debug line.
std::string TakePriorities();

#endif  // TAV_TESTS_PLATFORM_LOG_CAPTURE_H_
