// SPDX-License-Identifier: Apache-2.0
//
// The list of inner records: its statements, its order, and the members it reads.
#include <gtest/gtest.h>

#include "inner_members.h"
#include "support/device.h"
#include "support/sqlite_recorder.h"
#include "tav_db_api/tav_db_client_inner.h"

namespace {

using test::App;
using test::CallsToSqlite;
using test::kSelectApps;
using test::MembersOf;
using Apps = std::vector<_APPS_INNER_INFO_T>;
using Calls = test::SqliteCalls;
using Ids = std::vector<std::string>;

constexpr char kVisible[] =
    " where install_state = ? and is_app_available = ? and is_need_reset = ? ";
constexpr char kShown[] = " and is_hidden = ? ";
constexpr char kByIndex[] = " order by app_index asc ";

Ids IdsOf(const Apps& apps) {
  Ids ids;
  for (const auto& app : apps) ids.push_back(app.strAppID);
  return ids;
}

class InnerList : public ::testing::Test {
 protected:
  Ids Listed(const std::string& featured, const std::string& view_mode, bool all = false) {
    Apps apps;
    EXPECT_EQ(GetTAVAppList(featured, view_mode, all, apps), 0);
    return IdsOf(apps);
  }
  // What reaches SQLite for a list, apart from its opening.
  Calls Sent(const std::string& featured, const std::string& view_mode, bool all = false) {
    Apps apps;
    GetTAVAppList("1", "0", true, apps);
    return CallsToSqlite([&] { GetTAVAppList(featured, view_mode, all, apps); });
  }
  static Calls Statement(const std::string& condition, const std::vector<int>& values) {
    Calls calls = {kSelectApps + condition};
    int parameter = 0;
    for (const int value : values) {
      calls.push_back(std::to_string(++parameter) + " " + std::to_string(value));
    }
    calls.emplace_back("finalize");
    return calls;
  }
  static Calls Filtered(const std::string& filter, const std::vector<int>& featured,
                        const std::string& order = kByIndex) {
    std::vector<int> values = {3, 1, 0, 0};
    values.insert(values.end(), featured.begin(), featured.end());
    return Statement(std::string(kVisible) + kShown + filter + order, values);
  }
  void ExpectRefusal(const std::string& featured) {
    Apps apps(1);
    const Calls calls =
        CallsToSqlite([&] { EXPECT_EQ(GetTAVAppList(featured, "1", false, apps), -1); });
    EXPECT_EQ(calls, Calls{}) << featured;
    EXPECT_EQ(apps.size(), 1U);
    EXPECT_EQ(log.Count("in param featured error"), 1) << featured;
    log.Forget();
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(InnerList, OfAllAppsHasNeitherFilterNorOrderWhateverElseIsAskedFor) {
  const Calls expected = Statement(kVisible, {3, 1, 0});
  EXPECT_EQ(Sent("1", "0", true), expected);
  EXPECT_EQ(Sent("0", "4", true), expected);
  EXPECT_EQ(Sent("", "", true), expected);
}

TEST_F(InnerList, IsFilteredByTheBitsOfTheFeaturedNumberInAscendingOrder) {
  EXPECT_EQ(Sent("5", "1"), Filtered(" and app_featured in (? ,? ) ", {1, 4}));
  EXPECT_EQ(Sent("1", "1"), Filtered(" and app_featured in (? ) ", {1}));
  EXPECT_EQ(Sent("2", "1"), Filtered(" and app_featured in (? ) ", {2}));
  EXPECT_EQ(Sent("8", "1"), Filtered(" and app_featured in (? ) ", {8}));
  EXPECT_EQ(Sent("14", "1"), Filtered(" and app_featured in (? ,? ,? ) ", {2, 4, 8}));
  EXPECT_EQ(Sent("15", "1"), Filtered(" and app_featured in (? ,? ,? ,? ) ", {1, 2, 4, 8}));
  EXPECT_EQ(Sent("17", "1"), Filtered(" and app_featured in (? ) ", {1}));
}

TEST_F(InnerList, TakesThreeForOneTwoAndEight) {
  EXPECT_EQ(Sent("3", "1"), Filtered(" and app_featured in (? ,? ,? ) ", {1, 2, 8}));
}

TEST_F(InnerList, IsNotFilteredByTheNumberOfAllBits) {
  EXPECT_EQ(Sent("65535", "1"), Filtered("", {}));
}

TEST_F(InnerList, TakesMinusOneForEveryBit) {
  EXPECT_EQ(Sent("-1", "1"), Filtered(" and app_featured in (? ,? ,? ,? ) ", {1, 2, 4, 8}));
}

TEST_F(InnerList, ReadsTheNumbersFromTheBeginningOfTheTexts) {
  EXPECT_EQ(Sent(" 5 and more", "3rd"),
            Filtered(" and app_featured in (? ,? ) ", {1, 4}, " order by upper(title) asc "));
}

TEST_F(InnerList, TakesBothNumbersForIntsHoweverManyDigitsTheyHave) {
  // Where a long is wider than an int, what is above an int goes.
  const bool is_wide = sizeof(long) > sizeof(int);
  EXPECT_EQ(Sent("4294967301", "4294967299"),  // 2^32 + 5 and 2^32 + 3
            is_wide
                ? Filtered(" and app_featured in (? ,? ) ", {1, 4}, " order by upper(title) asc ")
                : Filtered(" and app_featured in (? ,? ,? ,? ) ", {1, 2, 4, 8}));
  EXPECT_EQ(Sent("99999999999999999999", "99999999999999999999"),
            Filtered(" and app_featured in (? ,? ,? ,? ) ", {1, 2, 4, 8}));
  log.Forget();
  ExpectRefusal("-99999999999999999999");
  if (is_wide) ExpectRefusal("4294967296");
}

TEST_F(InnerList, IsRefusedWithoutAnyOfTheFeaturedBits) {
  for (const char* featured : {"0", "", "none", "16", "65520", "-16"}) ExpectRefusal(featured);
  device.Install(App("a").Featured(1));
  EXPECT_EQ(Listed("1", "1"), Ids{"a"});
}

TEST_F(InnerList, IsOrderedByTheViewMode) {
  const std::pair<const char*, const char*> orders[] = {
      {"0", " order by use_count desc "},
      {"1", kByIndex},
      {"2", kByIndex},
      {"3", " order by upper(title) asc "},
      {"4", " order by upper(title) desc "},
      {"5", kByIndex},
      {"6", kByIndex},
      {"-1", kByIndex},
      {"", " order by use_count desc "},
      {"title", " order by use_count desc "},
  };
  for (const auto& [mode, order] : orders) {
    EXPECT_EQ(Sent("65535", mode), Filtered("", {}, order)) << mode;
  }
}

TEST_F(InnerList, HasTheAppsThatTheFilterLetsThroughInTheirOrder) {
  device.InstallAll({App("one").Featured(1).Index(4).Title("b").UseCount(2),
                     App("two").Featured(2).Index(3).Title("A").UseCount(9),
                     App("four").Featured(4).Index(2).Title("c").UseCount(5),
                     App("eight").Featured(8).Index(1).Title("D").UseCount(7),
                     App("none").Featured(0).Index(0).Title("e").UseCount(1)});
  EXPECT_EQ(Listed("65535", "1"), (Ids{"none", "eight", "four", "two", "one"}));
  EXPECT_EQ(Listed("3", "0"), (Ids{"two", "eight", "one"}));
  EXPECT_EQ(Listed("-1", "3"), (Ids{"two", "one", "four", "eight"}));
  EXPECT_EQ(Listed("5", "4"), (Ids{"four", "one"}));
}

TEST_F(InnerList, HasHiddenAppsOnlyWhenAllAreAskedForThenInTheOrderOfTheDatabase) {
  device.InstallAll({App("z").Featured(1).Index(3), App("hidden").Featured(1).Index(2).Hidden(),
                     App("a").Featured(0).Index(1)});
  EXPECT_EQ(Listed("65535", "1"), (Ids{"a", "z"}));
  EXPECT_EQ(Listed("0", "1", true), (Ids{"z", "hidden", "a"}));
}

TEST_F(InnerList, HasNoAppThatIsNotThereForCallers) {
  device.InstallAll(
      {App("a").InstallState(2), App("b").Unavailable(), App("c").MarkedForReset(), App("d")});
  EXPECT_EQ(Listed("", "", true), Ids{"d"});
}

TEST_F(InnerList, OfNoAppsIsASuccess) {
  EXPECT_EQ(Listed("65535", "1"), Ids{});
  EXPECT_EQ(Listed("65535", "1", true), Ids{});
  EXPECT_TRUE(log.Has("Start, app_featured:[65535], view_mode:[1]"));
  EXPECT_EQ(log.Count("Finish ret[0]"), 2);
}

TEST_F(InnerList, IsAppendedToWhatIsThere) {
  device.InstallAll({App("a"), App("b")});
  Apps apps(1);
  apps.front().strAppID = "before";
  EXPECT_EQ(GetTAVAppList("", "", true, apps), 0);
  EXPECT_EQ(GetTAVAppList("", "", true, apps), 0);
  EXPECT_EQ(IdsOf(apps), (Ids{"before", "a", "b", "a", "b"}));
  EXPECT_EQ(log.Count("set app a"), 2);
  EXPECT_EQ(log.Count("set app b"), 2);
}

TEST_F(InnerList, IsRefusedWithItsReasonInTheOrderOfTheChecks) {
  device.FactoryReset(1).Write("opt/dbspace/pkgreinstall", "").Install(App("a"));
  Apps apps;
  EXPECT_EQ(GetTAVAppList("0", "1", false, apps), -1);
  EXPECT_TRUE(log.HasNotice("FactoryReset is true"));
  EXPECT_FALSE(log.Has("Pkgmgr is recovering"));
  device.FactoryReset(0);
  EXPECT_EQ(GetTAVAppList("0", "1", false, apps), -1);
  EXPECT_TRUE(log.HasError("Pkgmgr is recovering"));
  EXPECT_FALSE(log.Has("in param featured error"));
  EXPECT_TRUE(apps.empty());
  std::filesystem::remove(device.Root() / "opt/dbspace/pkgreinstall");
  EXPECT_EQ(Listed("", "", true), Ids{"a"});
}

TEST_F(InnerList, GivesTheResultOfAStatementThatCannotBePrepared) {
  device.Sql("alter table widgetinfo rename to aside");
  Apps apps;
  EXPECT_EQ(GetTAVAppList("65535", "1", false, apps), -1);
  EXPECT_TRUE(log.Has("Finish ret[-1]"));
  EXPECT_TRUE(apps.empty());
  device.Sql("alter table aside rename to widgetinfo").Install(App("a"));
  EXPECT_EQ(Listed("", "", true), Ids{"a"});
}

TEST_F(InnerList, TakesEachMemberFromItsOwnColumn) {
  const App given = test::AppWithEveryColumnSet("a");
  device.Install(given);
  Apps apps;
  ASSERT_EQ(GetTAVAppList("", "", true, apps), 0);
  auto expected = test::ExpectedMembers(given);
  expected["bReserved15"] = "0";
  ASSERT_EQ(apps.size(), 1U);
  EXPECT_EQ(MembersOf(apps.front()), expected);
}

TEST_F(InnerList, DiffersFromTheLookupInItsSourceAndOneFlag) {
  const App given = test::AppWithEveryColumnSet("a");
  device.Install(given);
  _APPS_INNER_INFO_T app;
  ASSERT_EQ(GetAppInnerInfo("a", &app), 0);
  auto expected = test::ExpectedMembers(given);
  expected["iSourceType"] = "1";
  EXPECT_EQ(MembersOf(app), expected);
}

TEST_F(InnerList, SetsNoMemberFromTheColumnOfAnother) {
  const App every = test::AppWithEveryColumnSet("a");
  for (const auto& [column, value] : every.Values()) {
    if (column == "id") continue;
    const App given = App("a").Set(column, value);
    device.Sql("delete from widgetinfo").Install(given);
    auto expected = MembersOf({});
    expected["strAppID"] = "a";
    expected["iInstallState"] = "3";
    expected["iSourceType"] = "0";
    const std::string text = test::TextOf(given, column);
    for (const auto& member : test::kInnerTexts) {
      if (column == member.column) expected[member.name] = text;
    }
    for (const auto& member : test::kInnerNumbers) {
      if (column == member.column) expected[member.name] = text;
    }
    for (const auto& member : test::kInnerFlags) {
      if (column == member.column) expected[member.name] = "1";
    }
    expected["bReserved15"] = "0";
    Apps apps;
    ASSERT_EQ(GetTAVAppList("", "", true, apps), 0);
    ASSERT_EQ(apps.size(), 1U);
    EXPECT_EQ(MembersOf(apps.front()), expected) << column;
  }
}

TEST_F(InnerList, ReadsNullAsAnEmptyTextAndZero) {
  const App every = test::AppWithEveryColumnSet("a");
  App given("a");
  for (const auto& [column, value] : every.Values()) {
    if (column != "id") given.Null(column);
  }
  device.Install(given);
  auto expected = MembersOf({});
  expected["strAppID"] = "a";
  expected["iInstallState"] = "3";
  expected["iSourceType"] = "0";
  Apps apps;
  ASSERT_EQ(GetTAVAppList("", "", true, apps), 0);
  ASSERT_EQ(apps.size(), 1U);
  EXPECT_EQ(MembersOf(apps.front()), expected);
}

TEST_F(InnerList, LocksEachAppByTheAgeRule) {
  device.Setting("db/appstore/ratingvalue", "18+")
      .InstallAll({App("18").AgeLimit(18), App("17").AgeLimit(17),
                   App("locked").AgeLimit(17).Set("is_lock", 5)});
  Apps apps;
  ASSERT_EQ(GetTAVAppList("", "", true, apps), 0);
  std::map<std::string, int> locks;
  for (const auto& app : apps) locks[app.strAppID] = app.iIsLock;
  EXPECT_EQ(locks, (std::map<std::string, int>{{"18", 1}, {"17", 0}, {"locked", 1}}));
}

}  // namespace
