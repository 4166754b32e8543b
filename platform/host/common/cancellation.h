// SPDX-License-Identifier: Apache-2.0
// Where a thread may be cancelled, and where not: GLib knows nothing of cancellation and would
// leave its locks and memory behind.
#ifndef TAV_HOST_CANCELLATION_H_
#define TAV_HOST_CANCELLATION_H_

#include <pthread.h>

namespace tav_host {

// Holds the cancellation of this thread back. What it guards may run in a destructor, which must
// not unwind.
class CancellationOff {
 public:
  CancellationOff() { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &m_before); }
  CancellationOff(const CancellationOff&) = delete;
  CancellationOff& operator=(const CancellationOff&) = delete;
  ~CancellationOff() { pthread_setcancelstate(m_before, nullptr); }

 private:
  int m_before = PTHREAD_CANCEL_ENABLE;
};

// Makes what follows happen whole or, in a thread that was cancelled, not at all.
class WholeOrCancelled {
 public:
  WholeOrCancelled() = default;

 private:
  struct Point {
    Point() { pthread_testcancel(); }
  };
  const Point m_point;  // acts before the next member takes hold
  const CancellationOff m_off;
};

}  // namespace tav_host

#endif  // TAV_HOST_CANCELLATION_H_
