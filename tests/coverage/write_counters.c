// SPDX-License-Identifier: Apache-2.0
// Preloaded into every program of the tests by scripts/coverage. The compiler has the counters
// written at exit alone; this writes them where a process ends by _exit or by a signal, too.
#include <signal.h>
#include <stddef.h>
#include <stdlib.h>
#include <sys/syscall.h>
#include <unistd.h>

enum { kMostParts = 16 };  // the library, six platform libraries, and a program with objects

static void (*g_dumps[kMostParts])(void);
static size_t g_count;

static void DumpAll(void) {
  for (size_t i = 0; i < g_count; ++i) g_dumps[i]();
}

static void OnEnd(int signal) {
  DumpAll();
  raise(signal);  // SA_RESETHAND: now it ends the process
}

static void HandleSignals(void) {
  static const int kSignals[] = {SIGABRT, SIGALRM, SIGBUS,  SIGFPE,  SIGHUP,  SIGILL, SIGINT,
                                 SIGPIPE, SIGQUIT, SIGSEGV, SIGTERM, SIGTRAP, SIGXFSZ};
  struct sigaction end = {.sa_handler = OnEnd, .sa_flags = SA_RESETHAND | SA_NODEFER};
  for (size_t i = 0; i < sizeof kSignals / sizeof *kSignals; ++i) {
    struct sigaction before;
    sigaction(kSignals[i], NULL, &before);
    if (before.sa_handler == SIG_DFL) sigaction(kSignals[i], &end, NULL);
  }
}

// Takes the function that writes the counters of a library or program, see register.c.
__attribute__((visibility("default"))) void tav_coverage_register(void (*dump)(void)) {
  if (g_count == 0) HandleSignals();
  if (g_count == kMostParts) abort();
  g_dumps[g_count++] = dump;
}

__attribute__((visibility("default"))) void _exit(int status) {
  DumpAll();
  for (;;) syscall(SYS_exit_group, status);
}

__attribute__((visibility("default"))) void _Exit(int status) {
  _exit(status);
}
