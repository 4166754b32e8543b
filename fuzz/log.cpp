// SPDX-License-Identifier: Apache-2.0
//
// The platform's log, in the place of the real one: every line is formatted, whatever its level,
// and none is written.
#include <dlog.h>

#include <cstdarg>
#include <cstdio>

#include "support.h"

int dlog_print(log_priority /*prio*/, const char* /*tag*/, const char* fmt, ...) {
  va_list arguments;
  va_start(arguments, fmt);
  const int length = std::vsnprintf(nullptr, 0, fmt, arguments);
  va_end(arguments);
  fuzz::Check(length >= 0, "a log line can be formatted");
  return length;
}
