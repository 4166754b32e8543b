// SPDX-License-Identifier: Apache-2.0
// Where a thread may not be cancelled: the unwinding of one would leave locks, descriptors and
// memory of GLib behind.
#ifndef TAV_HOST_CANCELLATION_H_
#define TAV_HOST_CANCELLATION_H_

#include <pthread.h>

namespace tav_host {

// Keeps this thread from being cancelled. A cancellation takes effect at the caller's next
// cancellation point.
class CancellationOff {
 public:
  CancellationOff() { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &m_before); }
  CancellationOff(const CancellationOff&) = delete;
  CancellationOff& operator=(const CancellationOff&) = delete;
  ~CancellationOff() { pthread_setcancelstate(m_before, nullptr); }

 private:
  int m_before = PTHREAD_CANCEL_ENABLE;
};

}  // namespace tav_host

#endif  // TAV_HOST_CANCELLATION_H_
