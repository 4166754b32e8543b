// SPDX-License-Identifier: Apache-2.0
//
// tavctl's command line: help, version, wrong usage, and output that nobody takes.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>

#include "program_test.h"

namespace test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

using Arguments = std::vector<std::string>;

class TavctlUsage : public ProgramTest {
 protected:
  void MakeOneApp() const { MakeDevice(R"({"apps": [{"id": "a"}]})"); }
};

const Result kUnwritable{1, "", "tavctl: the output cannot be written\n"};

TEST_F(TavctlUsage, IsWrongWithoutAKnownCommandAndItsArguments) {
  for (const Arguments& arguments :
       {Arguments{},
        Arguments{"nonsense"},
        Arguments{"--nonsense"},
        Arguments{"info"},
        Arguments{"info", "a", "b"},
        Arguments{"info", "a", "--nonsense"},
        Arguments{"info", "a", "--by"},
        Arguments{"info", "a", "--by", "title"},
        Arguments{"info", "--json"},
        Arguments{"info", "a", "--json=maybe"},
        Arguments{"list", "a"},
        Arguments{"list", "--nonsense"},
        Arguments{"list", "--json", "--csv"},
        Arguments{"list", "--view", "upwards"},
        Arguments{"list", "--view", "6"},
        Arguments{"list", "--view", "-1"},
        Arguments{"list", "--offset", "-1"},
        Arguments{"list", "--limit", "-1"},
        Arguments{"list", "--limit", "99999999999"},
        Arguments{"list", "--type", "both"},
        Arguments{"list", "--recent"},
        Arguments{"list", "--recent", "-1"},
        Arguments{"list", "--key"},
        Arguments{"count", "a"},
        Arguments{"count", "--csv"},
        Arguments{"count", "--featured"},
        Arguments{"show-property"},
        Arguments{"show-property", "a", "b"},
        Arguments{"show-property", "a", "--property"},
        Arguments{"show-property", "a", "--property", "title"},
        Arguments{"show-property", "a", "--property", "isp", "usb"},
        Arguments{"show-property", "--property", "isp"},
        Arguments{"show-property", "--property", "package-name", "--run-title", "a"},
        Arguments{"show-property", "--property", "installed", "--native-id", "a"},
        Arguments{"show-property", "--property", "run-title", "--run-title", "a"},
        Arguments{"show-property", "--property", "run-title", "--ait", "1"}}) {
    const Result result = Tavctl(arguments);
    EXPECT_EQ(result.status, 2) << testing::PrintToString(arguments) << result;
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err, "");
  }
}

TEST_F(TavctlUsage, IsExplainedWithExamplesAndExitStatuses) {
  const Result result = Tavctl({"--help"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out,
              AllOf(HasSubstr("Examples:"), HasSubstr("info"),
                    HasSubstr("Exit status:\n  0  done\n"), HasSubstr("\n  3  the database")));
  EXPECT_EQ(result.err, "");
}

TEST_F(TavctlUsage, RefusesOptionsThatSayNothingAboutTheChosenList) {
  MakeOneApp();
  const Arguments filtered = {"--featured=1", "--type=2", "--view=title", "--offset=0",
                              "--multi-screen"};
  Arguments with_limit = filtered;
  with_limit.emplace_back("--limit=1");
  const std::vector<std::pair<std::string, Arguments>> refused = {
      {"--all", with_limit},
      {"--recent=1", with_limit},
      {"--key=is_lock", filtered},
      {"--all", {"--recent=1", "--key=is_lock"}},
      {"--recent=1", {"--key=is_lock"}}};
  for (const auto& [list, others] : refused) {
    EXPECT_EQ(Tavctl({"list", list}).status, 0) << list;
    for (const std::string& other : others) {
      EXPECT_EQ(Tavctl({"list", list, other}).status, 2) << list << " " << other;
    }
  }
}

TEST_F(TavctlUsage, IsExplainedForEachCommand) {
  const std::vector<std::pair<std::string, Arguments>> told = {
      {"info", {"--by", "run-title", "--json", "Empty texts are left out", "tavctl info"}},
      {"list", {"--recent", "title-desc", "--csv", "RFC 4180", "CR LF", "tavctl list"}},
      {"count", {"--featured", "--type", "--json", "tavctl count"}},
      {"show-property",
       {"--property", "tav_get_pkgname_by_nativeid", "--native-id", "--ait", "emanual",
        "tavctl show-property"}}};
  for (const auto& [command, texts] : told) {
    const Result result = Tavctl({command, "--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, HasSubstr("Examples:"));
    for (const std::string& text : texts) EXPECT_THAT(result.out, HasSubstr(text));
  }
}

TEST_F(TavctlUsage, TellsItsVersion) {
  const Result result = Tavctl({"--version"});
  EXPECT_EQ(result, (Result{0, "tavctl " TAV_VERSION "\n", ""}));
}

TEST_F(TavctlUsage, FailsOnAFullDisk) {
  MakeOneApp();
  const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
  EXPECT_EQ(Tavctl({"info", "a"}, full), kUnwritable);
  EXPECT_EQ(Tavctl({"info", "a", "--json"}, full), kUnwritable);
  EXPECT_EQ(Tavctl({"list"}, full), kUnwritable);
  EXPECT_EQ(Tavctl({"list", "--csv"}, full), kUnwritable);
  EXPECT_EQ(Tavctl({"count"}, full), kUnwritable);
  EXPECT_EQ(Tavctl({"show-property", "a"}, full), kUnwritable);
  EXPECT_EQ(Tavctl({"--help"}, full), kUnwritable);
  close(full);
}

// As `tavctl list | head` may.
TEST_F(TavctlUsage, EndsQuietlyBySigpipeWhenTheReaderIsGone) {
  MakeOneApp();
  const Result quiet{128 + SIGPIPE, "", ""};
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
  close(ends[0]);
  EXPECT_EQ(Tavctl({"info", "a"}, ends[1]), quiet);
  EXPECT_EQ(Tavctl({"list"}, ends[1]), quiet);
  close(ends[1]);
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
  close(ends[0]);
  EXPECT_EQ(Tavctl({"list", "--csv"}, ends[1]), quiet);
  close(ends[1]);
}

TEST_F(TavctlUsage, MakesAChangeWhoseReportIsNotRead) {
  MakeOneApp();
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
  close(ends[0]);
  EXPECT_EQ(Tavctl({"export", "xml"}, ends[1]), (Result{128 + SIGPIPE, "", ""}));
  close(ends[1]);
  EXPECT_THAT(ReadFile(Device() / "data/tavcore/common/apps_info.xml"),
              HasSubstr("<widget id=\"a\""));
}

TEST_F(TavctlUsage, FailsWithAClosedStandardOutput) {
  MakeOneApp();
  EXPECT_EQ(Shell(R"(exec "$1" info a >&-)", {TAVCTL}), kUnwritable);
}

}  // namespace
}  // namespace test
