/* SPDX-License-Identifier: Apache-2.0 */
/*
 * The platform's log. A line reads "PRIO/TAG(pid): text" and goes to standard error and, when
 * DLOG_FILE names a file, to the end of that file as well. DLOG_LEVEL (V, D, I, W, E, F, or S
 * for none) is the lowest priority that is written; W without it. Both variables are read once,
 * at the first line. A set-user-id or set-group-id program, or one with file capabilities, heeds
 * neither.
 *
 * One line is one line: a line break at the end of a text is left out, also before the code that
 * ends a colour, and others are written as the two characters \n or \r.
 *
 * Standard error is the file that descriptor 2 was when this library was loaded. A redirection
 * of 2 counts as well when it is in force at the first line and leads to a pipe, a character
 * device or a file that is open for appending, and is not close-on-exec, as none that dup2 makes
 * is; and at any time when 1 and 2 are the same file or character device. Whatever else has the
 * number 2, a file or socket that took it over after it was closed, gets no line, and lines go to
 * standard error again once 2 is what it was. DLOG_FILE may be a regular file or a character
 * device; a pipe, a socket or a directory is refused with a line. It gets no more lines when its
 * descriptor is closed.
 *
 * Every function may be called from any thread, runs with cancellation disabled and keeps errno.
 * A line is written whole, with one write(2), however long it is; a pipe without a reader raises
 * no SIGPIPE. A line under the level is neither formatted nor allocated.
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
