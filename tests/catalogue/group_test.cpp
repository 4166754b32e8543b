// SPDX-License-Identifier: Apache-2.0
//
// The group lists, which map a run title to an app's id.
#include <gtest/gtest.h>

#include <atomic>
#include <new>
#include <ostream>
#include <thread>

#include "support/device.h"
#include "support/sqlite_recorder.h"
#include "tav_db_api_inner.h"

namespace {

using test::App;

constexpr int kUntouched = -7;

// What a lookup has made of its outputs.
struct Member {
  std::string id;
  int state;
  bool operator==(const Member& other) const { return id == other.id && state == other.state; }
};

std::ostream& operator<<(std::ostream& out, const Member& member) {
  return out << '"' << member.id << "\" in state " << member.state;
}

Member Installed(const std::string& id) {
  return {id, 0};
}
Member NotInstalled(const std::string& id) {
  return {id, 1};
}
const Member kUnknown = {"untouched", 3};
const Member kNoList = {"untouched", kUntouched};

struct Group {
  const char* name;
  const char* key;
  const char* other_key;
  void (*find)(const std::string&, std::string&, int&);
};

void PrintTo(const Group& group, std::ostream* out) {
  *out << group.name;
}

const Group kGroups[] = {
    {"Android", "RESERVED_37", "RESERVED_27", GetAppIDFromAndroidGroupList},
    {"App", "RESERVED_27", "RESERVED_37", GetAppIDFromAppGroupList},
};

class GroupList : public ::testing::TestWithParam<Group> {
 protected:
  void List(const std::string& text) { device.Configure(group.key, text); }
  Member Find(const std::string& run_title) const {
    Member member = kNoList;
    group.find(run_title, member.id, member.state);
    return member;
  }

  const Group& group = GetParam();
  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_P(GroupList, KnowsAnInstalledAppAndOneThatIsNot) {
  device.Install(App("clock"));
  List("Clock:clock,Weather:weather");
  EXPECT_EQ(Find("Clock"), Installed("clock"));
  EXPECT_EQ(Find("Weather"), NotInstalled("weather"));
  EXPECT_EQ(Find("Other"), kUnknown);
  EXPECT_EQ(log.Count("the runtitle list Clock:clock,Weather:weather"), 3);
}

TEST_P(GroupList, TakesTheTitleAsItIsWritten) {
  List("Clock:clock, Weather :weather");
  for (const char* title : {"clock", "Clock ", "CLOCK", "Weather", ""}) {
    EXPECT_EQ(Find(title), kUnknown) << title;
  }
  EXPECT_EQ(Find(" Weather "), NotInstalled("weather"));
}

TEST_P(GroupList, LeavesTheOutputsAloneWhenItIsMissing) {
  device.Configure(group.other_key, "Clock:clock");
  EXPECT_EQ(Find("Clock"), kNoList);
}

TEST_P(GroupList, KnowsNoTitleWhenItIsEmpty) {
  List("");
  EXPECT_EQ(Find("Clock"), kUnknown);
  EXPECT_EQ(Find(""), kUnknown);
  EXPECT_TRUE(log.Has("String is empty!"));
}

TEST_P(GroupList, KeepsTheFirstAppOfATitle) {
  List("Clock:first,Clock:second");
  EXPECT_EQ(Find("Clock"), NotInstalled("first"));
}

TEST_P(GroupList, SkipsItemsWithoutAnAppAndCutsAtTheFirstColon) {
  List("Clock,:none,Empty:,,Two:a:b,Weather:weather,");
  EXPECT_EQ(Find("Clock"), kUnknown);
  EXPECT_EQ(Find(""), NotInstalled("none"));
  EXPECT_EQ(Find("Empty"), NotInstalled(""));
  EXPECT_EQ(Find("Two"), NotInstalled("a:b"));
  EXPECT_EQ(Find("Weather"), NotInstalled("weather"));
}

TEST_P(GroupList, FindsTheAppByAnyOfThreeNames) {
  device.Install(App("id").TizenId("tizen").Package("package").Set("hybrid_app", "native"));
  List("1:id,2:tizen,3:package,4:native");
  EXPECT_EQ(Find("1"), Installed("id"));
  EXPECT_EQ(Find("2"), Installed("tizen"));
  EXPECT_EQ(Find("3"), Installed("package"));
  EXPECT_EQ(Find("4"), NotInstalled("native"));
}

TEST_P(GroupList, TakesAnAppThatIsNotThereForCallersAsNotInstalled) {
  device.InstallAll({App("a").InstallState(2), App("b").Unavailable(), App("c").MarkedForReset()});
  List("A:a,B:b,C:c");
  EXPECT_EQ(Find("A"), NotInstalled("a"));
  EXPECT_EQ(Find("B"), NotInstalled("b"));
  EXPECT_EQ(Find("C"), NotInstalled("c"));
}

TEST_P(GroupList, TakesEveryAppAsNotInstalledWhileThePlatformRefuses) {
  device.Install(App("clock"));
  List("Clock:clock");
  device.FactoryReset(1);
  EXPECT_EQ(Find("Clock"), NotInstalled("clock"));
  EXPECT_EQ(Find("Other"), kUnknown);
  device.FactoryReset(0).Write("opt/dbspace/pkgreinstall", "");
  EXPECT_EQ(Find("Clock"), NotInstalled("clock"));
  std::filesystem::remove(device.Root() / "opt/dbspace/pkgreinstall");
  EXPECT_EQ(Find("Clock"), Installed("clock"));
}

TEST_P(GroupList, IsReadAnewEachTimeWithOneStatement) {
  List("Clock:clock");
  Find("Clock");
  EXPECT_EQ(test::CallsToSqlite([&] { EXPECT_EQ(Find("Other"), kUnknown); }),
            (test::SqliteCalls{"select value from TAVConfigTable where name = ?",
                               "1 '" + std::string(group.key) + "' -1", "finalize"}));
  List("Clock:other");
  EXPECT_EQ(Find("Clock"), NotInstalled("other"));
}

TEST_P(GroupList, AsksForTheAppOfAKnownTitleByThreeNames) {
  List("Clock:clock");
  Find("Clock");
  EXPECT_EQ(test::CallsToSqlite([&] { EXPECT_EQ(Find("Clock"), NotInstalled("clock")); }),
            (test::SqliteCalls{
                "select value from TAVConfigTable where name = ?",
                "1 '" + std::string(group.key) + "' -1", "finalize",
                std::string(test::kSelectApps) +
                    " where (id = ?  or tizen_id = ? or pkgname = ?)  and install_state"
                    " = ? and is_app_available = ? and is_need_reset = ? ",
                "1 'clock' -1", "2 'clock' -1", "3 'clock' -1", "4 3", "5 1", "6 0", "finalize"}));
}

TEST_P(GroupList, LeavesTheOutputsAloneWithoutTheTableOfItsValue) {
  device.Install(App("clock")).Sql("alter table TAVConfigTable rename to aside");
  EXPECT_EQ(Find("Clock"), kNoList);  // at its preparation
  device.Sql("alter table aside rename to TAVConfigTable");
  List("Clock:clock");
  EXPECT_EQ(Find("Clock"), Installed("clock"));
  device.Sql("drop table TAVConfigTable");
  EXPECT_EQ(Find("Clock"), kNoList);  // under the open database
}

TEST_P(GroupList, LeavesTheOutputsAloneWhenAnExceptionEndsIt) {
  List("Clock:clock");
  test::BeforePreparing("select value", [] { throw std::bad_alloc(); });
  EXPECT_EQ(Find("Clock"), kNoList);
  EXPECT_EQ(Find("Clock"), NotInstalled("clock"));
}

INSTANTIATE_TEST_SUITE_P(Both, GroupList, ::testing::ValuesIn(kGroups),
                         [](const auto& group) { return std::string(group.param.name); });

TEST(GroupLists, GiveEachOfSeveralThreadsItsOwnAnswer) {
  test::Device device;
  device.Install(App("clock"));
  device.Configure("RESERVED_37", "Clock:clock,Weather:weather");
  device.Configure("RESERVED_27", "Clock:other");
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&wrong] {
      for (int call = 0; call < 50; ++call) {
        const auto expect = [&wrong](const Group& group, const char* title, const Member& member) {
          Member found = kNoList;
          group.find(title, found.id, found.state);
          if (!(found == member)) ++wrong;
        };
        expect(kGroups[0], "Clock", Installed("clock"));
        expect(kGroups[1], "Clock", NotInstalled("other"));
        expect(kGroups[0], "Weather", NotInstalled("weather"));
        expect(kGroups[1], "Weather", kUnknown);
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
