// SPDX-License-Identifier: Apache-2.0
//
// The thread that makes this client visible on the bus: it registers the client's object on the
// connection, owns the client's name there, and runs a main loop of its own.
#ifndef TAV_COMMON_TAV_PROXY_MONITOR_H_
#define TAV_COMMON_TAV_PROXY_MONITOR_H_

#include <gio/gio.h>
#include <pthread.h>

#include <functional>
#include <string>

#include "tav_common/tav_glib_handles.h"

// What a monitor works with; its own copies, so that nothing it reads changes under it.
struct TavBusMonitorJob {
  GMainContextPtr context;  // the connection's own
  GObjectPtr<GDBusConnection> connection;
  std::string object_name;  // "obj1234"
  std::string introspection_xml;
  GDBusInterfaceVTable vtable;
  std::string client;  // for the log
  std::string server;  // for the log
  std::function<void(guint registration)> on_ready;
};

// Runs what is left to be told on a connection's context: its end, until which it is kept.
void IterateToTheEnd(GMainContext* context);

class TavBusMonitor {
 public:
  explicit TavBusMonitor(TavBusMonitorJob job);
  // Ends the loop and joins the thread, which releases the name and the object first.
  ~TavBusMonitor();
  TavBusMonitor(const TavBusMonitor&) = delete;
  TavBusMonitor& operator=(const TavBusMonitor&) = delete;

  // False when the thread cannot be started. on_ready is called on it when the object is
  // registered, with the id of that, and never when it fails.
  bool Start();

 private:
  static void* m_Monitor(void* self);
  static void m_OnnameAcquired(GDBusConnection* connection, const char* name, void* self);
  void Run();
  void End();
  guint m_OnbusAcquired(const char* name, GDBusInterfaceInfo* interface);

  const TavBusMonitorJob m_job;
  const GMainLoopPtr m_pMainLoop;
  pthread_t m_threadMonitor = {};
  bool m_is_running = false;
};

#endif  // TAV_COMMON_TAV_PROXY_MONITOR_H_
