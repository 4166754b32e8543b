// SPDX-License-Identifier: Apache-2.0
#include "tav_db_api/tav_db_api_border.h"

#include <cxxabi.h>

#include <exception>

#include "tav_common/tav_log.h"
#include "tav_db_api/tav_db_client_connection.h"

// The runtime binds a forced unwinding to a null reference, which is its business.
__attribute__((no_sanitize("null"))) int AnswerException(const char* function) {
  try {
    throw;
  } catch (abi::__forced_unwind&) {
    throw;  // a cancelled thread: swallowing its unwinding would end the process
  } catch (const std::exception& error) {
    TAV_LOGE("%s failed: %s", function, error.what());
  } catch (...) {
    TAV_LOGE("%s failed", function);
  }
  return kFailed;
}
