// SPDX-License-Identifier: Apache-2.0
// The wall between C++ and the callers' C: no exception passes it, and no thread is cancelled
// behind it.
#ifndef TAV_HOST_BORDER_H_
#define TAV_HOST_BORDER_H_

#include <exception>

#include "cancellation.h"
#include "dlog.h"

namespace tav_host {

// What `body` returns, or `failure` when it throws.
template <typename Result, typename Body>
Result AtBorder(const char* tag, Result failure, Body&& body) noexcept {
  const CancellationOff off;
  try {
    return body();
  } catch (const std::exception& error) {
    dlog_print(DLOG_ERROR, tag, "%s", error.what());
  } catch (...) {
    dlog_print(DLOG_ERROR, tag, "an exception of an unknown type");
  }
  return failure;
}

}  // namespace tav_host

#endif  // TAV_HOST_BORDER_H_
