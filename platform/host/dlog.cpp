// SPDX-License-Identifier: Apache-2.0
// The log: one buffer a line, one write(2) a line and sink, so that lines of threads and
// processes do not mix. Leans on nothing else of the host platform, which all logs through it.
#include "dlog.h"

#include <errno.h>
#include <fcntl.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include <string_view>

#include "common/cancellation.h"
#include "dlog_line.h"
#include "dlog_sink.h"

namespace {

using tav_host::Line;
using tav_host::Sink;

constexpr char kTag[] = "DLOG";

tav_host::StandardError g_standard_error;  // made when the library is loaded

class ErrnoKeeper {
 public:
  ErrnoKeeper() = default;
  ErrnoKeeper(const ErrnoKeeper&) = delete;
  ErrnoKeeper& operator=(const ErrnoKeeper&) = delete;
  ~ErrnoKeeper() { errno = m_errno; }

 private:
  const int m_errno = errno;
};

// Null when the variable is unset or empty, and in a program that runs with more rights than its
// caller: he must not choose the file that it writes.
const char* Variable(const char* name) {
  const char* value = secure_getenv(name);
  return value != nullptr && *value != '\0' ? value : nullptr;
}

// For what is wrong with the settings of the log itself.
__attribute__((format(printf, 1, 2))) void Warn(const char* fmt, ...) {
  Line line;
  va_list ap;
  va_start(ap, fmt);
  if (line.Compose(DLOG_WARN, kTag, fmt, ap)) g_standard_error.Write(line.Text());
  va_end(ap);
}

int LevelFromEnvironment() {
  const char* value = Variable("DLOG_LEVEL");
  if (value == nullptr) return DLOG_WARN;
  const char* letters = tav_host::kPriorityLetters + DLOG_VERBOSE;
  const char* found = strlen(value) == 1 ? strchr(letters, *value) : nullptr;
  if (found != nullptr) return static_cast<int>(found - tav_host::kPriorityLetters);
  Warn("DLOG_LEVEL is \"%s\", none of %s; W is used", value, letters);
  return DLOG_WARN;
}

// Stays open until the process ends.
Sink FileFromEnvironment() {
  const char* path = Variable("DLOG_FILE");
  if (path == nullptr) return Sink();
  // Non-blocking, since opening a pipe waits for its other end.
  const int file =
      open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, 0644);
  const char* fault = "it is neither a regular file nor a character device";
  if (file >= 0) {
    const Sink sink(file);
    fcntl(file, F_SETFL, O_APPEND);  // blocking again: a terminal may be slow
    if (sink.IsFileOrDevice()) return sink;
    close(file);
  } else if (errno != ENXIO) {  // the answer of a pipe without a reader, and of a socket
    fault = strerror(errno);
  }
  Warn("cannot open DLOG_FILE \"%s\": %s", path, fault);
  return Sink();
}

struct Settings {
  int level = LevelFromEnvironment();
  Sink file = FileFromEnvironment();
};

const Settings& TheSettings() {
  static const Settings settings = [] {
    const tav_host::CancellationOff off;
    const ErrnoKeeper keeper;
    g_standard_error.Settle();
    return Settings();
  }();
  return settings;
}

bool IsFiltered(int prio) {
  return prio < TheSettings().level && prio >= DLOG_VERBOSE;
}

__attribute__((format(printf, 3, 0))) int Print(log_priority prio, const char* tag, const char* fmt,
                                                va_list ap) {
  if (prio < DLOG_VERBOSE || prio > DLOG_FATAL || fmt == nullptr) return -1;
  const tav_host::CancellationOff off;
  const ErrnoKeeper keeper;
  Line line;
  if (!line.Compose(prio, tag != nullptr ? tag : "", fmt, ap)) return -1;
  const bool said = g_standard_error.Write(line.Text());
  const Sink& file = TheSettings().file;
  const bool kept = file.IsCurrent() && file.Write(line.Text());
  return said || kept ? static_cast<int>(line.Text().size()) : -1;
}

}  // namespace

int dlog_print(log_priority prio, const char* tag, const char* fmt, ...) {
  if (IsFiltered(prio)) return 0;
  va_list ap;
  va_start(ap, fmt);
  const int result = Print(prio, tag, fmt, ap);
  va_end(ap);
  return result;
}

int dlog_vprint(log_priority prio, const char* tag, const char* fmt, va_list ap) {
  return IsFiltered(prio) ? 0 : Print(prio, tag, fmt, ap);
}
