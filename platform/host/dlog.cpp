// SPDX-License-Identifier: Apache-2.0
// The log: one buffer a line, one write(2) a line and sink, so that lines of threads and
// processes do not mix. Leans on nothing else of the host platform, which all logs through it.
#include "dlog.h"

#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include <algorithm>
#include <memory>

namespace {

constexpr char kLetters[] = "  VDIWEFS";  // by log_priority
constexpr int kNoFile = -1;

class ErrnoKeeper {
 public:
  ErrnoKeeper() = default;
  ErrnoKeeper(const ErrnoKeeper&) = delete;
  ErrnoKeeper& operator=(const ErrnoKeeper&) = delete;
  ~ErrnoKeeper() { Restore(); }
  void Restore() const { errno = m_errno; }

 private:
  int m_errno = errno;
};

// Null when the variable is unset or empty.
const char* Variable(const char* name) {
  const char* value = getenv(name);
  return value != nullptr && *value != '\0' ? value : nullptr;
}

int LevelFromEnvironment() {
  const char* value = Variable("DLOG_LEVEL");
  if (value == nullptr) return DLOG_WARN;
  const char* letters = kLetters + DLOG_VERBOSE;
  const char* found = strlen(value) == 1 ? strchr(letters, *value) : nullptr;
  if (found != nullptr) return static_cast<int>(found - kLetters);
  dprintf(STDERR_FILENO, "W/DLOG(%d): DLOG_LEVEL is \"%s\", none of %s; W is used\n", getpid(),
          value, letters);
  return DLOG_WARN;
}

int FileFromEnvironment() {
  const char* path = Variable("DLOG_FILE");
  if (path == nullptr) return kNoFile;
  const int file = open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY, 0644);
  if (file < 0) {
    dprintf(STDERR_FILENO, "W/DLOG(%d): cannot open DLOG_FILE \"%s\": %s\n", getpid(), path,
            strerror(errno));
  }
  return file;
}

struct Settings {
  int level = LevelFromEnvironment();
  int file = FileFromEnvironment();  // stays open until the process ends
};

const Settings& TheSettings() {
  static const Settings settings = [] {
    const ErrnoKeeper keeper;
    return Settings();
  }();
  return settings;
}

bool IsFiltered(int prio) {
  return prio < TheSettings().level && prio >= DLOG_VERBOSE;
}

// The line into `out`, cut at `size`; the length of the whole line, or negative, as snprintf does.
__attribute__((format(printf, 5, 0))) int Compose(char* out, size_t size, log_priority prio,
                                                  const char* tag, const char* fmt, va_list ap) {
  const int head = snprintf(out, size, "%c/%s(%d): ", kLetters[prio], tag, getpid());
  if (head < 0) return head;
  const size_t at = std::min(static_cast<size_t>(head), size);
  // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): the caller's list, which it started
  const int body = vsnprintf(at < size ? out + at : nullptr, size - at, fmt, ap);
  return body < 0 ? body : head + body;
}

bool WriteAll(int file, const char* data, size_t size) {
  while (size > 0) {
    const ssize_t written = write(file, data, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    data += written;
    size -= static_cast<size_t>(written);
  }
  return true;
}

int WriteLine(const char* line, size_t size) {
  const int file = TheSettings().file;
  const bool said = WriteAll(STDERR_FILENO, line, size);
  const bool kept = file != kNoFile && WriteAll(file, line, size);
  return said || kept ? static_cast<int>(size) : -1;
}

struct Free {
  void operator()(void* block) const { free(block); }
};

__attribute__((format(printf, 3, 0))) int Print(log_priority prio, const char* tag, const char* fmt,
                                                va_list ap) {
  if (prio < DLOG_VERBOSE || prio > DLOG_FATAL || fmt == nullptr) return -1;
  if (tag == nullptr) tag = "";

  const ErrnoKeeper keeper;  // the format may hold %m
  char small[1024];
  va_list copy;
  va_copy(copy, ap);
  const int length = Compose(small, sizeof small, prio, tag, fmt, copy);
  va_end(copy);
  if (length < 0) return -1;
  const size_t size = static_cast<size_t>(length) + 1;  // a newline takes the terminator's place
  if (size <= sizeof small) {
    small[length] = '\n';
    return WriteLine(small, size);
  }

  const std::unique_ptr<char, Free> large(static_cast<char*>(malloc(size)));
  if (large == nullptr) return -1;
  keeper.Restore();
  if (Compose(large.get(), size, prio, tag, fmt, ap) != length) return -1;
  large.get()[length] = '\n';
  return WriteLine(large.get(), size);
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
