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

// Where a line is written for. A helper that speaks for its caller takes one as its last
// argument, LogPlace::Here() by default.
struct LogPlace {
  const char* path;
  const char* function;
  int line;

  static constexpr LogPlace Here(const char* path = __builtin_FILE(),
                                 const char* function = __builtin_FUNCTION(),
                                 int line = __builtin_LINE()) {
    return {path, function, line};
  }
};

#define TAV_GREEN "\033[0;32m"
#define TAV_YELLOW "\033[0;33m"
#define TAV_RED "\033[0;31m"
#define TAV_PLAIN "\033[0;m"

#define TAV_LOGI(...) TAV_LOG_HERE(DLOG_INFO, TAV_GREEN, __VA_ARGS__, TAV_PLAIN)
#define TAV_LOGW(...) TAV_LOG_HERE(DLOG_WARN, TAV_YELLOW, __VA_ARGS__, TAV_PLAIN)
#define TAV_LOGE(...) TAV_LOG_HERE(DLOG_ERROR, TAV_RED, __VA_ARGS__, TAV_PLAIN)
#define TAV_LOGI_FOR(place, ...) TAV_LOG_FOR(place, DLOG_INFO, TAV_GREEN, __VA_ARGS__, TAV_PLAIN)
#define TAV_LOGW_FOR(place, ...) TAV_LOG_FOR(place, DLOG_WARN, TAV_YELLOW, __VA_ARGS__, TAV_PLAIN)
#define TAV_LOGE_FOR(place, ...) TAV_LOG_FOR(place, DLOG_ERROR, TAV_RED, __VA_ARGS__, TAV_PLAIN)

#define TAV_LOG_HERE(priority, colour, ...)                                        \
  do {                                                                             \
    static constexpr const char* tav_log_file = TavFileName(__FILE__);             \
    TAV_LOG_LINE(priority, colour, tav_log_file, __func__, __LINE__, __VA_ARGS__); \
  } while (false)

#define TAV_LOG_FOR(place, priority, colour, ...)                                           \
  TAV_LOG_LINE(priority, colour, TavFileName((place).path), (place).function, (place).line, \
               __VA_ARGS__)

// The last of the arguments is the code that ends the colour: it keeps the list from being
// empty for a message without arguments of its own.
#define TAV_LOG_LINE(priority, colour, file, function, line, message, ...)                     \
  dlog_print(priority, TAV_LOG_TAG, "%s: %s(%d) > " colour message "%s", file, function, line, \
             __VA_ARGS__)

#endif  // TAV_COMMON_TAV_LOG_H_
