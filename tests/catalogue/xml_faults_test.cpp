// SPDX-License-Identifier: Apache-2.0
//
// The XML file when it cannot be written.
#include <signal.h>
#include <sys/resource.h>

#include <chrono>
#include <memory>
#include <new>

#include "support/sqlite_recorder.h"
#include "support/writer.h"
#include "xml.h"

namespace {

using test::Answer;
using test::App;
using test::ExclusiveWriter;
using test::kFails;
using test::ReadFile;

constexpr char kNoRealPath[] = "realPaths is not realpath, so can not open it!!!";
constexpr char kNotOpened[] = "failed to open xml file";
constexpr char kNotWritten[] = "failed to write xml file";
constexpr char kNotCounted[] = "failed to get AppsTable Count ";
constexpr char kNotListed[] = "failed to get app list";  // which the list calls say

class XmlFaults : public test::AppsAsXml {
 protected:
  XmlFaults() { device.Install(App("a")); }

  // The next call works: the lock was given back.
  void ExpectNextCallWorks() {
    EXPECT_EQ(Write(), With(0));
    EXPECT_NE(ReadFile(File()).find("<widget id=\"a\" "), std::string::npos);
  }
  std::unique_ptr<ExclusiveWriter> Writer() {
    return std::make_unique<ExclusiveWriter>(device.DatabaseFile(), std::chrono::seconds(30));
  }
};

TEST_F(XmlFaults, AreRefusalsInTheOrderOfTheChecksWithoutAFile) {
  device.FactoryReset(1).Write("opt/dbspace/pkgreinstall", "");
  EXPECT_EQ(Write(), kFails);
  EXPECT_EQ(tav_write_all_app_info_to_xml(nullptr), -1);
  EXPECT_TRUE(log.HasNotice("FactoryReset is true"));
  EXPECT_FALSE(log.Has("Pkgmgr is recovering"));
  device.FactoryReset(0);
  EXPECT_EQ(Write(), kFails);
  EXPECT_EQ(tav_write_all_app_info_to_xml(nullptr), -1);
  EXPECT_TRUE(log.HasError("Pkgmgr is recovering"));
  EXPECT_FALSE(log.Has("in param is NULL "));
  std::filesystem::remove(device.Root() / "opt/dbspace/pkgreinstall");
  EXPECT_EQ(tav_write_all_app_info_to_xml(nullptr), -1);
  EXPECT_TRUE(log.Has("in param is NULL "));
  EXPECT_FALSE(std::filesystem::exists(File()));
  ExpectNextCallWorks();
}

TEST_F(XmlFaults, AreLinksInThePlaceOfTheFile) {
  device.Write("elsewhere", "kept");
  std::filesystem::create_symlink(device.Root() / "elsewhere", File());
  EXPECT_EQ(Write(), With(-1));
  EXPECT_TRUE(log.Has("RealPath is [" + (device.Root() / "elsewhere").string() + "]"));
  EXPECT_TRUE(log.Has(kNoRealPath));
  EXPECT_EQ(ReadFile(device.Root() / "elsewhere"), "kept");
  std::filesystem::remove(File());
  ExpectNextCallWorks();
}

TEST_F(XmlFaults, AreLinksInTheWayToTheFile) {
  const auto common = File().parent_path();
  device.Write("elsewhere/apps_info.xml", "kept");
  std::filesystem::remove(common);
  std::filesystem::create_directory_symlink(device.Root() / "elsewhere", common);
  EXPECT_EQ(Write(), With(-1));
  EXPECT_TRUE(log.Has(kNoRealPath));
  EXPECT_EQ(ReadFile(device.Root() / "elsewhere/apps_info.xml"), "kept");
}

TEST_F(XmlFaults, AreNotLinksThatLeadNowhere) {
  std::filesystem::create_symlink(device.Root() / "nothing", File());
  EXPECT_EQ(Write(), With(0));
  EXPECT_FALSE(log.Has(kNoRealPath));
  EXPECT_EQ(ReadFile(device.Root() / "nothing"), ReadFile(File()));
}

TEST_F(XmlFaults, AreAMissingDirectory) {
  std::filesystem::remove_all(device.Root() / "data");
  EXPECT_EQ(Write(), With(-1));
  EXPECT_TRUE(log.HasError(kNotOpened));
  EXPECT_FALSE(std::filesystem::exists(device.Root() / "data"));
  std::filesystem::create_directories(File().parent_path());
  ExpectNextCallWorks();
}

TEST_F(XmlFaults, AreADirectoryInThePlaceOfTheFile) {
  std::filesystem::create_directory(File());
  EXPECT_EQ(Write(), With(-1));
  EXPECT_TRUE(log.HasError(kNotOpened));
  EXPECT_TRUE(std::filesystem::is_directory(File()));
}

TEST_F(XmlFaults, AreAFileInThePlaceOfItsDirectory) {
  std::filesystem::remove(File().parent_path());
  device.Write("data/tavcore/common", "kept");
  EXPECT_EQ(Write(), With(-1));
  EXPECT_TRUE(log.HasError(kNotOpened));
  EXPECT_EQ(ReadFile(File().parent_path()), "kept");
}

TEST_F(XmlFaults, AreACountThatCannotBePrepared) {
  device.Write("data/tavcore/common/apps_info.xml", "before");
  device.Sql("alter table widgetinfo rename to aside");
  EXPECT_EQ(Write(), With(-1));
  EXPECT_TRUE(log.Has(kNotCounted));
  EXPECT_EQ(ReadFile(File()), "");
  device.Sql("alter table aside rename to widgetinfo");
  ExpectNextCallWorks();
}

TEST_F(XmlFaults, AreATableThatGoesUnderTheOpenDatabase) {
  ASSERT_EQ(Write(), With(0));
  log.Forget();
  device.Sql("alter table widgetinfo rename to aside");
  EXPECT_EQ(Write(), With(-1));
  EXPECT_TRUE(log.Has(kNotCounted));
  EXPECT_FALSE(log.Has("Finish"));
  EXPECT_EQ(ReadFile(File()), "");
  device.Sql("alter table aside rename to widgetinfo");
  ExpectNextCallWorks();
  device.Sql("drop table widgetinfo");
  EXPECT_EQ(Write(), With(-1));
}

TEST_F(XmlFaults, AreNotATableThatGoesBetweenTheCountAndTheList) {
  ASSERT_EQ(Write(), With(0));
  test::BeforePreparing(test::kSelectApps, [&] { device.Sql("drop table widgetinfo"); });
  EXPECT_EQ(Write(), With(0));
  EXPECT_NE(ReadFile(File()).find("<widget id=\"\" name=\"\" "), std::string::npos);
}

TEST_F(XmlFaults, AreABusyDatabaseAtTheCount) {
  ASSERT_EQ(Write(), With(0));
  auto writer = Writer();
  EXPECT_EQ(Write(), With(-2));
  EXPECT_TRUE(log.Has(kNotCounted));
  EXPECT_EQ(ReadFile(File()), "");
  writer.reset();
  ExpectNextCallWorks();
}

TEST_F(XmlFaults, AreABusyDatabaseAtTheList) {
  ASSERT_EQ(Write(), With(0));
  std::unique_ptr<ExclusiveWriter> writer;
  test::BeforePreparing(test::kSelectApps, [&] { writer = Writer(); });
  EXPECT_EQ(Write(), With(-2));
  ASSERT_NE(writer, nullptr);
  EXPECT_FALSE(log.Has(kNotCounted));
  EXPECT_FALSE(log.Has(kNotListed));
  EXPECT_EQ(ReadFile(File()), "");
  writer.reset();
  ExpectNextCallWorks();
}

TEST_F(XmlFaults, AreAListThatCannotBePrepared) {
  device.Sql("alter table widgetinfo rename column title to aside");
  EXPECT_EQ(Write(), With(-1));
  EXPECT_FALSE(log.Has(kNotCounted));
  EXPECT_FALSE(log.Has(kNotListed));
  EXPECT_EQ(ReadFile(File()), "");
  device.Sql("alter table widgetinfo rename column aside to title");
  ExpectNextCallWorks();
}

TEST_F(XmlFaults, AreExceptions) {
  test::BeforePreparing(test::kSelectApps, [] { throw std::bad_alloc(); });
  EXPECT_EQ(Write(), With(-1));
  EXPECT_TRUE(log.HasError("tav_write_all_app_info_to_xml failed: std::bad_alloc"));
  EXPECT_EQ(ReadFile(File()), "");
  ExpectNextCallWorks();
}

TEST_F(XmlFaults, AreAFullDevice) {
  // Errors alone, for the log has to find room as well.
  setenv("DLOG_LEVEL", "E", 1);
  std::vector<App> apps;
  for (int i = 0; i < 500; ++i) apps.emplace_back("app" + std::to_string(i));
  device.InstallAll(apps);
  rlimit limit = {};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
  rlimit narrow = limit;
  narrow.rlim_cur = 16384;
  const auto handler = signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &narrow), 0);
  const Answer answer = Write();
  setrlimit(RLIMIT_FSIZE, &limit);
  signal(SIGXFSZ, handler);
  EXPECT_EQ(answer, With(-1));
  EXPECT_TRUE(log.HasError(kNotWritten));
  EXPECT_EQ(std::filesystem::file_size(File()), 16384U);
  ExpectNextCallWorks();
}

}  // namespace
