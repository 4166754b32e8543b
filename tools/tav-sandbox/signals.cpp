// SPDX-License-Identifier: Apache-2.0
#include "signals.h"

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

Signals::Signals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGCHLD}) sigaddset(&signals, signal);
  sigprocmask(SIG_BLOCK, &signals, &m_before);
  m_descriptor = signalfd(-1, &signals, SFD_CLOEXEC);
  if (m_descriptor < 0) throw std::system_error(errno, std::generic_category(), "signalfd");
}

Signals::~Signals() {
  // What is still pending came too late: the sandbox is gone already, with the command's status.
  while (Wait(0)) continue;
  close(m_descriptor);
  sigprocmask(SIG_SETMASK, &m_before, nullptr);
}

std::optional<ArrivedSignal> Signals::Wait(int milliseconds) {
  pollfd arrival = {m_descriptor, POLLIN, 0};
  signalfd_siginfo info = {};
  if (poll(&arrival, 1, milliseconds) <= 0 || read(m_descriptor, &info, sizeof(info)) <= 0) {
    return std::nullopt;
  }
  return ArrivedSignal{static_cast<int>(info.ssi_signo), info.ssi_code == SI_KERNEL};
}
