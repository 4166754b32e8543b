// SPDX-License-Identifier: Apache-2.0
// The log: its lines, its level and its file.
#include <errno.h>
#include <string.h>

#include "log_in_a_child.h"
#include "threads.h"

namespace {

// The log with its formats unchecked by the compiler.
int (*const g_print_unchecked)(log_priority, const char*, const char*, ...) = dlog_print;

bool PrintAll() {
  for (int prio = DLOG_VERBOSE; prio <= DLOG_FATAL; ++prio) {
    dlog_print(static_cast<log_priority>(prio), "TAG", "%d", prio);
  }
  return true;
}

TEST_F(Log, WritesPriorityTagProcessAndText) {
  EXPECT_EQ(StderrOf({}, [] { return dlog_print(DLOG_ERROR, "TAG", "%s %d", "text", 5) > 0; }),
            "E/TAG(PID): text 5\n");
}

TEST_F(Log, ReturnsTheBytesWritten) {
  EXPECT_EQ(StderrOf({},
                     [] {
                       const std::string line = "E/TAG(" + std::to_string(getpid()) + "): text\n";
                       return dlog_print(DLOG_ERROR, "TAG", "text") ==
                              static_cast<int>(line.size());
                     }),
            "E/TAG(PID): text\n");
}

TEST_F(Log, StartsAtWarningsWithoutALevel) {
  EXPECT_EQ(StderrOf({}, PrintAll), "W/TAG(PID): 5\nE/TAG(PID): 6\nF/TAG(PID): 7\n");
  EXPECT_EQ(StderrOf({{"DLOG_LEVEL", ""}}, PrintAll),
            "W/TAG(PID): 5\nE/TAG(PID): 6\nF/TAG(PID): 7\n");
}

TEST_F(Log, WritesTheLevelAndAllAboveIt) {
  const std::string lines[] = {"V/TAG(PID): 2\n", "D/TAG(PID): 3\n", "I/TAG(PID): 4\n",
                               "W/TAG(PID): 5\n", "E/TAG(PID): 6\n", "F/TAG(PID): 7\n"};
  const std::string letters = "VDIWEFS";
  for (size_t level = 0; level < letters.size(); ++level) {
    std::string expected;
    for (size_t i = level; i < std::size(lines); ++i) expected += lines[i];
    EXPECT_EQ(StderrOf({{"DLOG_LEVEL", letters.substr(level, 1)}}, PrintAll), expected);
  }
}

TEST_F(Log, SaysAnUnknownLevelOnceAndTakesTheDefault) {
  for (const char* level : {"X", "w", "WARN", "5", " "}) {
    EXPECT_EQ(StderrOf({{"DLOG_LEVEL", level}}, PrintAll),
              std::string("W/DLOG(PID): DLOG_LEVEL is \"") + level +
                  "\", none of VDIWEFS; W is used\n"
                  "W/TAG(PID): 5\nE/TAG(PID): 6\nF/TAG(PID): 7\n");
  }
}

TEST_F(Log, DoesNotFormatAFilteredLine) {
  EXPECT_EQ(StderrOf({},
                     [] {
                       // To format this would be to read address 1.
                       const char* nowhere = reinterpret_cast<const char*>(1);
                       return dlog_print(DLOG_INFO, "TAG", "%s", nowhere) == 0;
                     }),
            "");
}

TEST_F(Log, WritesToTheEndOfAFileToo) {
  std::ofstream(Path("log")) << "earlier\n";
  EXPECT_EQ(StderrOf({{"DLOG_FILE", Path("log")}}, PrintAll),
            "W/TAG(PID): 5\nE/TAG(PID): 6\nF/TAG(PID): 7\n");
  EXPECT_EQ(WithoutPid(TextOf(Path("log"))),
            "earlier\nW/TAG(PID): 5\nE/TAG(PID): 6\nF/TAG(PID): 7\n");
}

TEST_F(Log, WritesToTheFileWithoutAStandardError) {
  StderrOf({{"DLOG_FILE", Path("log")}}, [] {
    dlog_print(DLOG_ERROR, "TAG", "first");
    close(STDERR_FILENO);
    return dlog_print(DLOG_ERROR, "TAG", "second") > 0;
  });
  EXPECT_EQ(WithoutPid(TextOf(Path("log"))), "E/TAG(PID): first\nE/TAG(PID): second\n");
}

TEST_F(Log, FailsWithoutAnywhereToWrite) {
  StderrOf({}, [] {
    close(STDERR_FILENO);
    return dlog_print(DLOG_ERROR, "TAG", "text") < 0;
  });
}

TEST_F(Log, SaysOnceThatAFileCannotBeOpenedAndGoesOn) {
  const std::string path = Path("missing/log");
  EXPECT_EQ(StderrOf({{"DLOG_FILE", path}}, PrintAll),
            "W/DLOG(PID): cannot open DLOG_FILE \"" + path +
                "\": No such file or directory\n"
                "W/TAG(PID): 5\nE/TAG(PID): 6\nF/TAG(PID): 7\n");
}

TEST_F(Log, ReadsItsLevelAndFileOnce) {
  EXPECT_EQ(StderrOf({},
                     [&] {
                       dlog_print(DLOG_ERROR, "TAG", "first");
                       setenv("DLOG_LEVEL", "S", 1);
                       setenv("DLOG_FILE", Path("late").c_str(), 1);
                       return dlog_print(DLOG_ERROR, "TAG", "second") > 0;
                     }),
            "E/TAG(PID): first\nE/TAG(PID): second\n");
  EXPECT_FALSE(std::filesystem::exists(Path("late")));
}

TEST_F(Log, WritesLongLinesWhole) {
  // Around the size of the buffer on the stack, and far beyond it.
  for (const size_t length : {900, 1000, 1005, 1010, 1015, 1020, 1023, 1024, 1025, 2000, 300000}) {
    const std::string text(length, 'x');
    EXPECT_EQ(StderrOf({}, [&] { return dlog_print(DLOG_ERROR, "TAG", "%s", text.c_str()) > 0; }),
              "E/TAG(PID): " + text + "\n");
    EXPECT_EQ(StderrOf({}, [&] { return dlog_print(DLOG_ERROR, text.c_str(), "text") > 0; }),
              "E/" + text + "(PID): text\n");
  }
}

TEST_F(Log, TakesAMissingTagAsEmptyAndRefusesAMissingFormat) {
  const char* none = nullptr;
  EXPECT_EQ(StderrOf({},
                     [&] {
                       return dlog_print(DLOG_ERROR, none, "text") > 0 &&
                              g_print_unchecked(DLOG_ERROR, "TAG", none) < 0;
                     }),
            "E/(PID): text\n");
}

TEST_F(Log, RefusesWhatIsNoPriorityOfALine) {
  EXPECT_EQ(StderrOf({{"DLOG_LEVEL", "V"}},
                     [] {
                       for (const int prio : {0, 1, 8}) {
                         if (dlog_print(static_cast<log_priority>(prio), "T", "text") >= 0) {
                           return false;
                         }
                       }
                       return true;
                     }),
            "");
}

TEST_F(Log, KeepsErrnoAndCanFormatIt) {
  const std::string path = Path("missing/log");
  for (const std::string& fill : {std::string(), std::string(5000, 'x')}) {
    const std::string text = StderrOf({{"DLOG_FILE", path}}, [&] {
      errno = EDOM;
      dlog_print(DLOG_INFO, "TAG", "filtered");
      const bool kept_by_filter = errno == EDOM;
      g_print_unchecked(DLOG_ERROR, "TAG", "%s%m", fill.c_str());
      close(STDERR_FILENO);
      const bool failed = dlog_print(DLOG_ERROR, "TAG", "text") < 0;
      return kept_by_filter && failed && errno == EDOM;
    });
    EXPECT_NE(text.find("E/TAG(PID): " + fill + strerror(EDOM) + "\n"), std::string::npos);
  }
}

int PrintThroughAList(log_priority prio, const char* fmt, ...)
    __attribute__((format(printf, 2, 3)));
int PrintThroughAList(log_priority prio, const char* fmt, ...) {
  va_list ap;
  va_start(ap, fmt);
  const int result = dlog_vprint(prio, "TAG", fmt, ap);
  va_end(ap);
  return result;
}

TEST_F(Log, TakesAnArgumentList) {
  const std::string text(5000, 'x');
  EXPECT_EQ(StderrOf({},
                     [&] {
                       return PrintThroughAList(DLOG_INFO, "%d", 1) == 0 &&
                              PrintThroughAList(DLOG_WARN, "%d %s", 2, text.c_str()) > 0;
                     }),
            "W/TAG(PID): 2 " + text + "\n");
}

TEST_F(Log, KeepsLinesOfThreadsAndProcessesApart) {
  constexpr int kProcesses = 4;
  constexpr int kThreads = 4;
  constexpr int kLines = 100;
  pid_t children[kProcesses] = {};
  for (int process = 0; process < kProcesses; ++process) {
    children[process] = Start({{"DLOG_FILE", Path("log")}}, [&] {
      const Threads threads(kThreads, [&](int thread) {
        const char letter = static_cast<char>('a' + process * kThreads + thread);
        const std::string text(static_cast<size_t>(500 * (thread + 1)), letter);
        for (int i = 0; i < kLines; ++i) dlog_print(DLOG_ERROR, "TAG", "%s", text.c_str());
      });
      return true;
    });
  }
  for (const pid_t child : children) Finish(child);

  for (const char* sink : {"log", "stderr"}) {
    std::map<std::string, int> lines;
    std::istringstream stream(TextOf(Path(sink)));
    for (std::string line; std::getline(stream, line);) ++lines[line];
    EXPECT_EQ(lines.size(), static_cast<size_t>(kProcesses * kThreads)) << sink;
    for (const auto& [line, count] : lines) EXPECT_EQ(count, kLines) << sink << ": " << line;
  }
}

}  // namespace
