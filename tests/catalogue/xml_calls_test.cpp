// SPDX-License-Identifier: Apache-2.0
//
// How the XML file is written: through which functions, in which order, and into what.
#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <vector>

#include "file_calls.h"
#include "memory.h"
#include "xml.h"

namespace {

using test::App;
using test::FileCalls;
using test::ReadFile;

class XmlCalls : public test::AppsAsXml {
 protected:
  // Without an age limit a call that works logs no error.
  XmlCalls() { device.Setting("db/appstore/ratingvalue", "OFF"); }

  void InstallMany(int count) {
    std::vector<App> apps;
    for (int i = 0; i < count; ++i) apps.emplace_back("app" + std::to_string(i));
    device.InstallAll(apps);
  }
  // What the file holds once it is written.
  std::string Whole() {
    EXPECT_EQ(Write(), With(0));
    std::string whole = ReadFile(File());
    log.Forget();
    return whole;
  }
};

TEST_F(XmlCalls, TakeTheWholeFileToTheDeviceAndCloseItBeforeTheyFinish) {
  InstallMany(3);
  const std::string whole = Whole();
  std::vector<std::string> calls;
  FileCalls file(File());
  file.before = [&](const std::string& function, int) {
    calls.push_back(function);
    EXPECT_FALSE(log.Has("Finish")) << function;
    if (function != "fflush") {
      EXPECT_EQ(ReadFile(File()), whole) << function;
    }
  };
  EXPECT_EQ(Write(), With(0));
  EXPECT_EQ(calls, (std::vector<std::string>{"fflush", "fsync", "fclose", "Finish"}));
  EXPECT_EQ(log.Count("Finish"), 1);
}

TEST_F(XmlCalls, HaveGivenTheListBackBeforeTheyFinish) {
  constexpr int kApps = 2000;
  InstallMany(kApps);
  Whole();
  std::size_t at_sync = 0;
  std::size_t at_finish = 0;
  FileCalls file(File());
  file.before = [&](const std::string& function, int) {
    if (function == "fsync") at_sync = test::AllocatedBytes();
    if (function == "Finish") at_finish = test::AllocatedBytes();
  };
  EXPECT_EQ(Write(), With(0));
  if (at_sync != 0) {  // beneath a sanitizer nothing is known of the heap
    EXPECT_GE(at_sync, at_finish + kApps * sizeof(tav_app_info_s));
  }
}

TEST_F(XmlCalls, CloseTheFileOfAFailureAndOfAnEmptyListToo) {
  std::vector<std::string> calls;
  FileCalls file(File());
  file.before = [&calls](const std::string& function, int) { calls.push_back(function); };
  EXPECT_EQ(Write(), With(0));
  EXPECT_EQ(calls, std::vector<std::string>{"fclose"});
  device.Install(App("a")).Sql("alter table widgetinfo rename column title to aside");
  EXPECT_EQ(Write(), With(-1));
  EXPECT_EQ(calls, (std::vector<std::string>{"fclose", "fclose"}));
}

TEST_F(XmlCalls, KeepTheFileFromProgramsThatAreStartedMeanwhile) {
  device.Install(App("a"));
  int calls = 0;
  FileCalls file(File());
  file.before = [&calls](const std::string& function, int descriptor) {
    if (function != "fsync") return;
    ++calls;
    EXPECT_EQ(fcntl(descriptor, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    EXPECT_EQ(fcntl(descriptor, F_GETFL) & O_ACCMODE, O_RDWR);
  };
  EXPECT_EQ(Write(), With(0));
  EXPECT_EQ(calls, 1);
}

TEST_F(XmlCalls, SucceedWhenTheKindOfTheFileKnowsNoSync) {
  device.Install(App("a"));
  const std::string whole = Whole();
  for (const int error : {EINVAL, EROFS, ENOTSUP, ENOSYS}) {
    log.Forget();
    FileCalls file(File());
    file.Fail("fsync", error);
    EXPECT_EQ(Write(), With(0)) << error;
    EXPECT_EQ(ReadFile(File()), whole);
    EXPECT_EQ(log.Count("Finish"), 1);
    EXPECT_TRUE(log.Messages('E').empty());
  }
}

TEST_F(XmlCalls, WriteIntoAPipe) {
  device.Install(App("a"));
  const std::string whole = Whole();
  std::filesystem::remove(File());
  ASSERT_EQ(mkfifo(File().c_str(), 0600), 0);
  const int reader = open(File().c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  ASSERT_GE(reader, 0);
  EXPECT_EQ(Write(), With(0));
  std::string text(whole.size() + 1, '\0');
  const ssize_t size = read(reader, text.data(), text.size());
  close(reader);
  text.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
  EXPECT_EQ(text, whole);
  EXPECT_TRUE(log.Messages('E').empty());
}

TEST_F(XmlCalls, FailWhenAPieceWasLostAlthoughTheLastOneIsWritten) {
  // Errors alone, for the log has to find room as well.
  setenv("DLOG_LEVEL", "E", 1);
  InstallMany(500);
  rlimit limit = {};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
  rlimit narrow = limit;
  narrow.rlim_cur = 16384;
  const auto handler = signal(SIGXFSZ, SIG_IGN);
  FileCalls file(File());
  file.before = [&limit](const std::string& function, int) {
    if (function == "fflush") setrlimit(RLIMIT_FSIZE, &limit);
  };
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &narrow), 0);
  EXPECT_EQ(Write(), With(-1));
  setrlimit(RLIMIT_FSIZE, &limit);
  signal(SIGXFSZ, handler);
  EXPECT_EQ(log.Messages('E'), std::vector<std::string>{"failed to write xml file"});
}

TEST_F(XmlCalls, FailWhenOneOfThemDoes) {
  device.Install(App("a"));
  const std::string whole = Whole();
  const std::pair<const char*, int> failures[] = {
      {"fflush", ENOSPC}, {"fsync", EIO},  {"fsync", ENOSPC}, {"fsync", EDQUOT},
      {"fsync", EBADF},   {"fclose", EIO}, {"fclose", EDQUOT}};
  for (const auto& [function, error] : failures) {
    log.Forget();
    std::vector<std::string> calls;
    {
      FileCalls file(File());
      file.Fail(function, error);
      file.before = [&calls](const std::string& called, int) { calls.push_back(called); };
      EXPECT_EQ(Write(), With(-1)) << function << ' ' << error;
    }
    EXPECT_EQ(calls, (std::vector<std::string>{"fflush", "fsync", "fclose"})) << function;
    EXPECT_EQ(log.Messages('E'), std::vector<std::string>{"failed to write xml file"}) << function;
    EXPECT_EQ(Whole(), whole);
  }
}

}  // namespace
