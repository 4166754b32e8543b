// SPDX-License-Identifier: Apache-2.0
#include "tav_common/tav_proxy_connection.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <utility>

#include "tav_common/tav_log.h"

namespace {

constexpr auto kFlags = static_cast<GDBusConnectionFlags>(
    G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);

// GIO's own limit for the bus's greeting, during which it does not hear of a cancellation.
constexpr int kGreetingMsec = 25000;

bool CanOpen(int count) {
  if (count == 0) return true;
  const int descriptor = eventfd(0, EFD_CLOEXEC);
  if (descriptor < 0) return errno != EMFILE && errno != ENFILE;
  const bool can_open_the_rest = CanOpen(count - 1);
  close(descriptor);
  return can_open_the_rest;
}

struct Attempt {
  ~Attempt() { g_clear_error(&error); }

  GObjectPtr<GDBusConnection> connection;
  GError* error = nullptr;
  bool is_done = false;
  bool is_given_up = false;
};

void OnConnected(GObject* /*source*/, GAsyncResult* result, gpointer data) {
  auto* attempt = static_cast<Attempt*>(data);
  attempt->connection.reset(g_dbus_connection_new_for_address_finish(result, &attempt->error));
  attempt->is_done = true;
}

gboolean GiveUp(gpointer attempt) {
  static_cast<Attempt*>(attempt)->is_given_up = true;
  return G_SOURCE_REMOVE;
}

gboolean Cancel(gpointer cancellable) {
  g_cancellable_cancel(static_cast<GCancellable*>(cancellable));
  return G_SOURCE_REMOVE;
}

// A source on the context that calls back once, after the time, unless it is destroyed before.
GSourcePtr CallAfter(int msec, GMainContext* context, GSourceFunc callback, gpointer data) {
  GSourcePtr source(g_timeout_source_new(static_cast<guint>(msec)));
  g_source_set_callback(source.get(), callback, data, nullptr);
  g_source_attach(source.get(), context);
  return source;
}

}  // namespace

bool HasFreeDescriptors(int count) {
  if (CanOpen(count)) return true;
  TAV_LOGE("too few file descriptors are free: the bus needs %d", count);
  return false;
}

GObjectPtr<GDBusConnection> ConnectToSystemBus(GMainContext* context, int timeout_msec,
                                               GErrorHolder& error) {
  const GTextPtr address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, error.Out()));
  if (address == nullptr) return nullptr;

  // The synchronous call has no time limit: a bus that accepts and says nothing would hold the
  // host for ever. On a context of its own, nothing of the host's runs meanwhile.
  const GObjectPtr<GCancellable> cancellable(g_cancellable_new());
  auto attempt = std::make_unique<Attempt>();
  const GSourcePtr limit = CallAfter(timeout_msec, context, Cancel, cancellable.get());
  const GSourcePtr end = CallAfter(timeout_msec + kGreetingMsec, context, GiveUp, attempt.get());

  g_main_context_push_thread_default(context);
  g_dbus_connection_new_for_address(address.get(), kFlags, nullptr, cancellable.get(), OnConnected,
                                    attempt.get());
  while (!attempt->is_done && !attempt->is_given_up) g_main_context_iteration(context, TRUE);
  g_main_context_pop_thread_default(context);
  g_source_destroy(limit.get());
  g_source_destroy(end.get());

  if (!attempt->is_done) {
    // In the child of a host that has used GLib, the threads that would answer are not there.
    static_cast<void>(attempt.release());  // the attempt is not over, and may still be written
    g_set_error_literal(error.Out(), G_IO_ERROR, G_IO_ERROR_TIMED_OUT, "GLib does not answer");
    return nullptr;
  }
  if (attempt->error != nullptr) {
    g_propagate_error(error.Out(), std::exchange(attempt->error, nullptr));
  }
  GObjectPtr<GDBusConnection> connection = std::move(attempt->connection);
  if (connection != nullptr) g_dbus_connection_set_exit_on_close(connection.get(), FALSE);
  return connection;
}
