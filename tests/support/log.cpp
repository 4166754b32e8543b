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

// Where a line of any component begins.
const std::regex kHead("([VDIWEF])/([^(\n]*)\\([0-9]+\\): ");
// What stands between the head and the message of one of the library's lines.
const std::regex kPlace(
    "([A-Za-z0-9_]+\\.(?:cpp|h)): (~?[A-Za-z_][A-Za-z0-9_]*)\\([1-9][0-9]*\\) > "
    "(\033\\[0;3[0-9]m)");

using Position = std::string::const_iterator;

bool MatchHere(Position at, Position end, std::smatch& match, const std::regex& shape) {
  return std::regex_search(at, end, match, shape, std::regex_constants::match_continuous);
}

// The beginning of the next line of the file that begins with a head, or the end: a message may
// hold newlines of its own.
Position NextHead(Position at, Position end) {
  std::smatch head;
  while ((at = std::find(at, end, '\n')) != end) {
    if (MatchHere(++at, end, head, kHead)) break;
    // One of the library's whose head is broken must not pass for a piece of another message.
    const std::string beginning(at, at + std::min<std::ptrdiff_t>(end - at, sizeof(kTag) + 1));
    if (beginning.find(std::string("/") + kTag) != std::string::npos) {
      throw std::runtime_error("a log line without a head: " + std::string(at, end));
    }
  }
  return at;
}

LogLine Parse(char priority, const std::string& text) {
  std::smatch place;
  const auto colour = kColours.find(priority);
  const std::size_t end = text.size() - std::min(text.size(), sizeof(kPlain) - 1);
  if (colour == kColours.end() || text.compare(end, std::string::npos, kPlain) != 0 ||
      !MatchHere(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), place, kPlace) ||
      place.str(3) != colour->second) {
    throw std::runtime_error(std::string("a misshapen log line: ") + priority + " " + text);
  }
  const std::size_t start = static_cast<std::size_t>(place.length());
  return {priority,     kTag,         place.str(1),
          place.str(2), place.str(3), text.substr(start, end - start)};
}

bool HasLine(const std::vector<LogLine>& lines, char priority, const std::string& message) {
  return std::any_of(lines.begin(), lines.end(), [&](const LogLine& line) {
    return line.priority == priority && line.message == message;
  });
}

}  // namespace

std::vector<LogLine> Log::Lines() const {
  std::ifstream in(m_file);
  // A newline of ours before the first line makes it like the others.
  std::string all = "\n";
  all.append(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  // What another thread is still writing has not got its newline yet.
  all.resize(all.rfind('\n') + 1);

  std::vector<LogLine> lines;
  const Position end = all.cend();
  for (Position at = NextHead(all.cbegin(), end); at != end;) {
    std::smatch head;
    MatchHere(at, end, head, kHead);
    const Position next = NextHead(at, end);
    if (head.str(2) == kTag) lines.push_back(Parse(head.str(1)[0], {head[0].second, next - 1}));
    at = next;
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
