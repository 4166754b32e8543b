// SPDX-License-Identifier: Apache-2.0
// Where lines of the log go.
#ifndef TAV_HOST_DLOG_SINK_H_
#define TAV_HOST_DLOG_SINK_H_

#include <sys/stat.h>
#include <unistd.h>

#include <string_view>

namespace tav_host {

// A descriptor and the file that it stood for when this object was made: the number may be closed
// and taken over by another one.
class Sink {
 public:
  Sink() = default;
  explicit Sink(int descriptor) noexcept;

  bool IsFileOrDevice() const { return S_ISREG(m_mode) || S_ISCHR(m_mode); }
  bool IsSameFileAs(const Sink& other) const;
  // Whether it looks as if the descriptor has been redirected to it on purpose.
  bool IsRedirection() const;
  // Whether the descriptor still stands for that file.
  bool IsCurrent() const;
  // Writes a line, whole. False when it did not get there. Never raises SIGPIPE.
  bool Write(std::string_view line) const;

 private:
  int m_descriptor = -1;
  dev_t m_device = 0;
  ino_t m_inode = 0;
  mode_t m_mode = 0;
};

// Descriptor 2, as long as it is known to be the standard error and not a file, pipe or socket
// that has taken the number of a closed one over: see dlog.h.
class StandardError {
 public:
  // What descriptor 2 is at the first line counts, if it has been redirected since the loading.
  void Settle();
  // As Sink.
  bool Write(std::string_view line) const;

 private:
  const Sink m_loaded{STDERR_FILENO};
  Sink m_first;
};

}  // namespace tav_host

#endif  // TAV_HOST_DLOG_SINK_H_
