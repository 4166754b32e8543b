// SPDX-License-Identifier: Apache-2.0
// The wall between C++ and the callers' C: no exception passes it. The unwinding of a cancelled
// thread is none, and does.
#ifndef TAV_HOST_BORDER_H_
#define TAV_HOST_BORDER_H_

#include <cxxabi.h>

#include <exception>

#include "dlog.h"

namespace tav_host {

// What `body` returns, or `failure` when it throws.
// The runtime binds a forced unwinding to a null reference, which is its business.
template <typename Result, typename Body>
__attribute__((no_sanitize("null"))) Result AtBorder(const char* tag, Result failure, Body&& body) {
  try {
    return body();
  } catch (abi::__forced_unwind&) {
    throw;  // swallowed, it would end the process
  } catch (const std::exception& error) {
    dlog_print(DLOG_ERROR, tag, "%s", error.what());
  } catch (...) {
    dlog_print(DLOG_ERROR, tag, "an exception of an unknown type");
  }
  return failure;
}

}  // namespace tav_host

#endif  // TAV_HOST_BORDER_H_
