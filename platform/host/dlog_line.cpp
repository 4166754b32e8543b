// SPDX-License-Identifier: Apache-2.0
// One line of the log; see the header.
#include "dlog_line.h"

#include <errno.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

#include <algorithm>

namespace tav_host {
namespace {

// The line into `out`, cut at `size`; the length of the whole line, or negative, as snprintf does.
__attribute__((format(printf, 5, 0))) int Format(char* out, size_t size, log_priority prio,
                                                 const char* tag, const char* fmt, va_list ap) {
  const int error = errno;  // the format may hold %m
  const int head = snprintf(out, size, "%c/%s(%d): ", kPriorityLetters[prio], tag, getpid());
  if (head < 0) return head;
  const size_t at = std::min(static_cast<size_t>(head), size);
  errno = error;
  // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): the caller's list, which it started
  const int body = vsnprintf(at < size ? out + at : nullptr, size - at, fmt, ap);
  errno = error;
  return body < 0 ? body : head + body;
}

// Where the code begins that ends the colour of a text, "\033[0;m" or its like; the text's end
// when it has none.
size_t EndOfMessage(std::string_view text) {
  const size_t code = text.rfind("\033[");
  const bool has_code = code != std::string_view::npos &&
                        text.find_first_not_of("0123456789;", code + 2) == text.size() - 1 &&
                        text.back() == 'm';
  return has_code ? code : text.size();
}

}  // namespace

bool Line::Compose(log_priority prio, const char* tag, const char* fmt, va_list ap) {
  va_list copy;
  va_copy(copy, ap);
  const int length = Format(m_text, m_capacity, prio, tag, fmt, copy);
  va_end(copy);
  if (length < 0) return false;
  m_size = static_cast<size_t>(length);
  if (m_size >= m_capacity) {
    const int error = errno;
    if (!Reserve(m_size + 1)) return false;
    errno = error;
    if (Format(m_text, m_capacity, prio, tag, fmt, ap) != length) return false;
  }
  LeaveOutLastBreak();
  if (!EscapeBreaks()) return false;
  m_text[m_size++] = '\n';  // a terminator stood here, or more
  return true;
}

// Makes room for so many bytes and keeps the text.
bool Line::Reserve(size_t size) {
  if (size <= m_capacity) return true;
  std::unique_ptr<char, Free> block(static_cast<char*>(malloc(size)));
  if (block == nullptr) return false;
  memcpy(block.get(), m_text, std::min(m_size, m_capacity));
  m_large = std::move(block);
  m_text = m_large.get();
  m_capacity = size;
  return true;
}

void Line::LeaveOutLastBreak() {
  const size_t end = EndOfMessage(Text());
  if (m_text[end - 1] != '\n') return;  // there is a head before it
  memmove(m_text + end - 1, m_text + end, m_size - end);
  --m_size;
}

bool Line::EscapeBreaks() {
  const auto is_break = [](char c) { return c == '\n' || c == '\r'; };
  const auto breaks = std::count_if(m_text, m_text + m_size, is_break);
  if (!Reserve(m_size + static_cast<size_t>(breaks) + 1)) return false;
  // From the end, so that nothing is overwritten before it was moved.
  char* to = m_text + m_size + breaks;
  for (const char* from = m_text + m_size; to != from;) {
    const char c = *--from;
    *--to = c == '\n' ? 'n' : c == '\r' ? 'r' : c;
    if (is_break(c)) *--to = '\\';
  }
  m_size += static_cast<size_t>(breaks);
  return true;
}

}  // namespace tav_host
