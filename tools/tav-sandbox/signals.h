// SPDX-License-Identifier: Apache-2.0
//
// The signals that end a sandbox, as something to wait for. So that none of them leaves a sandbox
// half removed, they are blocked for as long as this object lives.
#ifndef TOOLS_TAV_SANDBOX_SIGNALS_H_
#define TOOLS_TAV_SANDBOX_SIGNALS_H_

#include <csignal>
#include <optional>

struct ArrivedSignal {
  int number = 0;
  bool is_from_terminal = false;  // and so has reached the whole foreground already
};

class Signals {
 public:
  Signals();
  ~Signals();
  Signals(const Signals&) = delete;
  Signals& operator=(const Signals&) = delete;

  // Waits for one of the signals or the end of a child, SIGCHLD; up to so many milliseconds, or
  // without a limit when it is negative.
  std::optional<ArrivedSignal> Wait(int milliseconds);

 private:
  sigset_t m_before;
  int m_descriptor;
};

#endif  // TOOLS_TAV_SANDBOX_SIGNALS_H_
