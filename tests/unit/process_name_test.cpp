// SPDX-License-Identifier: Apache-2.0
//
// The name of a process, from each form of command line.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "support/device.h"

namespace {

class ProcessName : public ::testing::Test {
 protected:
  // The name that a process finds that was started as command.
  static std::string Of(const std::string& command) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    const pid_t process = fork();
    if (process == 0) {
      dup2(ends[1], STDOUT_FILENO);
      execl(PROCESS_NAME, command.c_str(), nullptr);
      _exit(127);
    }
    close(ends[1]);
    std::string name;
    char buffer[4096];
    ssize_t length;
    while ((length = read(ends[0], buffer, sizeof(buffer))) > 0) {
      name.append(buffer, static_cast<std::size_t>(length));
    }
    close(ends[0]);
    int status = 0;
    waitpid(process, &status, 0);
    EXPECT_EQ(status, 0);
    return name.empty() ? name : name.substr(0, name.size() - 1);
  }
  static std::string Program() { return std::filesystem::canonical(PROCESS_NAME).string(); }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(ProcessName, IsTheDirectoryAboveBinForAnInstalledApp) {
  EXPECT_EQ(Of("/opt/usr/apps/org.tizen.foo/bin/foo"), "org.tizen.foo");
  EXPECT_TRUE(log.Has("process name is org.tizen.foo."));
  EXPECT_EQ(Of("/apps/a/bin/b/bin/c"), "a");
}

TEST_F(ProcessName, IsTheWholeOfWhatStandsBeforeBinWhenThatHasNoLastPart) {
  EXPECT_EQ(Of("name/bin/x/apps/y"), "name");
  EXPECT_EQ(Of("/opt//bin/x/apps/y"), "/opt/");
  EXPECT_EQ(Of("/bin/apps/x"), "");
}

TEST_F(ProcessName, IsThePathOfTheProgramForAnyOtherCommand) {
  EXPECT_EQ(Of("/usr/bin/foo"), Program());
  EXPECT_TRUE(log.Has("NOT contain /apps/ or /bin/"));
  EXPECT_TRUE(log.Has("the path name is " + Program() + "."));
  EXPECT_EQ(Of("/opt/apps/foo"), Program());
  EXPECT_EQ(Of("foo"), Program());
}

TEST_F(ProcessName, IsFoundInTheFirstArgumentAlone) {
  EXPECT_EQ(Of(std::string(1500, 'x') + "/apps/y/bin/z"), Program());
}

}  // namespace
