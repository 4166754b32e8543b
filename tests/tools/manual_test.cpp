// SPDX-License-Identifier: Apache-2.0
#include "manual_test.h"

#include <sstream>
#include <stdexcept>

namespace test {
namespace {

// "-h,--help" is two names.
std::vector<std::string> NamesIn(const std::string& word) {
  std::vector<std::string> names;
  std::istringstream stream(word);
  for (std::string name; std::getline(stream, name, ',');) names.push_back(name);
  return names;
}

constexpr std::size_t kDescriptionColumn = 30;

// A line of a list in --help: two blanks, what it is about, and the description in its column,
// if need be on a line of its own.
void ReadLine(const std::string& heading, const std::string& line, Help& help) {
  const std::string word = line.substr(2, line.find(' ', 2) - 2);
  const std::size_t gap = line.find("  ", 2);
  const std::string text =
      gap != std::string::npos ? line.substr(line.find_first_not_of(' ', gap)) : "";
  if (heading == "Options:") {
    for (const std::string& name : NamesIn(word)) help.options[name] = text;
  } else if (heading == "Positionals:") {
    help.arguments.push_back(word);
  } else if (heading == "Subcommands:") {
    help.commands.push_back(word);
  }
}

Help ReadHelp(const std::string& path, const std::string& text) {
  Help help{path, {}, {}, {}};
  std::string heading;
  std::string joined;
  std::istringstream stream(text);
  const auto end_line = [&] {
    if (!joined.empty()) ReadLine(heading, joined, help);
    joined.clear();
  };
  for (std::string line; std::getline(stream, line);) {
    if (line.find_first_not_of(' ') == kDescriptionColumn && !joined.empty()) {
      joined += line;
      continue;
    }
    end_line();
    if (line.rfind("  ", 0) == 0) {
      joined = line;
    } else {
      heading = line;
    }
  }
  end_line();
  return help;
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const Help& help) {
  return stream << help.path;
}

std::string PlaceOf(const std::string& program) {
  if (program == "tavctl") return TAVCTL;
  if (program == "tav-sandbox") return TAV_SANDBOX;
  if (program == "tavcore-sim") return TAVCORE_SIM;
  throw std::runtime_error("no program " + program);
}

Result ManualTest::Run(const std::vector<std::string>& words) const {
  return Shell(R"(exec "$@")", words);
}

std::vector<Help> ManualTest::HelpOf(const std::string& program) const {
  std::vector<Help> all;
  AddHelp(program, {}, program, all);
  return all;
}

void ManualTest::AddHelp(const std::string& program, const std::vector<std::string>& commands,
                         const std::string& path, std::vector<Help>& all) const {
  std::vector<std::string> words = {PlaceOf(program)};
  words.insert(words.end(), commands.begin(), commands.end());
  words.emplace_back("--help");
  const Result result = Run(words);
  EXPECT_EQ(result.status, 0) << path << result;
  const Help help = ReadHelp(path, result.out);
  all.push_back(help);
  for (const std::string& command : help.commands) {
    std::vector<std::string> below = commands;
    below.push_back(command);
    AddHelp(program, below, path + " " + command, all);
  }
}

}  // namespace test
