// SPDX-License-Identifier: Apache-2.0
//
// The one line that tells an error of the bus.
#ifndef TAV_COMMON_TAV_PROXY_ERROR_H_
#define TAV_COMMON_TAV_PROXY_ERROR_H_

#include "tav_common/tav_glib_handles.h"
#include "tav_common/tav_log.h"

// Logs what, the error's name as the bus spells it, its message and its code.
inline void LogBusError(const char* what, const GError* error,
                        const LogPlace& place = LogPlace::Here()) {
  const GTextPtr name(g_dbus_error_encode_gerror(error));
  TAV_LOGE_FOR(place, "%s%s, detail[message:%s, code:%d] ", what, name.get(), error->message,
               error->code);
}

#endif  // TAV_COMMON_TAV_PROXY_ERROR_H_
