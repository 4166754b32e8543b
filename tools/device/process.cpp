// SPDX-License-Identifier: Apache-2.0
//
// fork and exec. The parent may have threads: between the two the child calls only what is safe
// there, and all texts are made before.
#include "device/process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <thread>

namespace tav_device {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kNotFound = 127;
constexpr int kNoProgram = 126;
constexpr int kSignalled = 128;

class Pipe {
 public:
  Pipe() {
    if (pipe2(m_ends, O_CLOEXEC) != 0) {
      throw DeviceError(std::string("no pipe: ") + std::strerror(errno));
    }
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

// Texts as exec wants them.
class TextArray {
 public:
  explicit TextArray(std::vector<std::string> texts) : m_texts(std::move(texts)) {
    for (std::string& text : m_texts) m_pointers.push_back(text.data());
    m_pointers.push_back(nullptr);
  }
  char* const* Get() const { return m_pointers.data(); }

 private:
  std::vector<std::string> m_texts;
  std::vector<char*> m_pointers;
};

std::vector<std::string> Assignments(const Launch& launch) {
  std::vector<std::string> assignments;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string assignment = *entry;
    if (launch.environment.count(assignment.substr(0, assignment.find('='))) == 0) {
      assignments.push_back(assignment);
    }
  }
  for (const auto& [name, value] : launch.environment) {
    if (value) assignments.push_back(name + "=" + *value);
  }
  return assignments;
}

// Undoes what these programs do to their own signals; what else is ignored stays so, as nohup
// wants it.
void ResetSignals() {
  std::signal(SIGPIPE, SIG_DFL);
  std::signal(SIGXFSZ, SIG_DFL);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
}

void GoToTheBackground(const char* output_file) {
  setsid();  // the terminal's signals are for the command in front
  const int null = open("/dev/null", O_RDONLY | O_CLOEXEC);
  if (null >= 0) dup2(null, STDIN_FILENO);
  if (*output_file != '\0') {
    const int file = open(output_file, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (file >= 0) dup2(file, STDERR_FILENO);
  }
  dup2(STDERR_FILENO, STDOUT_FILENO);
}

// Ends with the program's start, or with the error's number written to `failure`.
[[noreturn]] void RunInChild(const Launch& launch, pid_t parent, char* const* arguments,
                             char* const* environment, int failure) {
  ResetSignals();
  prctl(PR_SET_PDEATHSIG, launch.death_signal);
  if (getppid() != parent) _exit(kNotFound);  // it ended before it could be watched
  if (launch.is_background) GoToTheBackground(launch.output_file.c_str());
  if (launch.kept_descriptor >= 0) fcntl(launch.kept_descriptor, F_SETFD, 0);
  execvpe(arguments[0], arguments, environment);
  const int error_number = errno;
  const ssize_t written = write(failure, &error_number, sizeof(error_number));
  _exit(written < 0 ? kNoProgram : kNotFound);
}

std::optional<std::string> ReadLine(int descriptor, std::chrono::milliseconds time) {
  const Clock::time_point deadline = Clock::now() + time;
  std::string line;
  while (true) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    pollfd end = {descriptor, POLLIN, 0};
    if (left <= 0 || (poll(&end, 1, static_cast<int>(left)) < 0 && errno != EINTR)) {
      return std::nullopt;
    }
    if (end.revents == 0) continue;
    char c = 0;
    if (read(descriptor, &c, 1) != 1) return std::nullopt;
    if (c == '\n') return line;
    line += c;
  }
}

}  // namespace

StartError::StartError(const std::string& program, int error_number)
    : DeviceError(program + ": " + std::strerror(error_number)),
      m_status(error_number == ENOENT ? kNotFound : kNoProgram) {}

bool StartError::IsMissing() const {
  return m_status == kNotFound;
}

Child::Child(const Launch& launch) {
  Pipe failure;
  const TextArray arguments(launch.arguments);
  const TextArray environment(Assignments(launch));
  const pid_t parent = getpid();
  m_id = fork();
  if (m_id < 0) throw DeviceError(std::string("no new process: ") + std::strerror(errno));
  if (m_id == 0) {
    RunInChild(launch, parent, arguments.Get(), environment.Get(), failure.Writer());
  }

  failure.CloseWriter();
  int error_number = 0;
  ssize_t size = 0;
  do {
    size = read(failure.Reader(), &error_number, sizeof(error_number));
  } while (size < 0 && errno == EINTR);
  if (size == static_cast<ssize_t>(sizeof(error_number))) {
    Wait();
    throw StartError(launch.arguments.at(0), error_number);
  }
}

Child::~Child() {
  Signal(SIGKILL);
  Wait();
}

// Stores how it ended, if it has.
void Child::Ask(int options) {
  int status = 0;
  const pid_t ended = waitpid(m_id, &status, options);
  if (ended == m_id)
    m_status = WIFEXITED(status) ? WEXITSTATUS(status) : kSignalled + WTERMSIG(status);
  if (ended < 0 && errno != EINTR) m_status = kNotFound;  // somebody else took its status
}

std::optional<int> Child::Status() {
  if (!m_status) Ask(WNOHANG);
  return m_status;
}

void Child::Signal(int signal) {
  if (!m_status) kill(m_id, signal);
}

int Child::Wait() {
  while (!m_status) Ask(0);
  return *m_status;
}

std::optional<int> Child::WaitFor(std::chrono::milliseconds time) {
  const Clock::time_point deadline = Clock::now() + time;
  while (!Status() && Clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return m_status;
}

int Child::End(std::chrono::milliseconds time) {
  // A stopped one could not end. Not after the other: a sanitizer stops its process's threads at
  // the end, and would wait for one that was sent on.
  Signal(SIGCONT);
  Signal(SIGTERM);
  if (!WaitFor(time)) Signal(SIGKILL);
  return Wait();
}

ReadyChild StartUntilReady(Launch launch, const std::string& option,
                           std::chrono::milliseconds time) {
  const std::string program = launch.arguments.at(0);
  Pipe ready;
  launch.arguments.push_back(option + "=" + std::to_string(ready.Writer()));
  launch.is_background = true;
  launch.kept_descriptor = ready.Writer();
  auto child = std::make_unique<Child>(launch);
  ready.CloseWriter();
  const std::optional<std::string> line = ReadLine(ready.Reader(), time);
  if (!line) {
    const bool is_slow = child->IsRunning() && !child->WaitFor(time / 10);
    throw DeviceError(program + (is_slow ? " is not ready in time" : " ended before it was ready"));
  }
  return {std::move(child), *line};
}

}  // namespace tav_device
