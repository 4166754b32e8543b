// SPDX-License-Identifier: Apache-2.0
//
// A connection to the system bus that is the library's own: it neither ends the host when the
// bus goes away nor depends on the connection that the host's other parts share.
#ifndef TAV_COMMON_TAV_PROXY_CONNECTION_H_
#define TAV_COMMON_TAV_PROXY_CONNECTION_H_

#include "tav_common/tav_glib_handles.h"

// Whether the process can open count more descriptors; logs when it cannot. GLib ends the process
// when it does not get one.
bool HasFreeDescriptors(int count);

// Connects; null and an error otherwise. The bus has timeout_msec to answer, and GIO's 25 s
// more to greet a client that it has let in. The connection tells its end on context, which must
// be iterated until then: what is not told is kept for ever.
GObjectPtr<GDBusConnection> ConnectToSystemBus(GMainContext* context, int timeout_msec,
                                               GErrorHolder& error);

#endif  // TAV_COMMON_TAV_PROXY_CONNECTION_H_
