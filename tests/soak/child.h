// SPDX-License-Identifier: Apache-2.0
//
// A child of the test's process, forked and not started anew.
#ifndef TESTS_SOAK_CHILD_H_
#define TESTS_SOAK_CHILD_H_

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <exception>
#include <stdexcept>
#include <string>

namespace test {

class ForkedChild {
 public:
  // A child that hangs is ended after this time.
  static constexpr unsigned kSeconds = 50;

  // The child runs work, which throws what is wrong.
  template <typename Work>
  explicit ForkedChild(const Work& work) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("pipe");
    m_id = fork();
    if (m_id == 0) {
      alarm(kSeconds);
      close(ends[0]);
      std::string complaint;
      try {
        work();
      } catch (const std::exception& error) {
        complaint = error.what();
      }
      const ssize_t told = write(ends[1], complaint.data(), complaint.size());
      _exit(told == 0 ? 0 : 1);
    }
    close(ends[1]);
    m_complaints = ends[0];
  }
  ~ForkedChild() {
    if (m_id != -1) kill(m_id, SIGKILL);
    Complaint();
  }
  ForkedChild(const ForkedChild&) = delete;
  ForkedChild& operator=(const ForkedChild&) = delete;

  pid_t Id() const { return m_id; }

  // Waits for its end. What was wrong; empty when nothing was.
  std::string Complaint() {
    if (m_id == -1) return "";
    std::string complaint;
    char bytes[256];
    for (ssize_t count; (count = read(m_complaints, bytes, sizeof(bytes))) > 0;) {
      complaint.append(bytes, static_cast<std::size_t>(count));
    }
    close(m_complaints);
    int status = 0;
    waitpid(m_id, &status, 0);
    m_id = -1;
    if (WIFSIGNALED(status)) return "signal " + std::to_string(WTERMSIG(status));
    return complaint.empty() && status != 0 ? "status " + std::to_string(status) : complaint;
  }

 private:
  pid_t m_id = -1;
  int m_complaints = -1;
};

inline void Require(bool is_right, const std::string& what) {
  if (!is_right) throw std::runtime_error(what);
}

}  // namespace test

#endif  // TESTS_SOAK_CHILD_H_
