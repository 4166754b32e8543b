// SPDX-License-Identifier: Apache-2.0
//
// posix_spawn with pipes, and a deadline for the program.
#include "program.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <stdexcept>

namespace test {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kDeadline(40);

class Pipe {
 public:
  Pipe() {
    if (pipe2(m_ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  }
  ~Pipe() {
    CloseWriter();
    close(m_ends[0]);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  int Reader() const { return m_ends[0]; }
  int Writer() const { return m_ends[1]; }
  void CloseWriter() {
    if (m_ends[1] >= 0) close(m_ends[1]);
    m_ends[1] = -1;
  }

 private:
  int m_ends[2];
};

// A started process, ended and waited for at the latest when it goes out of scope.
class Process {
 public:
  Process(const Command& command, int out, int err) {
    std::vector<char*> arguments{const_cast<char*>(command.program.c_str())};
    for (const std::string& text : command.arguments) {
      arguments.push_back(const_cast<char*>(text.c_str()));
    }
    arguments.push_back(nullptr);
    std::vector<std::string> assignments;
    for (const auto& [name, value] : command.environment) assignments.push_back(name + "=" + value);
    std::vector<char*> environment;
    for (std::string& text : assignments) environment.push_back(text.data());
    environment.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, out, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err, STDERR_FILENO);
    const int error = posix_spawn(&m_id, command.program.c_str(), &actions, nullptr,
                                  arguments.data(), environment.data());
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::runtime_error(command.program + ": " + std::strerror(error));
  }
  ~Process() {
    if (m_id <= 0) return;
    kill(m_id, SIGKILL);
    Wait();
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  int Wait() {
    int status = 0;
    while (waitpid(m_id, &status, 0) < 0 && errno == EINTR) continue;
    m_id = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }

 private:
  pid_t m_id = -1;
};

// Reads both pipes until their writers are gone.
void Gather(pollfd (&ends)[2], std::string* const (&texts)[2]) {
  const Clock::time_point deadline = Clock::now() + kDeadline;
  while (ends[0].fd >= 0 || ends[1].fd >= 0) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    if (left <= 0 || (poll(ends, 2, static_cast<int>(left)) < 0 && errno != EINTR)) {
      throw std::runtime_error("the program does not end; it wrote:\n" + *texts[0] + *texts[1]);
    }
    for (int i = 0; i < 2; ++i) {
      if (ends[i].fd < 0 || ends[i].revents == 0) continue;
      char buffer[4096];
      const ssize_t size = read(ends[i].fd, buffer, sizeof(buffer));
      if (size > 0) {
        texts[i]->append(buffer, static_cast<std::size_t>(size));
      } else {
        ends[i].fd = -1;
      }
    }
  }
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const Result& result) {
  return stream << "status " << result.status << "\n--- out\n"
                << result.out << "--- err\n"
                << result.err << "---";
}

Result RunCommand(const Command& command) {
  Pipe out;
  Pipe err;
  Process process(command, command.out < 0 ? out.Writer() : command.out, err.Writer());
  out.CloseWriter();
  err.CloseWriter();

  Result result;
  pollfd ends[2] = {{out.Reader(), POLLIN, 0}, {err.Reader(), POLLIN, 0}};
  Gather(ends, {&result.out, &result.err});
  result.status = process.Wait();
  return result;
}

}  // namespace test
