// SPDX-License-Identifier: Apache-2.0
#include "tav_common/tav_fork.h"

#include <unistd.h>

#include <atomic>
#include <exception>

namespace {

class ForkedInACall : public std::exception {
 public:
  const char* what() const noexcept override {
    return "this process was forked in the middle of a call, and cannot use the library";
  }
};

// The calls that run, and their process: a child finds its parent's. One word, so that both are
// read and changed at once.
struct Calls {
  pid_t process;
  int running;
};
std::atomic<Calls> g_calls{};
static_assert(std::atomic<Calls>::is_always_lock_free);

}  // namespace

TavRunningCall::TavRunningCall() {
  const pid_t process = getpid();
  Calls calls = g_calls;
  do {
    if (calls.process != process && calls.running > 0) throw ForkedInACall();
  } while (!g_calls.compare_exchange_weak(calls, {process, calls.running + 1}));
}

// A call whose own thread has forked also ends in the child: there it stays counted.
TavRunningCall::~TavRunningCall() {
  Calls calls = g_calls;
  while (calls.process == getpid() &&
         !g_calls.compare_exchange_weak(calls, {calls.process, calls.running - 1})) {
  }
}
