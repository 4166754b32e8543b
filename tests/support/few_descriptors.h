// SPDX-License-Identifier: Apache-2.0
//
// A process that may open hardly anything more.
#ifndef TESTS_SUPPORT_FEW_DESCRIPTORS_H_
#define TESTS_SUPPORT_FEW_DESCRIPTORS_H_

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <vector>

namespace test {

// Leaves so many descriptors free while it lives.
class FewDescriptors {
 public:
  static constexpr rlim_t kDescriptors = 64;  // more than a test has open

  explicit FewDescriptors(int free) {
    getrlimit(RLIMIT_NOFILE, &m_limit);
    const rlimit few = {kDescriptors, m_limit.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    for (int one; (one = open("/dev/null", O_RDONLY | O_CLOEXEC)) >= 0;) m_taken.push_back(one);
    for (; free > 0; --free) {
      close(m_taken.back());
      m_taken.pop_back();
    }
  }
  ~FewDescriptors() {
    for (const int one : m_taken) close(one);
    setrlimit(RLIMIT_NOFILE, &m_limit);
  }
  FewDescriptors(const FewDescriptors&) = delete;
  FewDescriptors& operator=(const FewDescriptors&) = delete;

 private:
  rlimit m_limit = {};
  std::vector<int> m_taken;
};

}  // namespace test

#endif  // TESTS_SUPPORT_FEW_DESCRIPTORS_H_
