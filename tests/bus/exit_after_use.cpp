// SPDX-License-Identifier: Apache-2.0
//
// Locks the app that its first argument names, and ends by exit in the way that the second one
// names. The functions of GLib that stand here first tell the log, or the program itself, that the
// library calls them.
#include <dlfcn.h>
#include <gio/gio.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "tav_common/tav_log.h"
#include "tav_db_api.h"

namespace {

std::atomic<int> g_heartbeats{0};
std::atomic<bool> g_may_look{true};  // whether the library gets an answer about its connection
std::atomic<bool> g_is_looking{false};

template <typename Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

template <typename Condition>
void WaitFor(const Condition& condition) {
  while (!condition()) std::this_thread::yield();
}

// Requests on a thread that the end of the process finds in the middle of one.
void StartRequests() {
  std::thread([] {
    while (tav_set_ticker_mode(1) == 0) continue;
  }).detach();
}

// Ends a child that has not made the proxy as its parent ends. Its status may be that of a tool
// that looks for leaks, and finds what the threads have had that are not there.
bool EndChild() {
  const pid_t child = fork();
  if (child == 0) std::exit(0);
  int status = -1;
  return waitpid(child, &status, 0) == child && WIFEXITED(status);
}

}  // namespace

extern "C" {

gboolean g_dbus_connection_unregister_object(GDBusConnection* connection, guint id) {
  TAV_LOGI("unregisters");
  return Real<decltype(g_dbus_connection_unregister_object)>("g_dbus_connection_unregister_object")(
      connection, id);
}

gboolean g_dbus_connection_is_closed(GDBusConnection* connection) {
  if (!g_may_look) {
    g_is_looking = true;
    for (;;) pause();
  }
  return Real<decltype(g_dbus_connection_is_closed)>("g_dbus_connection_is_closed")(connection);
}

GVariant* g_dbus_connection_call_sync(GDBusConnection* connection, const gchar* name,
                                      const gchar* path, const gchar* interface,
                                      const gchar* method, GVariant* parameters,
                                      const GVariantType* reply_type, GDBusCallFlags flags,
                                      gint timeout, GCancellable* cancellable, GError** error) {
  if (std::strcmp(method, "heartbeat") == 0) ++g_heartbeats;
  return Real<decltype(g_dbus_connection_call_sync)>("g_dbus_connection_call_sync")(
      connection, name, path, interface, method, parameters, reply_type, flags, timeout,
      cancellable, error);
}

}  // extern "C"

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const auto is = [&](const char* way) { return std::strcmp(argv[2], way) == 0; };
  if (is("without a request")) {
    int rating = 0;
    std::exit(tav_get_app_rating(argv[1], &rating) == 0 ? 0 : 1);
  }
  if (tav_set_app_lock(argv[1], 1) != 0) std::exit(1);
  if (is("with a child") && !EndChild()) std::exit(3);
  if (is("in a heartbeat")) {
    StartRequests();
    WaitFor([] { return g_heartbeats > 0; });
  }
  if (is("among requests")) {
    for (int thread = 0; thread < 4; ++thread) StartRequests();
    WaitFor([] { return g_heartbeats > 20; });
  }
  if (is("in the making of the proxy")) {
    g_may_look = false;
    StartRequests();
    WaitFor([] { return g_is_looking.load(); });
  }
  std::exit(0);
}
