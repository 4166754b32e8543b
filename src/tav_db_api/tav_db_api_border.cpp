// SPDX-License-Identifier: Apache-2.0
#include "tav_db_api/tav_db_api_border.h"

#include <exception>

#include "tav_common/tav_log.h"
#include "tav_db_api/tav_db_client_connection.h"

int AnswerException(const char* function) noexcept {
  const TavCall call;  // the function's own has ended
  try {
    throw;
  } catch (const std::exception& error) {
    TAV_LOGE("%s failed: %s", function, error.what());
  } catch (...) {
    TAV_LOGE("%s failed", function);
  }
  return kFailed;
}
