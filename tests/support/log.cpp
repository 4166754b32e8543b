// SPDX-License-Identifier: Apache-2.0
#include "support/log.h"

#include <algorithm>
#include <fstream>
#include <regex>

namespace test {
namespace {

constexpr char kRed[] = "\033[0;31m";
constexpr char kYellow[] = "\033[0;33m";

bool HasLine(const std::vector<LogLine>& lines, char priority, const char* colour,
             const std::string& message) {
  return std::any_of(lines.begin(), lines.end(), [&](const LogLine& line) {
    return line.priority == priority && line.colour == colour && line.message == message;
  });
}

}  // namespace

std::vector<LogLine> Log::Lines() const {
  static const std::regex shape(
      "(?:^|\n)([VDIWEF])/([^(\n]*)\\([0-9]+\\): ([^:]+): ([^(]+)\\([0-9]+\\) > "
      "(\033\\[0;3[0-9]m)([^\033]*)\033\\[0;m");
  std::ifstream in(m_file);
  const std::string all((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  std::vector<LogLine> lines;
  for (std::sregex_iterator at(all.begin(), all.end(), shape), end; at != end; ++at) {
    const std::smatch& match = *at;
    lines.push_back(
        {match.str(1)[0], match.str(2), match.str(3), match.str(4), match.str(5), match.str(6)});
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
  return HasLine(Lines(), 'E', kRed, message);
}

bool Log::HasNotice(const std::string& message) const {
  return HasLine(Lines(), 'W', kYellow, message);
}

void Log::Forget() {
  std::filesystem::resize_file(m_file, 0);
}

}  // namespace test
