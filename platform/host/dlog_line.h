// SPDX-License-Identifier: Apache-2.0
// One line of the log.
#ifndef TAV_HOST_DLOG_LINE_H_
#define TAV_HOST_DLOG_LINE_H_

#include <stdarg.h>
#include <stdlib.h>

#include <memory>
#include <string_view>

#include "dlog.h"

namespace tav_host {

constexpr char kPriorityLetters[] = "  VDIWEFS";  // by log_priority

// Keeps its text on the stack as long as it fits.
class Line {
 public:
  Line() = default;
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;

  // Makes "PRIO/TAG(pid): text" of its arguments and ends it with a newline. A line break at the
  // end of the text is left out, and others are written as the characters \n and \r. False when
  // the format is refused or there is no memory. Formats %m as errno is at the call.
  __attribute__((format(printf, 4, 0))) bool Compose(log_priority prio, const char* tag,
                                                     const char* fmt, va_list ap);
  std::string_view Text() const { return {m_text, m_size}; }

 private:
  struct Free {
    void operator()(char* block) const { free(block); }
  };

  bool Reserve(size_t size);
  void LeaveOutLastBreak();
  bool EscapeBreaks();

  char m_small[1024];
  std::unique_ptr<char, Free> m_large;
  char* m_text = m_small;
  size_t m_capacity = sizeof m_small;
  size_t m_size = 0;
};

}  // namespace tav_host

#endif  // TAV_HOST_DLOG_LINE_H_
