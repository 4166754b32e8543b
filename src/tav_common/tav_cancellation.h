// SPDX-License-Identifier: Apache-2.0
//
// A section in which the thread is not cancelled: for what is not made to unwind in the middle,
// GLib's functions and the hand-over between threads.
#ifndef TAV_COMMON_TAV_CANCELLATION_H_
#define TAV_COMMON_TAV_CANCELLATION_H_

#include <pthread.h>

class TavNoCancellation {
 public:
  TavNoCancellation() { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &m_before); }
  ~TavNoCancellation() { pthread_setcancelstate(m_before, nullptr); }
  TavNoCancellation(const TavNoCancellation&) = delete;
  TavNoCancellation& operator=(const TavNoCancellation&) = delete;

 private:
  int m_before = PTHREAD_CANCEL_ENABLE;
};

#endif  // TAV_COMMON_TAV_CANCELLATION_H_
