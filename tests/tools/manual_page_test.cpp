// SPDX-License-Identifier: Apache-2.0
//
// The manual pages that the build made, beside the programs' --help.
#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>

#include "manual_test.h"

namespace test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;

const Result kClean{0, "", ""};

std::string PageOf(const std::string& program) {
  return std::string(MANUALS) + "/" + program + ".1";
}

// The line without the marks of man(7).
std::string Plain(const std::string& line) {
  std::string plain;
  for (std::size_t at = 0; at < line.size(); ++at) {
    if (line.compare(at, 2, "\\f") == 0) {
      at += 2;
    } else if (line[at] != '\\') {
      plain += line[at];
    }
  }
  return plain;
}

// What stands in a page, by heading; of the options the names alone.
struct Page {
  std::map<std::string, std::vector<std::string>> tags;
  std::map<std::string, std::string> texts;
};

Page ReadPage(const std::string& program) {
  Page page;
  std::istringstream stream(ReadFile(PageOf(program)));
  std::string heading;
  bool is_tag = false;
  for (std::string line; std::getline(stream, line);) {
    if (line.rfind(".SH ", 0) == 0 || line.rfind(".SS ", 0) == 0) {
      heading = Plain(line.substr(4));
      page.texts[heading];
      page.tags[heading];
    } else if (is_tag) {
      std::istringstream words(Plain(line));
      for (std::string word; words >> word;) {
        if (word.back() == ',') word.pop_back();
        page.tags[heading].push_back(word);
      }
    } else {
      page.texts[heading] += Plain(line) + "\n";
    }
    is_tag = line == ".TP";
  }
  return page;
}

class ManualPage : public ManualTest, public testing::WithParamInterface<const char*> {
 protected:
  // Under the heading of a command stands what is its own.
  static std::vector<std::string> NamesFor(const Help& help) {
    std::vector<std::string> names;
    for (const auto& [name, description] : help.options) {
      const bool is_told_once = help.path != GetParam() && (name == "-h" || name == "--help");
      if (!is_told_once) names.push_back(name);
    }
    names.insert(names.end(), help.arguments.begin(), help.arguments.end());
    return names;
  }
};

TEST_P(ManualPage, GivesMandocNoReasonToWarn) {
  EXPECT_EQ(Run({"mandoc", "-T", "lint", "-W", "warning", PageOf(GetParam())}), kClean);
}

TEST_P(ManualPage, GivesGroffNoReasonToWarn) {
  EXPECT_EQ(Run({"groff", "-man", "-ww", "-z", "-Tutf8", PageOf(GetParam())}), kClean);
}

TEST_P(ManualPage, HasEveryCommandAndOptionAndArgumentThatHelpShows) {
  const Page page = ReadPage(GetParam());
  for (const Help& help : HelpOf(GetParam())) {
    const std::string heading = help.path == GetParam() ? "OPTIONS" : help.path;
    ASSERT_THAT(page.tags, Contains(testing::Key(heading)));
    EXPECT_THAT(page.tags.at(heading), IsSupersetOf(NamesFor(help))) << heading;
  }
}

TEST_P(ManualPage, SaysWhatAPersonLooksForInEachSection) {
  const Page page = ReadPage(GetParam());
  for (const char* heading : {"NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXIT STATUS",
                              "ENVIRONMENT", "FILES", "EXAMPLES", "SEE ALSO"}) {
    EXPECT_THAT(page.texts, Contains(testing::Key(heading)));
    EXPECT_THAT(page.texts.at(heading), Not("")) << heading;
  }
  EXPECT_THAT(page.texts.at("NAME"), HasSubstr(std::string(GetParam()) + " - "));
  EXPECT_THAT(page.texts.at("SYNOPSIS"), HasSubstr(GetParam()));
}

TEST_P(ManualPage, SaysTheSameAsHelpOfStatusesAndTheEnvironment) {
  const Page page = ReadPage(GetParam());
  const std::string help = Run({PlaceOf(GetParam()), "--help"}).out;
  EXPECT_THAT(help, HasSubstr("\nExit status:\n"));
  EXPECT_THAT(help, HasSubstr("\nEnvironment:\n"));
  for (const char* heading : {"EXIT STATUS", "ENVIRONMENT"}) {
    EXPECT_FALSE(page.tags.at(heading).empty());
    for (const std::string& tag : page.tags.at(heading)) {
      EXPECT_THAT(help, HasSubstr("\n  " + tag + " ")) << heading;
    }
  }
}

TEST_P(ManualPage, IsOfThisVersionAndHasADate) {
  const std::string text = ReadFile(PageOf(GetParam()));
  EXPECT_THAT(text, testing::ContainsRegex("\n\\.TH [A-Z\\-]+ 1 20[0-9]{2}-[0-9]{2}-[0-9]{2} "
                                           "\"libtav_db_api " TAV_VERSION "\""));
}

TEST_P(ManualPage, KnowsAllOptionsByADescription) {
  for (const Help& help : HelpOf(GetParam())) {
    EXPECT_THAT(help.options, Contains(testing::Key("--help")));
    for (const auto& [name, description] : help.options) {
      EXPECT_NE(description, "") << help.path << " " << name;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(OfEachProgram, ManualPage,
                         testing::Values("tavctl", "tav-sandbox", "tavcore-sim"),
                         [](const auto& program) {
                           std::string name = program.param;
                           name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
                           return name;
                         });

}  // namespace
}  // namespace test
