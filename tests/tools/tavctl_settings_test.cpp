// SPDX-License-Identifier: Apache-2.0
//
// tavctl settings, watch and set-setting, each in a device of the test's own.
#include <gmock/gmock.h>

#include <csignal>
#include <string>
#include <vector>

#include "program_test.h"

namespace test {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

constexpr char kSetDevice[] = R"({
  "apps": [{"id": "clock", "title": "Clock"}],
  "settings": {"db/comss/appkey": "key \"1\"", "db/comss/kestranaversion": "5.0",
               "db/tav/app_sync_status": -3, "db/tav/factory_reset": 0, "memory/tav/appsync": 1,
               "memory/tav/app_install": 7, "db/other/number": 4, "db/other/text": "four"}})";

class TavctlSettings : public ProgramTest {
 protected:
  TavctlSettings() { MakeDevice(kSetDevice); }

  // Runs a script: `watching ARGUMENTS` starts tavctl watch in the background, its
  // output in the file changes, and returns when the watch has begun; `shown TEXT` returns when
  // the file has it.
  Result Script(const std::string& script) const {
    return Shell(
        "set -e; cd \"$1\"; mkfifo begun\n"
        "watching() { tavctl watch \"$@\" >changes 2>begun & watcher=$!; read -r line <begun; "
        "[ \"$line\" = 'tavctl: watching' ]; }\n"
        "shown() { until grep -q \"$1\" changes; do sleep 0.02; done; }\n" +
            script,
        {Directory()});
  }
};

TEST_F(TavctlSettings, ShowsEveryPublishedSettingWithItsTypeAndValue) {
  const Result result = Tavctl({"settings"});
  EXPECT_EQ(result, (Result{0,
                            "KEY                        TYPE    VALUE\n"
                            "db/comss/appkey            string  key \"1\"\n"
                            "db/comss/kestranaversion   string  5.0\n"
                            "db/tav/app_sync_status     int     -3\n"
                            "db/tav/factory_reset       int     0\n"
                            "memory/tav/appsync         int     1\n"
                            "db/homedeck/reset/tavcore  int     (unset)\n"
                            "memory/tav/boot_status     int     (unset)\n"
                            "memory/tav/app_install     string  (unset)\n"
                            "memory/tav/app_change      int     (unset)\n",
                            ""}));
}

TEST_F(TavctlSettings, ShowsThemAsJsonWithNullForWhatIsMissingOrOfAnotherType) {
  const Result result = Tavctl({"settings", "--json"});
  EXPECT_EQ(result.status, 0) << result;
  EXPECT_THAT(result.out, HasSubstr("{\n"
                                    "    \"key\" : \"db/comss/appkey\",\n"
                                    "    \"type\" : \"string\",\n"
                                    "    \"value\" : \"key \\\"1\\\"\"\n"
                                    "  }"));
  EXPECT_THAT(result.out, HasSubstr("\"key\" : \"db/tav/app_sync_status\",\n"
                                    "    \"type\" : \"int\",\n"
                                    "    \"value\" : -3\n"));
  EXPECT_THAT(result.out, HasSubstr("\"key\" : \"memory/tav/app_install\",\n"
                                    "    \"type\" : \"string\",\n"
                                    "    \"value\" : null\n"));
}

TEST_F(TavctlSettings, SetsAPublishedSettingInTheTypeThatTheServiceGivesIt) {
  const Result result = Script(
      "tavctl set-setting memory/tav/app_install org.example.new; tavctl set-setting memory/tav/appsync "
      "-- -12; tavctl set-setting db/comss/appkey 15; tavctl settings | grep -E 'install|appsync|appkey'");
  EXPECT_EQ(result, (Result{0,
                            "db/comss/appkey            string  15\n"
                            "memory/tav/appsync         int     -12\n"
                            "memory/tav/app_install     string  org.example.new\n",
                            ""}));
}

TEST_F(TavctlSettings, SetsAnyOtherSettingInTheTypeThatItHasOrIsGiven) {
  const Result result = Script(
      "tavctl set-setting db/other/number 5; tavctl set-setting db/other/text 5; "
      "tavctl set-setting db/other/new --type int 5; tavctl set-setting db/other/newer --type string 5; "
      "tavctl set-setting db/tav/factory_reset --type string 5; "
      "cd device/vconf/db; cat other/number other/text other/new other/newer tav/factory_reset");
  EXPECT_EQ(result, (Result{0, "int\n5\nstring\n5\nint\n5\nstring\n5\nstring\n5\n", ""}));
}

TEST_F(TavctlSettings, RefusesANewSettingOfNoType) {
  EXPECT_EQ(Tavctl({"set-setting", "db/other/new", "5"}),
            (Result{1, "",
                    "tavctl: there is no setting \"db/other/new\"; to make it, say what it holds "
                    "with --type\n"}));
}

TEST_F(TavctlSettings, RefusesAValueThatIsNoIntForOneThatHoldsAnInt) {
  for (const char* value : {"five", "", "5x", " 5", "2147483648", "0x5"}) {
    EXPECT_EQ(Tavctl({"set-setting", "db/other/number", value}),
              (Result{2, "", std::string("tavctl: \"") + value + "\" is no int\n"}));
  }
  EXPECT_EQ(ReadFile(Device() / "vconf/db/other/number"), "int\n4\n");
}

TEST_F(TavctlSettings, RefusesATypeThatSettingsDoNotHave) {
  const Result result = Tavctl({"set-setting", "db/other/new", "--type", "double", "5"});
  EXPECT_EQ(result.status, 2) << result;
  EXPECT_THAT(result.err, HasSubstr("--type"));
}

TEST_F(TavctlSettings, RefusesAKeyThatNoSettingCanHave) {
  const Result result = Tavctl({"set-setting", "../escape", "--type", "int", "5"});
  EXPECT_EQ(result.status, 1) << result;
  EXPECT_THAT(result.err, HasSubstr("tavctl: the setting \"../escape\" was not set"));
}

TEST_F(TavctlSettings, SetsNothingOnADevice) {
  const Result result = Shell("tavctl_of_a_device set-setting db/other/number 5", {});
  EXPECT_EQ(result, (Result{1, "", "tavctl: the settings of a device are not set from here\n"}));
  EXPECT_EQ(ReadFile(Device() / "vconf/db/other/number"), "int\n4\n");
}

constexpr char kTime[] =
    "[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{6}[+-][0-9:]{5}";

TEST_F(TavctlSettings, WatchShowsALineForEachChangeThatAnotherProcessMakes) {
  const Result result = Script(
      "watching --count 3 memory/tav/app_install memory/tav/appsync; "
      "tavctl set-setting memory/tav/app_install org.example.new; shown new; "
      "tavctl set-setting memory/tav/appsync 2; shown 'appsync  2'; "
      "tavctl set-setting memory/tav/appsync 2; wait $watcher; cat changes");
  EXPECT_EQ(result.status, 0) << result;
  EXPECT_THAT(
      result.out,
      MatchesRegex(std::string(kTime) + "  memory/tav/app_install  org.example.new\n" + kTime +
                   "  memory/tav/appsync  2\n" + kTime + "  memory/tav/appsync  2\n"));
}

TEST_F(TavctlSettings, WatchShowsTheLastOfManyChanges) {
  const Result result = Script(
      "watching --json; i=0; while [ $i -lt 50 ]; do i=$((i+1)); "
      "tavctl set-setting db/tav/factory_reset $((i+10)); done; "
      "shown '\"value\":60}'; "
      "kill -INT $watcher; wait $watcher");
  EXPECT_EQ(result, (Result{0, "", ""}));
}

TEST_F(TavctlSettings, WatchShowsAnObjectALineAsJson) {
  const Result result = Script(
      "watching --json --count 2 memory/tav/app_install db/other/number; "
      "tavctl set-setting memory/tav/app_install 'a \"b\"'; shown app_install; "
      "tavctl set-setting db/other/number 9; wait $watcher; cat changes");
  EXPECT_EQ(result.status, 0) << result;
  EXPECT_THAT(
      result.out,
      MatchesRegex(
          std::string("\\{\"key\":\"memory/tav/app_install\",\"time\":\"") + kTime +
          "\",\"value\":\"a \\\\\"b\\\\\"\"\\}\n\\{\"key\":\"db/other/number\",\"time\":\"" +
          kTime + "\",\"value\":9\\}\n"));
}

TEST_F(TavctlSettings, WatchTakesAKeyThatIsNamedTwiceOnce) {
  const Result result = Script(
      "watching memory/tav/appsync db/other/text memory/tav/appsync db/other/text; "
      "tavctl set-setting memory/tav/appsync 2; tavctl set-setting db/other/text last; "
      "shown last; kill -TERM $watcher; wait $watcher; "
      "sed 's/[^ ]*  //' changes");
  EXPECT_EQ(result, (Result{0, "memory/tav/appsync  2\ndb/other/text  last\n", ""}));
}

TEST_F(TavctlSettings, WatchEndsWithStatus0OnCtrlC) {
  const Result result = Script("watching; kill -INT $watcher; wait $watcher; echo \"status $?\"");
  EXPECT_EQ(result, (Result{0, "status 0\n", ""}));
}

TEST_F(TavctlSettings, WatchEndsQuietlyWhenItsReaderHasLeft) {
  const Result result = Script(
      "mkfifo out; (set +e; tavctl watch >out 2>err; echo $? >status) & "
      "exec 3<out; until grep -q watching err; do sleep 0.02; done; exec 3<&-; "
      "tavctl set-setting memory/tav/appsync 2; wait; cat status err");
  EXPECT_EQ(result.out, std::to_string(128 + SIGPIPE) + "\ntavctl: watching\n") << result;
}

TEST_F(TavctlSettings, WatchRefusesAKeyThatNoSettingCanHave) {
  const Result result = Tavctl({"watch", "memory//tav"});
  EXPECT_EQ(result.status, 1) << result;
  EXPECT_THAT(result.err, HasSubstr("tavctl: the setting \"memory//tav\" cannot be watched"));
}

TEST_F(TavctlSettings, WatchRefusesACountThatIsNone) {
  for (const char* count : {"0", "-1", "x", "1.5"}) {
    const Result result = Tavctl({"watch", "--count", count});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("--count"));
  }
}

}  // namespace
}  // namespace test
