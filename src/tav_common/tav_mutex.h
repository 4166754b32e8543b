// SPDX-License-Identifier: Apache-2.0
//
// A mutex that the thread-safety analysis knows, and the guard that holds one. Not recursive;
// usable before any constructor has run.
#ifndef TAV_COMMON_TAV_MUTEX_H_
#define TAV_COMMON_TAV_MUTEX_H_

#include <pthread.h>

#include "tav_common/tav_thread_annotations.h"

class CAPABILITY("mutex") TavMutex {
 public:
  constexpr TavMutex() = default;
  TavMutex(const TavMutex&) = delete;
  TavMutex& operator=(const TavMutex&) = delete;

  void Lock() ACQUIRE() { pthread_mutex_lock(&m_mutex); }
  // False when it is locked.
  bool TryLock() TRY_ACQUIRE(true) { return pthread_mutex_trylock(&m_mutex) == 0; }
  void Unlock() RELEASE() { pthread_mutex_unlock(&m_mutex); }

 private:
  pthread_mutex_t m_mutex = PTHREAD_MUTEX_INITIALIZER;
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
