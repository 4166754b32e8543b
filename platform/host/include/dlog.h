/* SPDX-License-Identifier: Apache-2.0 */
/*
 * The platform's log. A line reads "PRIO/TAG(pid): text" and goes to standard error and, when
 * DLOG_FILE names a file, to the end of that file as well. DLOG_LEVEL (V, D, I, W, E, F, or S
 * for none) is the lowest priority that is written; W without it. Both variables are read once,
 * at the first line.
 *
 * Every function may be called from any thread and keeps errno. A line is written whole, with
 * one write(2), however long it is. A line under the level is neither formatted nor allocated.
 */
#ifndef DLOG_H_
#define DLOG_H_

#include <stdarg.h>

#define DLOG_API __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

typedef enum log_priority {
  DLOG_UNKNOWN = 0,
  DLOG_DEFAULT,
  DLOG_VERBOSE,
  DLOG_DEBUG,
  DLOG_INFO,
  DLOG_WARN,
  DLOG_ERROR,
  DLOG_FATAL,
  DLOG_SILENT
} log_priority;

/*
 * Both return the bytes of the line written, 0 for a line under the level, or a negative number
 * when nothing could be written or the arguments are refused: a null format, or a priority other
 * than DLOG_VERBOSE to DLOG_FATAL. A null tag is an empty one.
 */
DLOG_API int dlog_print(log_priority prio, const char* tag, const char* fmt, ...)
    __attribute__((format(printf, 3, 4)));
DLOG_API int dlog_vprint(log_priority prio, const char* tag, const char* fmt, va_list ap)
    __attribute__((format(printf, 3, 0)));

#ifdef __cplusplus
}
#endif

#endif /* DLOG_H_ */
