// SPDX-License-Identifier: Apache-2.0
//
// The subcommands of tavctl that change an app or ask whether it is being changed, each in a
// sandbox with the service.
#include <gmock/gmock.h>

#include "program_test.h"

namespace test {
namespace {

using testing::HasSubstr;

constexpr char kChangedDevice[] = R"({"apps": [
  {"id": "clock", "title": "Clock", "reserved_tinyint_11": 1},
  {"id": "busy", "reserved_tinyint_10": 1},
  {"id": "needy", "reserved_string_10": "clock,busy", "reserved_tinyint_11": 1}]})";

class TavctlChange : public ProgramTest {
 protected:
  // Runs a shell script in a sandbox.
  Result InSandbox(const std::string& script, std::vector<std::string> options = {}) {
    std::vector<std::string> arguments = {"--seed", Write("seed.json", kChangedDevice)};
    arguments.insert(arguments.end(), options.begin(), options.end());
    for (const std::string& word :
         {std::string("--"), std::string("/bin/sh"), std::string("-c"), script}) {
      arguments.push_back(word);
    }
    return Sandbox(arguments);
  }
};

TEST_F(TavctlChange, LocksAndUnlocksAnApp) {
  const Result result = InSandbox(
      "tavctl lock clock && tavctl info clock | grep is_lock; tavctl unlock clock && tavctl info clock | grep "
      "is_lock");
  EXPECT_EQ(result.status, 0) << result;
  EXPECT_THAT(result.out, testing::MatchesRegex("is_lock +1\nis_lock +0\n"));
}

TEST_F(TavctlChange, IsSeenByAWatcherInAnotherProcess) {
  const Result result = InSandbox(
      "cd \"$TAV_DEVICE_ROOT\"; mkfifo begun; tavctl watch --count 1 memory/tav/app_change 2>begun & "
      "read -r line <begun; tavctl lock clock; wait");
  EXPECT_EQ(result.status, 0) << result;
  EXPECT_THAT(result.out, testing::MatchesRegex("[^ ]+  memory/tav/app_change  1\n"));
}

TEST_F(TavctlChange, RatesAnApp) {
  const Result result =
      InSandbox("tavctl rate clock 4 && tavctl show-property clock --property rating");
  EXPECT_EQ(result.status, 0) << result;
  EXPECT_THAT(result.out, HasSubstr("4"));
}

TEST_F(TavctlChange, CountsAUseAndMarksAnUpdate) {
  const Result result = InSandbox(
      "tavctl use clock && tavctl use clock && tavctl mark-updated clock && tavctl info clock --json");
  EXPECT_EQ(result.status, 0) << result;
  EXPECT_THAT(result.out, HasSubstr("\"use_count\" : 2"));
}

TEST_F(TavctlChange, SetsAndShowsTheTicker) {
  const Result result = InSandbox("tavctl ticker && tavctl ticker 3 && tavctl ticker");
  EXPECT_EQ(result.status, 0) << result;
  EXPECT_EQ(result.out, "0\n3\n");
}

TEST_F(TavctlChange, TellsWhetherTheServiceIsAtWorkOnAnApp) {
  const Result result = InSandbox(
      "for app in clock busy needy none; do tavctl installing $app; echo $?; done; "
      "for app in clock busy none; do tavctl updating $app; echo $?; done");
  EXPECT_EQ(result.status, 0) << result;
  EXPECT_EQ(result.out, "no\n1\nyes\n0\nyes\n0\nno\n1\nno\n1\nyes\n0\nno\n1\n");
}

TEST_F(TavctlChange, FailsWithItsReasonForAnAppThatTheServiceDoesNotKnow) {
  const Result result = InSandbox("tavctl lock none");
  EXPECT_EQ(result.status, 1) << result;
  EXPECT_EQ(result.err,
            "tavctl: the service did not change \"none\", or the call was refused; the platform "
            "log says why\n");
}

TEST_F(TavctlChange, FailsWhenTheServiceDoes) {
  const Result result = InSandbox("tavctl ticker 1", {"--service-option=--fault=*=error"});
  EXPECT_EQ(result.status, 1) << result;
  EXPECT_THAT(result.err, HasSubstr("the service did not answer"));
}

TEST_F(TavctlChange, CallsWrongArgumentsWrongUsage) {
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{"lock"},
                                             {"rate", "clock"},
                                             {"rate", "clock", "many"},
                                             {"ticker", "fast"},
                                             {"installing"}}) {
    EXPECT_EQ(Tavctl(arguments).status, 2) << arguments[0];
  }
}

}  // namespace
}  // namespace test
