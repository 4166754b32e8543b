// SPDX-License-Identifier: Apache-2.0
//
// The XML file of all installed apps.
#include "xml.h"

#include <climits>
#include <cstring>
#include <memory>
#include <regex>
#include <thread>

#include "support/sqlite_recorder.h"
#include "support/unreadable_row.h"

namespace {

using test::Answer;
using test::App;
using test::AppsAsXml;
using test::Golden;
using test::ReadFile;

std::string Element(const std::string& id) {
  return "<widget id=\"" + id +
         "\" name=\"\" lock=\"0\" hidden=\"0\" runTitle=\"\" size=\"0\" myAppIdx=\"0\" "
         "network=\"0\">\n<installedPath></installedPath>\n<icon></icon>\n</widget>\n";
}

std::string Document(const std::string& elements) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<list>\n" + elements + "</list>\n";
}

TEST_F(AppsAsXml, AreTheWholeFileByteForByte) {
  device.InstallAll({
      App("org.example.clock")
          .Title("Clock")
          .RunTitle("clock")
          .Index(7)
          .Set("size", 1234)
          .Set("is_network", 1)
          .Set("install_path", "/opt/usr/apps/org.example.clock")
          .Set("icon_path", "/opt/usr/apps/org.example.clock/icon.png"),
      App("quotes").Title("\"Tom\" & <Jerry>").RunTitle("'&amp;'").Set("icon_path", "]]>"),
      App("foreign").Title("\u00dcber \u6642\u8a08 \U0001f600").RunTitle("\xff"),
      App("hidden").Hidden().Locked().Set("is_network", 5),
      App("long").Title(std::string(200, 't')).Set("install_path", std::string(200, 'p')),
      App("lines").Title("a\nb\tc"),
      App("largest").Set("size", INT_MAX).Index(INT_MAX),
      App("smallest").Set("size", INT_MIN).Index(INT_MIN),
  });
  EXPECT_EQ(Write(), With(0));
  EXPECT_EQ(ReadFile(File()), Golden("apps_info.xml"));
  EXPECT_TRUE(log.Has("real_count:8"));
  EXPECT_TRUE(log.Has("Finish"));
}

TEST_F(AppsAsXml, AreInTheOrderOfTheDatabaseAndOnlyThoseThatAreThere) {
  device.InstallAll({App("z").Index(9), App("m").Index(5).Hidden(), App("gone").InstallState(2),
                     App("away").Unavailable(), App("reset").MarkedForReset(), App("a")});
  EXPECT_EQ(Write(), With(0));
  std::string ids;
  const std::string text = ReadFile(File());
  const std::regex id("<widget id=\"([^\"]*)\"");
  for (std::sregex_iterator at(text.begin(), text.end(), id), end; at != end; ++at) {
    ids += at->str(1) + " ";
  }
  EXPECT_EQ(ids, "z m a ");
}

TEST_F(AppsAsXml, AreLockedByTheAgeRule) {
  device.Setting("db/appstore/ratingvalue", "18+").Install(App("a").AgeLimit(18));
  EXPECT_EQ(Write(), With(0));
  EXPECT_NE(ReadFile(File()).find(" lock=\"1\" "), std::string::npos);
}

TEST_F(AppsAsXml, AreAnEmptyFileWhenThereIsNone) {
  EXPECT_EQ(Write(), With(0));
  EXPECT_EQ(ReadFile(File()), "");
  EXPECT_TRUE(log.Has("real_count is 0 "));
}

TEST_F(AppsAsXml, AreWrittenAnewOnEachCall) {
  device.InstallAll({App("a"), App("b")});
  EXPECT_EQ(Write(), With(0));
  EXPECT_EQ(ReadFile(File()), Document(Element("a") + Element("b")));
  device.Sql("delete from widgetinfo where id = 'a'");
  EXPECT_EQ(Write(), With(0));
  EXPECT_EQ(ReadFile(File()), Document(Element("b")));
  device.Sql("delete from widgetinfo");
  EXPECT_EQ(Write(), With(0));
  EXPECT_EQ(ReadFile(File()), "");
}

TEST_F(AppsAsXml, AreReadWithTheSameConditionForTheCountAndTheList) {
  device.Install(App("a"));
  Write();
  const std::string where =
      "  where is_app_available = ? and is_need_reset = ? and install_state = ? ";
  EXPECT_EQ(
      test::CallsToSqlite([] { Write(); }),
      (test::SqliteCalls{"select count(id) from widgetinfo" + where, "1 1", "2 0", "3 3",
                         "finalize", test::kSelectApps + where, "1 1", "2 0", "3 3", "finalize"}));
}

TEST_F(AppsAsXml, GiveTheirPathInABlockOfOneTextFieldFilledWithZeros) {
  char* path = nullptr;
  ASSERT_EQ(tav_write_all_app_info_to_xml(&path), 0);
  ASSERT_NE(path, nullptr);
  const std::unique_ptr<char, decltype(&std::free)> owner(path, std::free);
  char expected[128] = {};
  std::strcpy(expected, File().c_str());
  EXPECT_EQ(std::memcmp(path, expected, sizeof(expected)), 0);
  EXPECT_TRUE(log.Has("RealPath is [(null)]"));
}

TEST_F(AppsAsXml, NameThePathThatTheirFileResolvesToWhenItIsThere) {
  EXPECT_EQ(Write(), With(0));
  EXPECT_TRUE(log.Has("RealPath is [(null)]"));
  log.Forget();
  EXPECT_EQ(Write(), With(0));
  EXPECT_EQ(log.Count("RealPath is [" + File().string() + "]"), 1);
  EXPECT_FALSE(log.Has("realPaths is not realpath, so can not open it!!!"));
}

TEST_F(AppsAsXml, AreZerosForRowsThatGoBetweenTheCountAndTheList) {
  device.InstallAll({App("a"), App("b"), App("c")});
  test::BeforePreparing(test::kSelectApps,
                        [&] { device.Sql("delete from widgetinfo where id <> 'b'"); });
  EXPECT_EQ(Write(), With(0));
  EXPECT_EQ(ReadFile(File()), Document(Element("b") + Element("") + Element("")));
  EXPECT_TRUE(log.Has("real_count:3"));
}

TEST_F(AppsAsXml, AreZerosFromTheFirstRowOnThatCannotBeRead) {
  device.InstallAll({App("a"), App("b"), App("c")});
  test::MakeUnreadable(device, "b");
  EXPECT_EQ(Write(), With(0));
  EXPECT_EQ(ReadFile(File()), Document(Element("a") + Element("") + Element("")));
}

TEST_F(AppsAsXml, AreWithoutRowsThatComeBetweenTheCountAndTheList) {
  device.Install(App("a"));
  test::BeforePreparing(test::kSelectApps, [&] { device.InstallAll({App("b"), App("c")}); });
  EXPECT_EQ(Write(), With(0));
  EXPECT_EQ(ReadFile(File()), Document(Element("a")));
  EXPECT_EQ(Write(), With(0));
  EXPECT_EQ(ReadFile(File()), Document(Element("a") + Element("b") + Element("c")));
}

TEST_F(AppsAsXml, GoToThePathThatFitsIntoTheBlock) {
  device.Install(App("a"));
  ASSERT_EQ(Write(), With(0));  // the database is open now
  const std::string end = "/data/tavcore/common/apps_info.xml";
  const std::string base = device.Root().string() + "/";
  const std::string root = base + std::string(131 - base.size() - end.size(), 'r');
  std::filesystem::create_directories(root + "/data/tavcore/common");
  setenv("TAV_DEVICE_ROOT", root.c_str(), 1);
  const std::string cut = (root + end).substr(0, 127);
  EXPECT_EQ(Write(), (Answer{0, cut}));
  EXPECT_EQ(ReadFile(cut), Document(Element("a")));
  EXPECT_FALSE(std::filesystem::exists(root + end));
}

TEST_F(AppsAsXml, AreWholeWhenSeveralThreadsWriteAtOnce) {
  device.InstallAll({App("a"), App("b")});
  std::vector<int> results(4, -7);
  std::vector<std::thread> threads;
  for (int& result : results) {
    threads.emplace_back([&result] {
      for (int call = 0; call < 10; ++call) {
        result = Write().result;
        if (result != 0) return;
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(results, std::vector<int>(4, 0));
  EXPECT_EQ(ReadFile(File()), Document(Element("a") + Element("b")));
}

}  // namespace
