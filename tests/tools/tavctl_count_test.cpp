// SPDX-License-Identifier: Apache-2.0
//
// tavctl count: the number, and when there is none.
#include "json_text.h"
#include "program_test.h"

namespace test {
namespace {

using Arguments = std::vector<std::string>;

constexpr char kThreeApps[] = R"({"apps": [
  {"id": "a", "app_featured": 1, "app_type": 2}, {"id": "b", "app_featured": 2, "app_type": 4},
  {"id": "c", "app_featured": 8, "app_type": 4}, {"id": "h", "app_featured": 1, "is_hidden": 1}]})";

class TavctlCount : public ProgramTest {
 protected:
  Result Count(Arguments arguments) const {
    arguments.insert(arguments.begin(), "count");
    return Tavctl(arguments);
  }
};

TEST_F(TavctlCount, CountsTheVisibleApps) {
  MakeDevice(kThreeApps);
  EXPECT_EQ(Count({}), (Result{0, "3\n", ""}));
}

TEST_F(TavctlCount, CountsWhatTheFilterLetsThrough) {
  MakeDevice(kThreeApps);
  EXPECT_EQ(Count({"--type", "4"}).out, "2\n");
  EXPECT_EQ(Count({"--featured", "1"}).out, "1\n");
  EXPECT_EQ(Count({"--featured", "3", "--type", "4"}).out, "2\n");
  EXPECT_EQ(Count({"--featured", "4"}), (Result{0, "0\n", ""}));
}

TEST_F(TavctlCount, CountsNoneOnAnEmptyDevice) {
  MakeDevice(R"({"apps": []})");
  EXPECT_EQ(Count({}), (Result{0, "0\n", ""}));
}

TEST_F(TavctlCount, IsJsonOnDemand) {
  MakeDevice(kThreeApps);
  const Result result = Count({"--json"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(Parse(result.out), Parse(R"({"count": 3})"));
}

TEST_F(TavctlCount, IsRefusedForAFilterThatIsNotValid) {
  MakeDevice(kThreeApps);
  const Result refused{1, "",
                       "tavctl: the filter is not valid, or the call was refused; the platform log "
                       "says why\n"};
  for (const Arguments& filter :
       {Arguments{"--featured", "0"}, Arguments{"--featured", "16"}, Arguments{"--type", "1"},
        Arguments{"--type", "128"}, Arguments{"--type", "256"}}) {
    EXPECT_EQ(Count(filter), refused) << testing::PrintToString(filter);
  }
}

TEST_F(TavctlCount, IsRefusedDuringAFactoryReset) {
  MakeDevice(R"({"settings": {"db/tav/factory_reset": 1}, "apps": [{"id": "a"}]})");
  EXPECT_EQ(Count({}).status, 1);
  EXPECT_EQ(Count({}).out, "");
}

TEST_F(TavctlCount, TellsABusyDatabaseFromOtherFailures) {
  MakeDevice(kThreeApps);
  const ExclusiveTransaction busy(DatabaseFile());
  EXPECT_EQ(Count({}), (Result{3, "", "tavctl: the database stayed busy\n"}));
}

}  // namespace
}  // namespace test
