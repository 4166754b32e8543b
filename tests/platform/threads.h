// SPDX-License-Identifier: Apache-2.0
// Threads that start their work at the same moment.
#ifndef TAV_TESTS_PLATFORM_THREADS_H_
#define TAV_TESTS_PLATFORM_THREADS_H_

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

class Threads {
 public:
  // Each thread runs `work` with its number, from 0.
  Threads(int count, std::function<void(int)> work) : m_count(count), m_work(std::move(work)) {
    m_threads.reserve(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) {
      m_threads.emplace_back([this, i] {
        ++m_ready;
        while (m_ready < m_count) std::this_thread::yield();
        m_work(i);
      });
    }
  }
  Threads(const Threads&) = delete;
  Threads& operator=(const Threads&) = delete;
  ~Threads() {
    for (auto& thread : m_threads) thread.join();
  }

 private:
  const int m_count;
  const std::function<void(int)> m_work;
  std::atomic<int> m_ready{0};
  std::vector<std::thread> m_threads;
};

#endif  // TAV_TESTS_PLATFORM_THREADS_H_
