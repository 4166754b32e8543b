// SPDX-License-Identifier: Apache-2.0
// System calls of this executable that fail when a test says so: these definitions come before
// the C library's in the order of symbol lookup.
#ifndef TAV_TESTS_PLATFORM_FAILING_CALLS_H_
#define TAV_TESTS_PLATFORM_FAILING_CALLS_H_

// The error of the next call, 0 for none; it is reset by that call.
struct FailingCalls {
  int inotify_init = 0;
  int inotify_add_watch = 0;
  int read = 0;
  bool getpwuid = false;  // of each, which finds no user
};
extern FailingCalls g_failing_calls;

#endif  // TAV_TESTS_PLATFORM_FAILING_CALLS_H_
