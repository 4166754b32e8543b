// SPDX-License-Identifier: Apache-2.0
#include "support/log.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <regex>
#include <stdexcept>

namespace test {
namespace {

constexpr char kTag[] = "TavClient";
constexpr char kPlain[] = "\033[0;m";
const std::map<char, std::string> kColours = {
    {'I', "\033[0;32m"}, {'W', "\033[0;33m"}, {'E', "\033[0;31m"}};

// How a line of any component begins.
const std::regex kHead("^([VDIWEF])/([^(\n]*)\\([0-9]+\\): ");
// What stands between the head and the message of one of the library's lines.
const std::regex kPlace(
    "^([A-Za-z0-9_]+\\.(?:cpp|h)): (~?[A-Za-z_][A-Za-z0-9_]*)\\([1-9][0-9]*\\) > "
    "(\033\\[0;3[0-9]m)");

// The text as it was before the log wrote its line breaks as two characters each.
std::string WithBreaks(const std::string& text) {
  return std::regex_replace(std::regex_replace(text, std::regex(R"(\\n)"), "\n"),
                            std::regex(R"(\\r)"), "\r");
}

LogLine Parse(char priority, const std::string& text) {
  std::smatch place;
  const auto colour = kColours.find(priority);
  const std::size_t end = text.size() - std::min(text.size(), sizeof(kPlain) - 1);
  if (colour == kColours.end() || text.compare(end, std::string::npos, kPlain) != 0 ||
      !std::regex_search(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), place,
                         kPlace) ||
      place.str(3) != colour->second) {
    throw std::runtime_error(std::string("a misshapen log line: ") + priority + " " + text);
  }
  const std::size_t start = static_cast<std::size_t>(place.length());
  return {priority,     kTag,         place.str(1),
          place.str(2), place.str(3), WithBreaks(text.substr(start, end - start))};
}

bool HasLine(const std::vector<LogLine>& lines, char priority, const std::string& message) {
  return std::any_of(lines.begin(), lines.end(), [&](const LogLine& line) {
    return line.priority == priority && line.message == message;
  });
}

}  // namespace

std::vector<LogLine> Log::Lines() const {
  std::ifstream in(m_file);
  std::vector<LogLine> lines;
  // What another thread is still writing has not got its newline yet.
  for (std::string line; std::getline(in, line) && !in.eof();) {
    std::smatch head;
    if (!std::regex_search(line, head, kHead)) {
      throw std::runtime_error("a log line without a head: " + line);
    }
    if (head.str(2) == kTag) lines.push_back(Parse(head.str(1)[0], head.suffix()));
  }
  return lines;
}

std::vector<std::string> Log::Messages() const {
  std::vector<std::string> messages;
  for (const LogLine& line : Lines()) messages.push_back(line.message);
  return messages;
}

std::vector<std::string> Log::Messages(char priority) const {
  std::vector<std::string> messages;
  for (const LogLine& line : Lines()) {
    if (line.priority == priority) messages.push_back(line.message);
  }
  return messages;
}

int Log::Count(const std::string& message) const {
  const std::vector<std::string> messages = Messages();
  return static_cast<int>(std::count(messages.begin(), messages.end(), message));
}

bool Log::HasError(const std::string& message) const {
  return HasLine(Lines(), 'E', message);
}

bool Log::HasNotice(const std::string& message) const {
  return HasLine(Lines(), 'W', message);
}

void Log::Forget() {
  std::filesystem::resize_file(m_file, 0);
}

}  // namespace test
