// SPDX-License-Identifier: Apache-2.0
//
// tavctl list: which apps it lists, in which order, and when it lists none.
#include <json/value.h>

#include "json_text.h"
#include "program_test.h"

namespace test {
namespace {

using Texts = std::vector<std::string>;

constexpr char kFiveApps[] = R"({"apps": [
  {"id": "anchor", "title": "delta", "app_index": 20, "use_count": 5, "is_multi_screen2": 1,
   "launch_date": "2026-01-02", "install_date": "2026-01-04", "app_featured": 1, "app_type": 2,
   "is_usb_app": 1, "hbbTV": "1"},
  {"id": "birch", "title": "Alpha", "app_index": 10, "install_date": "2026-01-01",
   "app_featured": 2, "app_type": 4},
  {"id": "cedar", "title": "charlie", "app_index": 300, "use_count": 9,
   "launch_date": "2026-01-01", "install_date": "2026-01-02", "app_featured": 4, "app_type": 2},
  {"id": "dune", "title": "Bravo", "app_index": 301, "use_count": 1, "is_multi_screen2": 2,
   "launch_date": "2026-01-03", "install_date": "2026-01-03", "app_featured": 8, "app_type": 4},
  {"id": "elm", "title": "echo", "app_index": 5, "use_count": 7, "is_hidden": 1,
   "launch_date": "2026-01-09", "install_date": "2026-01-09", "app_featured": 1, "app_type": 2,
   "is_usb_app": 1}]})";

constexpr char kNoSuchPage[] =
    "tavctl: the filter is not valid, or the offset is past the last app, or the call was refused; "
    "the platform log says why\n";

class TavctlList : public ProgramTest {
 protected:
  Result List(Texts arguments) const {
    arguments.insert(arguments.begin(), "list");
    return Tavctl(arguments);
  }

  Json::Value JsonOf(Texts arguments) const {
    arguments.emplace_back("--json");
    const Result result = List(arguments);
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.err, "");
    return Parse(result.out);
  }

  Texts Ids(const Texts& arguments) const {
    Texts ids;
    for (const Json::Value& app : JsonOf(arguments)) ids.push_back(app["app_id"].asString());
    return ids;
  }
};

TEST_F(TavctlList, HoldsTheVisibleAppsInTheCataloguesOrder) {
  MakeDevice(kFiveApps);
  EXPECT_EQ(Ids({}), (Texts{"birch", "anchor", "cedar", "dune"}));
}

TEST_F(TavctlList, FollowsEachViewByItsNameAndItsNumber) {
  MakeDevice(kFiveApps);
  const std::vector<std::pair<std::string, Texts>> orders = {
      {"most-used", {"cedar", "anchor", "dune", "birch"}},
      {"catalogue", {"birch", "anchor", "cedar", "dune"}},
      {"last-downloaded", {"dune", "cedar", "birch", "anchor"}},
      {"title", {"birch", "dune", "cedar", "anchor"}},
      {"title-desc", {"anchor", "cedar", "dune", "birch"}},
      {"recent", {"dune", "anchor", "cedar", "birch"}}};
  for (std::size_t number = 0; number < orders.size(); ++number) {
    const auto& [name, ids] = orders[number];
    EXPECT_EQ(Ids({"--view", name}), ids) << name;
    EXPECT_EQ(Ids({"--view", std::to_string(number)}), ids) << number;
  }
}

TEST_F(TavctlList, HoldsWhatTheFilterLetsThrough) {
  MakeDevice(kFiveApps);
  EXPECT_EQ(Ids({"--featured", "1"}), (Texts{"anchor"}));
  EXPECT_EQ(Ids({"--featured", "6"}), (Texts{"birch", "cedar"}));
  EXPECT_EQ(Ids({"--featured", "3"}), (Texts{"birch", "anchor", "dune"}));
  EXPECT_EQ(Ids({"--type", "2"}), (Texts{"anchor", "cedar"}));
  EXPECT_EQ(Ids({"--type", "6"}), (Texts{"birch", "anchor", "cedar", "dune"}));
  EXPECT_EQ(Ids({"--featured", "12", "--type", "4"}), (Texts{"dune"}));
  EXPECT_EQ(Ids({"--featured", "4", "--type", "4"}), Texts());
}

TEST_F(TavctlList, IsCutIntoPages) {
  MakeDevice(kFiveApps);
  EXPECT_EQ(Ids({"--offset", "1", "--limit", "2"}), (Texts{"anchor", "cedar"}));
  EXPECT_EQ(Ids({"--offset", "2"}), (Texts{"cedar", "dune"}));
  EXPECT_EQ(Ids({"--limit", "2"}), (Texts{"birch", "anchor"}));
  EXPECT_EQ(Ids({"--limit", "0"}).size(), 4u);
  EXPECT_EQ(Ids({"--offset", "3", "--limit", "9"}), (Texts{"dune"}));
  EXPECT_EQ(Ids({"--view", "title", "--offset", "1", "--limit", "1"}), (Texts{"dune"}));
}

TEST_F(TavctlList, PutsAPageOfTheLastDownloadedInOrderAfterItsCut) {
  MakeDevice(kFiveApps);
  EXPECT_EQ(Ids({"--view", "last-downloaded", "--offset", "1", "--limit", "2"}),
            (Texts{"cedar", "anchor"}));
}

TEST_F(TavctlList, IsRefusedForAnOffsetPastTheLastApp) {
  MakeDevice(kFiveApps);
  EXPECT_EQ(List({"--offset", "4"}), (Result{1, "", kNoSuchPage}));
  EXPECT_EQ(List({"--offset", "4", "--multi-screen"}), (Result{1, "", kNoSuchPage}));
  EXPECT_EQ(List({"--offset", "2147483647", "--json"}), (Result{1, "", kNoSuchPage}));
}

TEST_F(TavctlList, IsRefusedForAFilterThatIsNotValid) {
  MakeDevice(kFiveApps);
  EXPECT_EQ(List({"--featured", "0"}), (Result{1, "", kNoSuchPage}));
  EXPECT_EQ(List({"--type", "1"}), (Result{1, "", kNoSuchPage}));
}

TEST_F(TavctlList, HoldsHiddenAppsAsWellOnDemand) {
  MakeDevice(kFiveApps);
  EXPECT_EQ(Ids({"--all"}), (Texts{"dune", "cedar", "elm", "birch", "anchor"}));
}

TEST_F(TavctlList, HoldsMultiScreenRecordsOnDemand) {
  MakeDevice(kFiveApps);
  EXPECT_EQ(JsonOf({"--multi-screen", "--limit", "3", "--offset", "1"}),
            Parse(R"([{"app_id": "anchor", "is_multi_screen2": 1},
                      {"app_id": "cedar", "is_multi_screen2": 0},
                      {"app_id": "dune", "is_multi_screen2": 2}])"));
  EXPECT_EQ(Ids({"--multi-screen", "--view", "last-downloaded"}),
            (Texts{"anchor", "dune", "cedar", "birch"}));
  EXPECT_EQ(Ids({"--multi-screen", "--type", "4"}), (Texts{"birch", "dune"}));
}

TEST_F(TavctlList, HoldsTheAppsThatWereLaunchedLast) {
  MakeDevice(kFiveApps);
  EXPECT_EQ(Ids({"--recent", "2"}), (Texts{"dune", "anchor"}));
  EXPECT_EQ(Ids({"--recent", "0"}), (Texts{"dune", "anchor", "cedar"}));
  EXPECT_EQ(Ids({"--recent", "50"}), (Texts{"dune", "anchor", "cedar"}));
}

TEST_F(TavctlList, HoldsTheAppsWhoseColumnIsOne) {
  MakeDevice(kFiveApps);
  EXPECT_EQ(Ids({"--key", "is_usb_app"}), (Texts{"anchor", "elm"}));
  EXPECT_EQ(Ids({"--key", "is_usb_app", "--limit", "1"}), (Texts{"anchor"}));
  EXPECT_EQ(Ids({"--key", "is_multi_screen2"}), (Texts{"anchor"}));
  EXPECT_EQ(Ids({"--key", "hbbTV"}), (Texts{"anchor"}));
  EXPECT_EQ(Ids({"--key", "rating"}), Texts());
}

TEST_F(TavctlList, KnowsEveryColumnOfTheTable) {
  MakeDevice(R"({"apps": []})");
  const auto columns = Query(DatabaseFile(), "select name from pragma_table_info('widgetinfo')");
  EXPECT_EQ(columns.size(), 79u);
  for (const auto& row : columns) {
    const std::string name = row[0].substr(std::string("text:").size());
    EXPECT_EQ(List({"--key", name}).status, 0) << name;
  }
}

// No device: a name that were let through to the library would end as a refusal.
TEST_F(TavctlList, LetsNothingButTheExactNameOfAColumnThrough) {
  EXPECT_EQ(List({"--key", "is_hidden"}).status, 1);
  for (const char* name : {"1=1; drop",
                           "1=1; drop table widgetinfo; --",
                           "id) or (1",
                           "IS_HIDDEN",
                           "Is_Hidden",
                           "HBBTV",
                           "hbbtv",
                           " is_hidden",
                           "is_hidden ",
                           "is_hidden--",
                           "\"is_hidden\"",
                           "[is_hidden]",
                           "widgetinfo.is_hidden",
                           "is_hidden\n",
                           "rowid",
                           "_rowid_",
                           "1",
                           "?",
                           "*",
                           ""}) {
    const Result result = List({"--key=" + std::string(name)});
    EXPECT_EQ(result.status, 2) << "\"" << name << "\" " << result;
    EXPECT_EQ(result.out, "");
  }
}

TEST_F(TavctlList, WritesOutWhatCouldSteerATerminalInANameThatIsNoColumn) {
  EXPECT_EQ(List({"--key", "a\x1b[2J"}),
            (Result{2, "",
                    "--key: the apps table has no column \"a\\x1b[2J\"\nRun with --help for more "
                    "information.\n"}));
}

TEST_F(TavctlList, IsRefusedDuringAFactoryReset) {
  MakeDevice(R"({"settings": {"db/tav/factory_reset": 1}, "apps": [{"id": "a"}]})");
  for (const Texts& arguments :
       {Texts{}, Texts{"--multi-screen"}, Texts{"--all"}, Texts{"--recent", "0"},
        Texts{"--key", "is_lock"}, Texts{"--csv"}, Texts{"--json"}}) {
    const Result result = List(arguments);
    EXPECT_EQ(result.status, 1) << testing::PrintToString(arguments);
    EXPECT_EQ(result.out, "");
  }
}

TEST_F(TavctlList, FailsWithoutADatabase) {
  MakeDevice(kFiveApps);
  std::filesystem::remove(DatabaseFile());
  EXPECT_EQ(List({}).status, 1);
}

TEST_F(TavctlList, TellsABusyDatabaseFromOtherFailures) {
  MakeDevice(kFiveApps);
  const ExclusiveTransaction busy(DatabaseFile());
  for (const Texts& arguments : {Texts{}, Texts{"--multi-screen"}, Texts{"--all"},
                                 Texts{"--recent", "0"}, Texts{"--key", "is_lock"}}) {
    EXPECT_EQ(List(arguments), (Result{3, "", "tavctl: the database stayed busy\n"}))
        << testing::PrintToString(arguments);
  }
}

}  // namespace
}  // namespace test
