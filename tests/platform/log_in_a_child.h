// SPDX-License-Identifier: Apache-2.0
// A fixture for tests of the log: its level and file are read once in a process, so every test
// logs in a child process of its own and looks at what that left behind.
#ifndef TAV_TESTS_PLATFORM_LOG_IN_A_CHILD_H_
#define TAV_TESTS_PLATFORM_LOG_IN_A_CHILD_H_

#include <dlog.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <string>

using Environment = std::map<std::string, std::string>;

class Log : public testing::Test {
 protected:
  Log() {
    std::string name = testing::TempDir() + "tav-log-XXXXXX";
    EXPECT_NE(mkdtemp(name.data()), nullptr);
    m_directory = name;
    unsetenv("DLOG_FILE");
    unsetenv("DLOG_LEVEL");
  }
  ~Log() override { std::filesystem::remove_all(m_directory); }

  std::string Path(const char* name) const { return m_directory / name; }

  static std::string TextOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
  }

  pid_t Start(const Environment& environment, const std::function<bool()>& body) const {
    const pid_t child = fork();
    if (child != 0) return child;
    for (const auto& [name, value] : environment) setenv(name.c_str(), value.c_str(), 1);
    const int err = open(Path("stderr").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    dup2(err, STDERR_FILENO);
    _exit(body() ? 0 : 1);
  }

  static void Finish(pid_t child) {
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }

  // Standard error of a child that does `body`, which returns whether all went well; the child's
  // process id reads as PID.
  std::string StderrOf(const Environment& environment, const std::function<bool()>& body) {
    std::filesystem::remove(Path("stderr"));
    const pid_t child = Start(environment, body);
    Finish(child);
    m_pid = std::to_string(child);
    return WithoutPid(TextOf(Path("stderr")));
  }

  std::string WithoutPid(std::string text) const {
    const std::string mark = "(" + m_pid + ")";
    for (size_t at = 0; (at = text.find(mark, at)) != std::string::npos;) {
      text.replace(at, mark.size(), "(PID)");
    }
    return text;
  }

 private:
  std::filesystem::path m_directory;
  std::string m_pid;
};

#endif  // TAV_TESTS_PLATFORM_LOG_IN_A_CHILD_H_
