// SPDX-License-Identifier: Apache-2.0
//
// The one set of logging macros. A line carries file, function and line before its message,
// and the message stands between colour codes: green for information, yellow for notices, red
// for errors. The arguments must cost nothing to compute, since the platform's log is what
// decides whether a line is written.
#ifndef TAV_COMMON_TAV_LOG_H_
#define TAV_COMMON_TAV_LOG_H_

#include <dlog.h>

#define TAV_LOG_TAG "TavClient"

// The name of a source file without its directories.
constexpr const char* TavFileName(const char* path) {
  const char* name = path;
  for (const char* at = path; *at != '\0'; ++at) {
    if (*at == '/') name = at + 1;
  }
  return name;
}

// What to give "%s" for a text that may be null.
constexpr const char* Printable(const char* text) {
  return text != nullptr ? text : "(null)";
}

#define TAV_LOGI(...) TAV_LOG_LINE(DLOG_INFO, "\033[0;32m", __VA_ARGS__, "\033[0;m")
#define TAV_LOGW(...) TAV_LOG_LINE(DLOG_WARN, "\033[0;33m", __VA_ARGS__, "\033[0;m")
#define TAV_LOGE(...) TAV_LOG_LINE(DLOG_ERROR, "\033[0;31m", __VA_ARGS__, "\033[0;m")

// The last of the arguments is the code that ends the colour: it keeps the list from being
// empty for a message without arguments of its own.
#define TAV_LOG_LINE(priority, colour, message, ...)                                               \
  do {                                                                                             \
    static constexpr const char* tav_log_file = TavFileName(__FILE__);                             \
    dlog_print(priority, TAV_LOG_TAG, "%s: %s(%d) > " colour message "%s", tav_log_file, __func__, \
               __LINE__, __VA_ARGS__);                                                             \
  } while (false)

#endif  // TAV_COMMON_TAV_LOG_H_
