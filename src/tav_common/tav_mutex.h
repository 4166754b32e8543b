// SPDX-License-Identifier: Apache-2.0
//
// A mutex that the thread-safety analysis knows, and the guard that holds one. Not recursive;
// usable before any constructor has run.
#ifndef TAV_COMMON_TAV_MUTEX_H_
#define TAV_COMMON_TAV_MUTEX_H_

#include <pthread.h>

#include <atomic>
#include <chrono>
#include <ctime>

#include "tav_common/tav_thread_annotations.h"

class CAPABILITY("mutex") TavMutex {
 public:
  constexpr TavMutex() = default;
  TavMutex(const TavMutex&) = delete;
  TavMutex& operator=(const TavMutex&) = delete;

  void Lock() ACQUIRE() {
    pthread_mutex_lock(&m_mutex);
    m_owner = pthread_self();
  }
  // False when it stayed locked for so long.
  bool LockWithin(int seconds) TRY_ACQUIRE(true) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    do {
      // The clock of this call can be set while it waits, so it waits for a second at a time.
      timespec slice;
      clock_gettime(CLOCK_REALTIME, &slice);
      ++slice.tv_sec;
      if (pthread_mutex_timedlock(&m_mutex, &slice) == 0) {
        m_owner = pthread_self();
        return true;
      }
    } while (std::chrono::steady_clock::now() < end);
    return false;
  }
  void Unlock() RELEASE() {
    m_owner = pthread_t{};
    pthread_mutex_unlock(&m_mutex);
  }
  // Unlocks it, whoever has locked it: for a forked child, in which nobody else is.
  void Renew() {
    m_owner = pthread_t{};
    m_mutex = PTHREAD_MUTEX_INITIALIZER;
  }
  // Whether the running thread has locked it.
  bool IsMine() const { return m_owner == pthread_self(); }

 private:
  pthread_mutex_t m_mutex = PTHREAD_MUTEX_INITIALIZER;
  std::atomic<pthread_t> m_owner{};
};

class SCOPED_CAPABILITY TavLock {
 public:
  explicit TavLock(TavMutex& mutex) ACQUIRE(mutex) : m_mutex(mutex) { m_mutex.Lock(); }
  ~TavLock() RELEASE() { m_mutex.Unlock(); }
  TavLock(const TavLock&) = delete;
  TavLock& operator=(const TavLock&) = delete;

 private:
  TavMutex& m_mutex;
};

#endif  // TAV_COMMON_TAV_MUTEX_H_
