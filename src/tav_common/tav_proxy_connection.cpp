// SPDX-License-Identifier: Apache-2.0
#include "tav_common/tav_proxy_connection.h"

namespace {

constexpr auto kFlags = static_cast<GDBusConnectionFlags>(
    G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);

struct Attempt {
  GErrorHolder& error;
  GDBusConnection* connection = nullptr;
  bool is_done = false;
};

void OnConnected(GObject* /*source*/, GAsyncResult* result, gpointer data) {
  auto* attempt = static_cast<Attempt*>(data);
  attempt->connection = g_dbus_connection_new_for_address_finish(result, attempt->error.Out());
  attempt->is_done = true;
}

gboolean Cancel(gpointer cancellable) {
  g_cancellable_cancel(static_cast<GCancellable*>(cancellable));
  return G_SOURCE_REMOVE;
}

}  // namespace

GObjectPtr<GDBusConnection> ConnectToSystemBus(GMainContext* context, int timeout_msec,
                                               GErrorHolder& error) {
  const GTextPtr address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, error.Out()));
  if (address == nullptr) return nullptr;

  // The synchronous call has no time limit: a bus that accepts and says nothing would hold the
  // host for ever. On a context of its own, nothing of the host's runs meanwhile.
  const GObjectPtr<GCancellable> cancellable(g_cancellable_new());
  const GSourcePtr limit(g_timeout_source_new(static_cast<guint>(timeout_msec)));
  g_source_set_callback(limit.get(), Cancel, cancellable.get(), nullptr);
  g_source_attach(limit.get(), context);

  Attempt attempt{error};
  g_main_context_push_thread_default(context);
  g_dbus_connection_new_for_address(address.get(), kFlags, nullptr, cancellable.get(), OnConnected,
                                    &attempt);
  while (!attempt.is_done) g_main_context_iteration(context, TRUE);
  g_main_context_pop_thread_default(context);
  g_source_destroy(limit.get());

  GObjectPtr<GDBusConnection> connection(attempt.connection);
  if (connection != nullptr) g_dbus_connection_set_exit_on_close(connection.get(), FALSE);
  return connection;
}
