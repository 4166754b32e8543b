// SPDX-License-Identifier: Apache-2.0
//
// The library's border. An exported function begins with a TavCall, and is a function-try-block
// whose one handler is AnswerException when anything in it can throw; so its log lines keep the
// name of the function.
#ifndef TAV_DB_API_TAV_DB_API_BORDER_H_
#define TAV_DB_API_TAV_DB_API_BORDER_H_

#include <pthread.h>

// An exported call. The thread is not cancelled in it: SQLite and GLib are C and would leave
// their locks and files behind. Calls may nest.
class TavCall {
 public:
  TavCall() { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &m_state_before); }
  ~TavCall() { pthread_setcancelstate(m_state_before, nullptr); }
  TavCall(const TavCall&) = delete;
  TavCall& operator=(const TavCall&) = delete;

 private:
  int m_state_before = PTHREAD_CANCEL_ENABLE;
};

// Called from a catch-all handler: logs the exception and gives the failure to return.
int AnswerException(const char* function) noexcept;

#endif  // TAV_DB_API_TAV_DB_API_BORDER_H_
