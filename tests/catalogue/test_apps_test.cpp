// SPDX-License-Identifier: Apache-2.0
//
// The list of test apps.
#include "catalogue.h"

namespace {

using Members = std::map<std::string, std::string>;
using Records = std::map<std::string, _APPS_INNER_INFO_T>;
using AllMembers = std::map<std::string, Members>;

// The members of a test app.
Members TestApp(const std::string& id, const std::string& version, const std::string& type,
                const std::string& tag) {
  _APPS_INNER_INFO_T app;
  app.strAppID = id;
  app.strVersion = version;
  app.strTargetGroupType = type;
  app.strTargetGroupTag = tag;
  return test::MembersOf(app);
}

class TestAppList : public test::BuiltInApps {
 protected:
  static AllMembers Read(Records records = {}) {
    GetBuiltInTestAppList(records);
    AllMembers members;
    for (const auto& [id, app] : records) members[id] = test::MembersOf(app);
    return members;
  }
};

TEST_F(TestAppList, IsCutIntoEntriesAndTheseIntoTheirFourFields) {
  TestApps("appA,1.0,groupT,tag1;appB,2.0,groupU,tag2");
  EXPECT_EQ(Read(), (AllMembers{{"appA", TestApp("appA", "1.0", "groupT", "tag1")},
                                {"appB", TestApp("appB", "2.0", "groupU", "tag2")}}));
  EXPECT_TRUE(log.Has("strTestAppList appA,1.0,groupT,tag1;appB,2.0,groupU,tag2"));
  EXPECT_TRUE(log.Has("appid appA, version 1.0, type groupT, tag tag1"));
  EXPECT_TRUE(log.Has("appid appB, version 2.0, type groupU, tag tag2"));
}

TEST_F(TestAppList, MayEndItsLastEntryToo) {
  TestApps("a,1,t,g;");
  EXPECT_EQ(Read(), (AllMembers{{"a", TestApp("a", "1", "t", "g")}}));
}

TEST_F(TestAppList, KeepsTheFirstEntryOfAnId) {
  TestApps("a,1,t,g;a,2,u,h");
  EXPECT_EQ(Read(), (AllMembers{{"a", TestApp("a", "1", "t", "g")}}));
}

TEST_F(TestAppList, IsAddedToWhatIsThere) {
  TestApps("a,1,t,g;b,2,u,h");
  EXPECT_EQ(Read({{"a", test::InnerApp("before", "p")}}),
            (AllMembers{{"a", test::MembersOf(test::InnerApp("before", "p"))},
                        {"b", TestApp("b", "2", "u", "h")}}));
}

TEST_F(TestAppList, SkipsEntriesWithFewerThanFourFields) {
  TestApps(";a;b,1;c,1,t;;d,1,t,g;,");
  EXPECT_EQ(Read(), (AllMembers{{"d", TestApp("d", "1", "t", "g")}}));
}

TEST_F(TestAppList, ReadsNoMoreThanFourFieldsOfAnEntry) {
  TestApps("a,1,t,g,more;b,2,u,h,,;c,3,v,,w");
  EXPECT_EQ(Read(), (AllMembers{{"a", TestApp("a", "1", "t", "g")},
                                {"b", TestApp("b", "2", "u", "h")},
                                {"c", TestApp("c", "3", "v", "")}}));
  EXPECT_TRUE(log.Has("appid a, version 1, type t, tag g"));
}

TEST_F(TestAppList, HasEmptyFieldsAsTheyAre) {
  TestApps("a,,,;,1,t,g; b , 1 ,t,g");
  EXPECT_EQ(Read(), (AllMembers{{"a", TestApp("a", "", "", "")},
                                {"", TestApp("", "1", "t", "g")},
                                {" b ", TestApp(" b ", " 1 ", "t", "g")}}));
}

TEST_F(TestAppList, ChangesNothingWhenItIsMissing) {
  const AllMembers before = {{"a", test::MembersOf(test::InnerApp("before", "p"))}};
  EXPECT_EQ(Read({{"a", test::InnerApp("before", "p")}}), before);
  TestApps("");
  EXPECT_EQ(Read({{"a", test::InnerApp("before", "p")}}), before);
}

}  // namespace
