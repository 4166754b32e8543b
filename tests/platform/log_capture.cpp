// SPDX-License-Identifier: Apache-2.0
// A log in memory: these definitions come before the library's in the order of symbol lookup.
#include "log_capture.h"

#include <cstdio>
#include <mutex>
#include <utility>
#include <vector>

namespace {

struct Line {
  char priority;
  std::string text;
};

std::mutex g_mutex;
std::vector<Line> g_lines;

std::vector<Line> TakeLines() {
  const std::lock_guard<std::mutex> lock(g_mutex);
  return std::exchange(g_lines, {});
}

}  // namespace

int dlog_vprint(log_priority prio, const char* tag, const char* fmt, va_list ap) {
  char text[4096];
  // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): the caller's list, which it started
  const int length = std::vsnprintf(text, sizeof text, fmt, ap);
  const std::lock_guard<std::mutex> lock(g_mutex);
  g_lines.push_back({"??VDIWEFS"[prio], std::string(tag) + ": " + text + "\n"});
  return length;
}

int dlog_print(log_priority prio, const char* tag, const char* fmt, ...) {
  va_list ap;
  va_start(ap, fmt);
  const int result = dlog_vprint(prio, tag, fmt, ap);
  va_end(ap);
  return result;
}

std::string TakeLog() {
  std::string log;
  for (const Line& line : TakeLines()) log += std::string(1, line.priority) + "/" + line.text;
  return log;
}

std::string TakePriorities() {
  std::string priorities;
  for (const Line& line : TakeLines()) priorities += line.priority;
  return priorities;
}
