// SPDX-License-Identifier: Apache-2.0
//
// A connection to the system bus that is the library's own: it neither ends the host when the
// bus goes away nor depends on the connection that the host's other parts share.
#ifndef TAV_COMMON_TAV_PROXY_CONNECTION_H_
#define TAV_COMMON_TAV_PROXY_CONNECTION_H_

#include "tav_common/tav_glib_handles.h"

// Connects within about timeout_msec; null and an error otherwise.
GObjectPtr<GDBusConnection> ConnectToSystemBus(int timeout_msec, GErrorHolder& error);

#endif  // TAV_COMMON_TAV_PROXY_CONNECTION_H_
