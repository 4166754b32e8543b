// SPDX-License-Identifier: Apache-2.0
//
// The list of built-in apps: the document's entries, completed by the package manager.
#include <atomic>
#include <chrono>
#include <new>
#include <thread>

#include "catalogue.h"
#include "support/sqlite_recorder.h"
#include "support/writer.h"

namespace {

using test::BuiltIn;
using test::BuiltIns;
using test::Ids;
using test::IdsOf;
using test::InnerApp;
using test::InnerApps;
using test::Plain;

using BuiltInList = test::BuiltInApps;

TEST_F(BuiltInList, HasTheEntriesInTheOrderOfTheDocument) {
  Catalogue(Ids{"z", "a", "m", "a"});
  EXPECT_EQ(Listed(), (BuiltIns{Plain("z"), Plain("a"), Plain("m"), Plain("a")}));
  EXPECT_EQ(log.Count("GetBuiltInAppList start"), 1);
  EXPECT_EQ(log.Count("GetBuiltInAppList end"), 1);
}

TEST_F(BuiltInList, HasVersionAndIconOfTheInstalledPackage) {
  Catalogue(BuiltIns{{"a", "t", "package.a", "Title", "", "", "", ""}, Plain("b")});
  Packages("[package.a]\nversion=1.2.3\nicon=/icons/a.png\n[a]\nversion=9\nicon=/wrong.png\n");
  EXPECT_EQ(Listed(), (BuiltIns{{"a", "t", "package.a", "Title", "1.2.3", "/icons/a.png", "", ""},
                                Plain("b")}));
  EXPECT_TRUE(log.Has("[package.a] get version 1.2.3"));
  EXPECT_TRUE(log.Has("[package.a] get icon /icons/a.png"));
}

TEST_F(BuiltInList, HasWhatIsKnownOfAPackageWithoutVersionOrIcon) {
  Catalogue(Ids{"a", "b", "c"});
  Packages("[a]\nversion=1\n[b]\nicon=/b.png\n[c]\n");
  BuiltIns expected = {Plain("a"), Plain("b"), Plain("c")};
  expected[0].version = "1";
  expected[1].icon = "/b.png";
  EXPECT_EQ(Listed(), expected);
}

TEST_F(BuiltInList, HasAnEntryWithoutAnyKeyAndReadsNoOther) {
  Document(R"({"rsp":{"stat":"ok","apps":[{},{"version":"1","icon":"i","ID":"x"}]},"apps":[1]})");
  EXPECT_EQ(Listed(), (BuiltIns{{}, {}}));
}

TEST_F(BuiltInList, IsAppendedToWhatIsThere) {
  Catalogue(Ids{"a"});
  InnerApps list = {InnerApp("before", "p")};
  EXPECT_EQ(GetBuiltInAppList(list, false), 0);
  EXPECT_EQ(GetBuiltInAppList(list, false), 0);
  EXPECT_EQ(IdsOf(list), (Ids{"before", "a", "a"}));
}

TEST_F(BuiltInList, IsEmptyForADocumentWithoutEntries) {
  Catalogue(Ids{});
  EXPECT_EQ(Listed(), BuiltIns{});
}

TEST_F(BuiltInList, OfTestAppsHasOnlyTheEntriesWhoseIdIsOne) {
  Catalogue(Ids{"a", "b", "c"});
  TestApps("c,1,t,g;a,1,t,g;elsewhere,1,t,g");
  EXPECT_EQ(Listed(true), (BuiltIns{Plain("a"), Plain("c")}));
  EXPECT_EQ(ListedIds(false), (Ids{"a", "b", "c"}));
}

TEST_F(BuiltInList, OfTestAppsIsEmptyWithoutAnyAndDoesNotReadTheCatalogue) {
  Document("no JSON");
  const auto list_nothing = [&] {
    InnerApps list = {InnerApp("before", "p")};
    EXPECT_EQ(GetBuiltInAppList(list, true), 0);
    EXPECT_EQ(IdsOf(list), Ids{"before"});
  };
  list_nothing();
  TestApps("");
  list_nothing();
  TestApps("one,field,less");
  const auto calls = test::CallsToSqlite(list_nothing);
  EXPECT_EQ(calls, (test::SqliteCalls{"select value from TAVConfigTable where name = ?",
                                      "1 'RESERVED_16' -1", "finalize"}));
}

TEST_F(BuiltInList, OfTestAppsLeavesTheListAloneWithoutAnyAlsoWhatTheDeviceDoesNotOffer) {
  Blacklist("p\n");
  InnerApps list = {InnerApp("before", "p")};
  EXPECT_EQ(GetBuiltInAppList(list, true), 0);
  EXPECT_EQ(IdsOf(list), Ids{"before"});
}

TEST_F(BuiltInList, ReadsTheTestAppsBeforeTheCatalogue) {
  Catalogue(Ids{"a"});
  ListedIds();
  EXPECT_EQ(
      test::CallsToSqlite([&] { ListedIds(); }),
      (test::SqliteCalls{"select value from TAVConfigTable where name = ?", "1 'RESERVED_16' -1",
                         "finalize", "select value from TAVConfigTable where name = ?",
                         "1 'RESERVED_15' -1", "finalize"}));
}

TEST_F(BuiltInList, HasTheGroupOfATestAppOfTheInstalledVersionAlone) {
  Catalogue(Ids{"same", "other", "longer", "missing", "none"});
  TestApps("same,1.0,type,tag;other,1.1,type,tag;longer,1.0.0,type,tag;missing,1.0,type,tag");
  Packages("[same]\nversion=1.0\n[other]\nversion=1.0\n[longer]\nversion=1.0\n[none]\nversion=1.0");
  BuiltIns expected = {Plain("same"), Plain("other"), Plain("longer"), Plain("missing"),
                       Plain("none")};
  for (const std::size_t installed : {0U, 1U, 2U, 4U}) expected[installed].version = "1.0";
  expected[0].type = "type";
  expected[0].tag = "tag";
  EXPECT_EQ(Listed(), expected);
  expected.pop_back();
  EXPECT_EQ(Listed(true), expected);
}

TEST_F(BuiltInList, HasNoGroupWhenTheVersionOfATestAppIsEmptyAndThatOfThePackageUnknown) {
  Catalogue(Ids{"a", "b", "c"});
  TestApps("a,,type,tag;b,,type,tag;c,,type,tag");
  Packages("[a]\nicon=/a.png\n[c]\nversion=\n");
  BuiltIns expected = {Plain("a"), Plain("b"), Plain("c")};
  expected[0].icon = "/a.png";
  expected[2].type = "type";  // a version that is read, and empty, is that of the test app
  expected[2].tag = "tag";
  EXPECT_EQ(Listed(), expected);
}

TEST_F(BuiltInList, LooksTestAppsUpByTheirAppIdsAndPackagesByTheirPackageIds) {
  Catalogue(BuiltIns{{"app", "", "package", "", "", "", "", ""}});
  TestApps("package,1,wrong,wrong;app,1,type,tag");
  Packages("[package]\nversion=1\n");
  EXPECT_EQ(Listed(), (BuiltIns{{"app", "", "package", "", "1", "", "tag", "type"}}));
}

TEST_F(BuiltInList, IsRefusedWhileThePackageManagerRecovers) {
  Catalogue(Ids{"a"});
  device.Write("opt/dbspace/pkgreinstall", "");
  InnerApps list = {InnerApp("before", "p")};
  EXPECT_EQ(GetBuiltInAppList(list, false), -1);
  EXPECT_EQ(GetBuiltInAppList(list, true), -1);
  EXPECT_EQ(IdsOf(list), Ids{"before"});
  EXPECT_TRUE(log.HasError("Pkgmgr is recovering"));
  std::filesystem::remove(device.Root() / "opt/dbspace/pkgreinstall");
  EXPECT_EQ(ListedIds(), Ids{"a"});
}

TEST_F(BuiltInList, IsGivenDuringAFactoryReset) {
  Catalogue(Ids{"a"});
  device.FactoryReset(1);
  EXPECT_EQ(ListedIds(), Ids{"a"});
}

TEST_F(BuiltInList, HasLongAndForeignTextsWhole) {
  const std::string title = "\u00dcber \u6642\u8a08 " + std::string(5000, 't');
  Catalogue(BuiltIns{{"a", "", "", title, "", "", "", ""}});
  EXPECT_EQ(Listed(), (BuiltIns{{"a", "", "", title, "", "", "", ""}}));
}

TEST_F(BuiltInList, FailsWhileTheDatabaseStaysBusyAndWorksAgainAfterwards) {
  Catalogue(Ids{"a"});
  ListedIds();
  {
    const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
    InnerApps list = {InnerApp("before", "p")};
    EXPECT_EQ(GetBuiltInAppList(list, false), -1);
    EXPECT_EQ(IdsOf(list), Ids{"before"});
  }
  EXPECT_EQ(ListedIds(), Ids{"a"});
}

TEST_F(BuiltInList, FailsWhenAnExceptionEndsItAndWorksAgainAfterwards) {
  Catalogue(Ids{"a"});
  InnerApps list = {InnerApp("before", "p")};
  test::BeforePreparing("select value", [] { throw std::bad_alloc(); });
  EXPECT_EQ(GetBuiltInAppList(list, false), -1);
  EXPECT_EQ(IdsOf(list), Ids{"before"});
  EXPECT_TRUE(log.HasError("GetBuiltInAppList failed: std::bad_alloc"));
  EXPECT_EQ(ListedIds(), Ids{"a"});
}

TEST_F(BuiltInList, IsTheSameForSeveralThreadsAtOnce) {
  Catalogue(Ids{"a", "b"});
  TestApps("b,1,type,tag");
  Packages("[a]\nversion=1\n[b]\nversion=1\n");
  const BuiltIns expected = Listed();
  std::atomic<int> different{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int call = 0; call < 25; ++call) {
        if (!(Listed() == expected)) ++different;
        std::map<std::string, _APPS_INNER_INFO_T> test_apps;
        GetBuiltInTestAppList(test_apps);
        if (test_apps.size() != 1) ++different;
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(different, 0);
}

}  // namespace
