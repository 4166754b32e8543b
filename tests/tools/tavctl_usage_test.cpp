// SPDX-License-Identifier: Apache-2.0
//
// tavctl's command line: help, version, wrong usage, and output that nobody takes.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

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
       {Arguments{}, Arguments{"nonsense"}, Arguments{"--nonsense"}, Arguments{"info"},
        Arguments{"info", "a", "b"}, Arguments{"info", "a", "--nonsense"},
        Arguments{"info", "a", "--by"}, Arguments{"info", "a", "--by", "title"},
        Arguments{"info", "--json"}, Arguments{"info", "a", "--json=maybe"}}) {
    const Result result = Tavctl(arguments);
    EXPECT_EQ(result.status, 2) << testing::PrintToString(arguments) << result;
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err, "");
  }
}

TEST_F(TavctlUsage, IsExplainedWithExamplesAndExitStatuses) {
  const Result result = Tavctl({"--help"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, AllOf(HasSubstr("Examples:"), HasSubstr("info"),
                                HasSubstr("Exit status: 0 done;"), HasSubstr("3 the database")));
  EXPECT_EQ(result.err, "");
}

TEST_F(TavctlUsage, IsExplainedForEachCommand) {
  const Result result = Tavctl({"info", "--help"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, AllOf(HasSubstr("--by"), HasSubstr("run-title"), HasSubstr("--json"),
                                HasSubstr("Examples:"), HasSubstr("Empty texts are left out")));
  EXPECT_EQ(result.err, "");
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
  EXPECT_EQ(Tavctl({"--help"}, full), kUnwritable);
  close(full);
}

TEST_F(TavctlUsage, FailsWhenTheReaderIsGone) {
  MakeOneApp();
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
  close(ends[0]);
  EXPECT_EQ(Tavctl({"info", "a"}, ends[1]), kUnwritable);
  close(ends[1]);
}

TEST_F(TavctlUsage, FailsWithAClosedStandardOutput) {
  MakeOneApp();
  EXPECT_EQ(Shell(R"(exec "$1" info a >&-)", {TAVCTL}), kUnwritable);
}

}  // namespace
}  // namespace test
