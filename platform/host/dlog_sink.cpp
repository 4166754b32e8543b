// SPDX-License-Identifier: Apache-2.0
// Where lines of the log go; see the header.
#include "dlog_sink.h"

#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <time.h>
#include <unistd.h>

namespace tav_host {
namespace {

// Keeps the SIGPIPE of a write from the host, whose own disposition and mask stay as they are.
class SigpipeHeld {
 public:
  SigpipeHeld() {
    sigset_t pending;
    sigpending(&pending);
    m_was_pending = sigismember(&pending, SIGPIPE) == 1;
    sigemptyset(&m_sigpipe);
    sigaddset(&m_sigpipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &m_sigpipe, &m_before);
  }
  SigpipeHeld(const SigpipeHeld&) = delete;
  SigpipeHeld& operator=(const SigpipeHeld&) = delete;
  ~SigpipeHeld() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

  // Takes the signal that a write has made. One that was pending before is the host's.
  void Take() const {
    constexpr timespec kNow = {};
    if (!m_was_pending) sigtimedwait(&m_sigpipe, nullptr, &kNow);
  }

 private:
  bool m_was_pending = false;
  sigset_t m_sigpipe;
  sigset_t m_before;
};

}  // namespace

Sink::Sink(int descriptor) noexcept : m_descriptor(descriptor) {
  struct stat status = {};
  if (fstat(descriptor, &status) != 0) return;
  m_device = status.st_dev;
  m_inode = status.st_ino;
  m_mode = status.st_mode;
}

bool Sink::IsSameFileAs(const Sink& other) const {
  return m_mode != 0 && m_device == other.m_device && m_inode == other.m_inode;
}

bool Sink::IsCurrent() const {
  return IsSameFileAs(Sink(m_descriptor));
}

bool Sink::Write(std::string_view line) const {
  const SigpipeHeld sigpipe;
  while (!line.empty()) {
    const ssize_t written = write(m_descriptor, line.data(), line.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0 && errno == EPIPE) sigpipe.Take();
    if (written <= 0) return false;
    line.remove_prefix(static_cast<size_t>(written));
  }
  return true;
}

// A descriptor that dup2 has made is not close-on-exec, and nothing is overwritten by a line that
// goes to one of these.
bool Sink::IsRedirection() const {
  if ((fcntl(m_descriptor, F_GETFD) & FD_CLOEXEC) != 0) return false;
  const bool is_appended = (fcntl(m_descriptor, F_GETFL) & O_APPEND) != 0;
  return S_ISFIFO(m_mode) || S_ISCHR(m_mode) || (S_ISREG(m_mode) && is_appended);
}

void StandardError::Settle() {
  const Sink now(STDERR_FILENO);
  if (now.IsRedirection()) m_first = now;
}

bool StandardError::Write(std::string_view line) const {
  const Sink now(STDERR_FILENO);
  const bool is_known = now.IsSameFileAs(m_loaded) || now.IsSameFileAs(m_first) ||
                        (now.IsFileOrDevice() && now.IsSameFileAs(Sink(STDOUT_FILENO)));
  return is_known && now.Write(line);
}

}  // namespace tav_host
