// SPDX-License-Identifier: Apache-2.0
// The log: where lines may go, and where never.
#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <deque>

#include "log_in_a_child.h"

namespace {

// How much the next writes take: no more bytes than so many, or -1 for a signal that comes first.
std::deque<int> g_write_results;

}  // namespace

// In the C library's place, which does the rest.
extern "C" ssize_t write(int file, const void* data, size_t size) {
  if (!g_write_results.empty()) {
    const int result = g_write_results.front();
    g_write_results.pop_front();
    if (result == 0) return 0;
    if (result < 0) {
      errno = EINTR;
      return -1;
    }
    size = std::min(size, static_cast<size_t>(result));
  }
  return syscall(SYS_write, file, data, size);
}

namespace {

bool Say(const char* text) {
  return dlog_print(DLOG_ERROR, "TAG", "%s", text) > 0;
}

class LogSinks : public Log {
 protected:
  // Opens a file of the host's at the lowest number that is free.
  int OpenData(int flags) const {
    return open(Path("data").c_str(), flags | O_WRONLY | O_CREAT, 0600);
  }

  // Puts another file in the place of a descriptor, as a redirection does.
  void Redirect(const char* name, int descriptor) const {
    const int file = open(Path(name).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    dup2(file, descriptor);
    close(file);
  }

  // Runs a host that opens the data and logs a line, with redirections of the shell's.
  int Run(const std::string& redirections) const {
    setenv("PROGRAM", HOST_PROGRAM, 1);
    setenv("PLACE", Path("").c_str(), 1);
    return system((R"("$PROGRAM" "$PLACE/data" )" + redirections).c_str());
  }
};

TEST_F(LogSinks, AreNotAFileThatTookTheNumberOfStandardErrorOver) {
  for (const int flags : {0, O_APPEND, O_CLOEXEC, O_APPEND | O_CLOEXEC}) {
    EXPECT_EQ(StderrOf({},
                       [&] {
                         const bool said = Say("first");
                         close(STDERR_FILENO);
                         return said && OpenData(flags) == STDERR_FILENO && !Say("second");
                       }),
              "E/TAG(PID): first\n");
    EXPECT_EQ(TextOf(Path("data")), "") << flags;
  }
}

TEST_F(LogSinks, AreNotAFileThatTookItOverBeforeTheFirstLine) {
  for (const int flags : {0, O_CLOEXEC, O_APPEND | O_CLOEXEC}) {
    StderrOf({}, [&] {
      close(STDERR_FILENO);
      return OpenData(flags) == STDERR_FILENO && !Say("text");
    });
    EXPECT_EQ(TextOf(Path("data")), "") << flags;
  }
}

TEST_F(LogSinks, AreNotAFileThatTookItOverInAProgramStartedWithoutOne) {
  EXPECT_EQ(Run(R"(2>&- >"$PLACE/out")"), 0);
  EXPECT_EQ(TextOf(Path("out")).substr(0, 3), "no ");
  EXPECT_EQ(TextOf(Path("data")), "");
}

TEST_F(LogSinks, AreNotASocketOrPipeThatTookItOver) {
  for (const bool is_pipe : {true, false}) {
    StderrOf({}, [&] {
      Say("first");
      close(STDERR_FILENO);
      int ends[2] = {-1, -1};
      // The writing end of a pipe comes second.
      const int hole = is_pipe ? open("/dev/null", O_RDONLY | O_CLOEXEC) : -1;
      if ((is_pipe ? pipe(ends) : socketpair(AF_UNIX, SOCK_STREAM, 0, ends)) != 0) return false;
      if (is_pipe) dup2(ends[1], hole);
      if (fcntl(STDERR_FILENO, F_GETFD) < 0 || Say("second")) return false;
      char buffer[100];
      const int reader = is_pipe ? ends[0] : ends[1];
      fcntl(reader, F_SETFL, O_NONBLOCK);
      return read(reader, buffer, sizeof buffer) < 0 && errno == EAGAIN;
    });
  }
}

TEST_F(LogSinks, AreNotAFileThatTookTheNumberOfTheLogFileOver) {
  EXPECT_EQ(StderrOf({{"DLOG_FILE", Path("log")}},
                     [&] {
                       Say("first");
                       const int next = open("/dev/null", O_RDONLY | O_CLOEXEC);
                       close(next);
                       close(next - 1);  // opened by the first line
                       return OpenData(O_APPEND) == next - 1 && Say("second");
                     }),
            "E/TAG(PID): first\nE/TAG(PID): second\n");
  EXPECT_EQ(WithoutPid(TextOf(Path("log"))), "E/TAG(PID): first\n");
  EXPECT_EQ(TextOf(Path("data")), "");
}

TEST_F(LogSinks, FollowARedirectionOfStandardOutputAndErrorToOneFile) {
  EXPECT_EQ(StderrOf({},
                     [&] {
                       Say("first");
                       Redirect("both", STDOUT_FILENO);
                       dup2(STDOUT_FILENO, STDERR_FILENO);
                       return Say("second");
                     }),
            "E/TAG(PID): first\n");
  EXPECT_EQ(WithoutPid(TextOf(Path("both"))), "E/TAG(PID): second\n");
}

TEST_F(LogSinks, ComeBackWithStandardErrorAfterARedirectionOfItAlone) {
  EXPECT_EQ(StderrOf({},
                     [&] {
                       Say("first");
                       const int before = dup(STDERR_FILENO);
                       Redirect("capture", STDERR_FILENO);
                       const bool said = Say("second");
                       dup2(before, STDERR_FILENO);
                       return !said && Say("third");
                     }),
            "E/TAG(PID): first\nE/TAG(PID): third\n");
  EXPECT_EQ(TextOf(Path("capture")), "");
}

TEST_F(LogSinks, AreTheDeviceThatStandardErrorWasRedirectedToBeforeTheFirstLine) {
  StderrOf({}, [] {
    dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
    return Say("text");
  });
}

TEST_F(LogSinks, GetALineWholeThatIsWrittenInPieces) {
  EXPECT_EQ(StderrOf({},
                     [] {
                       g_write_results = {0, -1, 5, -1, 7};
                       const bool is_refused = !Say("first");
                       return is_refused && Say("second") && g_write_results.empty();
                     }),
            "E/TAG(PID): second\n");
}

TEST_F(LogSinks, AreThePipeThatStandardErrorWasRedirectedToBeforeTheFirstLine) {
  StderrOf({}, [] {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return false;
    dup2(ends[1], STDERR_FILENO);
    if (!Say("text")) return false;
    char line[100] = "";
    return read(ends[0], line, sizeof line - 1) > 0 && std::strstr(line, "): text\n") != nullptr;
  });
}

TEST_F(LogSinks, AreTheStandardErrorThatTheProgramStartedWith) {
  EXPECT_EQ(Run(R"(2>"$PLACE/err" >"$PLACE/out")"), 0);
  EXPECT_EQ(TextOf(Path("out")).substr(0, 4), "yes ");
  EXPECT_NE(TextOf(Path("err")).find("E/TAG("), std::string::npos);
}

TEST_F(LogSinks, MayBeACharacterDevice) {
  EXPECT_EQ(StderrOf({{"DLOG_FILE", "/dev/null"}}, [] { return Say("text"); }),
            "E/TAG(PID): text\n");
  StderrOf({{"DLOG_FILE", "/dev/null"}}, [] {
    Say("first");
    close(STDERR_FILENO);
    return Say("second");
  });
  EXPECT_EQ(StderrOf({{"DLOG_FILE", "/dev/full"}},
                     [] {
                       const bool said = Say("first");
                       close(STDERR_FILENO);
                       return said && !Say("second");
                     }),
            "E/TAG(PID): first\n");
}

TEST_F(LogSinks, AreNoPipeSocketOrDirectoryInPlaceOfTheLogFile) {
  const std::string place = Path("log");
  const std::string refusal = "W/DLOG(PID): cannot open DLOG_FILE \"" + place + "\": ";
  const auto said = [&] { return StderrOf({{"DLOG_FILE", place}}, [] { return Say("text"); }); };
  const std::string neither = "it is neither a regular file nor a character device\n";

  ASSERT_EQ(mkfifo(place.c_str(), 0600), 0);
  EXPECT_EQ(said(), refusal + neither + "E/TAG(PID): text\n");
  const int reader = open(place.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  EXPECT_EQ(said(), refusal + neither + "E/TAG(PID): text\n");
  char nothing = 0;
  EXPECT_EQ(read(reader, &nothing, 1), 0);
  close(reader);
  std::filesystem::remove(place);

  const int server = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address = {AF_UNIX, ""};
  ASSERT_LT(place.size(), sizeof address.sun_path);
  std::memcpy(address.sun_path, place.c_str(), place.size() + 1);
  ASSERT_EQ(bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  EXPECT_EQ(said(), refusal + neither + "E/TAG(PID): text\n");
  close(server);
  std::filesystem::remove(place);

  std::filesystem::create_directory(place);
  EXPECT_EQ(said(), refusal + "Is a directory\nE/TAG(PID): text\n");
}

int g_signals = 0;

// A child whose standard error is a pipe that nobody reads.
bool WithoutAReader(const std::function<bool()>& body) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return false;
  dup2(ends[1], STDERR_FILENO);
  close(ends[0]);
  return body();
}

bool IsSigpipePending() {
  sigset_t pending;
  sigpending(&pending);
  return sigismember(&pending, SIGPIPE) == 1;
}

bool IsSigpipeBlocked() {
  sigset_t blocked;
  pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
  return sigismember(&blocked, SIGPIPE) == 1;
}

void BlockSigpipe() {
  sigset_t sigpipe;
  sigemptyset(&sigpipe);
  sigaddset(&sigpipe, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &sigpipe, nullptr);
}

TEST_F(LogSinks, DoNotEndTheHostWhenAPipeHasNoReader) {
  StderrOf({}, [] {
    return WithoutAReader(
        [] { return !Say("text") && !IsSigpipePending() && !IsSigpipeBlocked(); });
  });
  StderrOf({{"DLOG_FILE", Path("log")}}, [] { return WithoutAReader([] { return Say("text"); }); });
  EXPECT_NE(TextOf(Path("log")).find("): text\n"), std::string::npos);
}

TEST_F(LogSinks, DoNotEndTheHostWhenThePipeHasNoReaderForAComplaintOfTheLogs) {
  StderrOf({{"DLOG_LEVEL", "?"}, {"DLOG_FILE", "/missing/log"}},
           [] { return WithoutAReader([] { return !Say("text"); }); });
}

TEST_F(LogSinks, DoNotDisturbTheHostsOwnSigpipe) {
  StderrOf({}, [] {
    signal(SIGPIPE, [](int) { ++g_signals; });
    return WithoutAReader([] {
      Say("text");
      if (g_signals != 0) return false;
      raise(SIGPIPE);  // the handler is in its place
      return g_signals == 1;
    });
  });
  StderrOf({}, [] {
    signal(SIGPIPE, SIG_IGN);
    return WithoutAReader(
        [] { return !Say("text") && !IsSigpipePending() && signal(SIGPIPE, SIG_DFL) == SIG_IGN; });
  });
}

TEST_F(LogSinks, LeaveASigpipePendingThatWasPendingBeforeAndNoOther) {
  StderrOf({}, [] {
    BlockSigpipe();
    return WithoutAReader([] {
      if (Say("first") || IsSigpipePending()) return false;
      raise(SIGPIPE);
      return !Say("second") && IsSigpipePending() && IsSigpipeBlocked();
    });
  });
}

TEST_F(LogSinks, GetTheLineOfAThreadThatIsCancelled) {
  EXPECT_EQ(StderrOf({{"DLOG_FILE", Path("log")}},
                     [] {
                       pthread_t thread;
                       const auto run = [](void*) -> void* {
                         pthread_cancel(pthread_self());
                         Say("text");
                         pthread_testcancel();
                         return nullptr;
                       };
                       void* result = nullptr;
                       return pthread_create(&thread, nullptr, run, nullptr) == 0 &&
                              pthread_join(thread, &result) == 0 && result == PTHREAD_CANCELED;
                     }),
            "E/TAG(PID): text\n");
  EXPECT_EQ(WithoutPid(TextOf(Path("log"))), "E/TAG(PID): text\n");
}

}  // namespace
