// SPDX-License-Identifier: Apache-2.0
#include "tav_common/tav_proxy_monitor.h"

#include <csignal>
#include <utility>

#include "tav_common/tav_log.h"
#include "tav_common/tav_proxy_error.h"

namespace {

constexpr char kNamePrefix[] = "org.tizen.tv.tavcore.client.";
constexpr char kPathPrefix[] = "/org/tizen/tv/tavcore/client/";

constexpr auto kNameFlags = static_cast<GBusNameOwnerFlags>(
    G_BUS_NAME_OWNER_FLAGS_ALLOW_REPLACEMENT | G_BUS_NAME_OWNER_FLAGS_REPLACE);

// Makes a context the default of the running thread.
class DefaultContext {
 public:
  explicit DefaultContext(GMainContext* context) : m_context(context) {
    g_main_context_push_thread_default(m_context);
  }
  ~DefaultContext() { g_main_context_pop_thread_default(m_context); }
  DefaultContext(const DefaultContext&) = delete;
  DefaultContext& operator=(const DefaultContext&) = delete;

 private:
  GMainContext* m_context;
};

gboolean QuitLoop(gpointer loop) {
  g_main_loop_quit(static_cast<GMainLoop*>(loop));
  return G_SOURCE_REMOVE;
}

std::string ReplaceFirst(std::string text, const std::string& mark, const std::string& value) {
  const std::size_t at = text.find(mark);
  if (at != std::string::npos) text.replace(at, mark.size(), value);
  return text;
}

// A new thread inherits the blocked signals: the host's handlers are not for the monitor, but for
// those of its faults.
class BlockedSignals {
 public:
  BlockedSignals() {
    sigset_t all;
    sigfillset(&all);
    for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTRAP}) {
      sigdelset(&all, fault);
    }
    pthread_sigmask(SIG_SETMASK, &all, &m_before);
  }
  ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
  BlockedSignals(const BlockedSignals&) = delete;
  BlockedSignals& operator=(const BlockedSignals&) = delete;

 private:
  sigset_t m_before;
};

}  // namespace

void IterateToTheEnd(GMainContext* context) {
  while (g_main_context_iteration(context, FALSE) != FALSE) continue;
}

TavBusMonitor::TavBusMonitor(TavBusMonitorJob job)
    : m_job(std::move(job)), m_pMainLoop(g_main_loop_new(m_job.context.get(), FALSE)) {}

TavBusMonitor::~TavBusMonitor() {
  End();
  IterateToTheEnd(m_job.context.get());
}

void TavBusMonitor::End() {
  if (!m_is_running) return;
  // A loop that is told to quit before it runs would run for ever; a source is not lost.
  const GSourcePtr quit(g_idle_source_new());
  g_source_set_callback(quit.get(), QuitLoop, m_pMainLoop.get(), nullptr);
  g_source_attach(quit.get(), m_job.context.get());
  if (pthread_join(m_threadMonitor, nullptr) != 0) TAV_LOGE("failed to pthread_join");
}

bool TavBusMonitor::Start() {
  const BlockedSignals blocked;
  m_is_running = pthread_create(&m_threadMonitor, nullptr, m_Monitor, this) == 0;
  return m_is_running;
}

void* TavBusMonitor::m_Monitor(void* self) {
  static_cast<TavBusMonitor*>(self)->Run();
  return nullptr;
}

void TavBusMonitor::Run() try {
  TAV_LOGI("Creating monitor %s.", m_job.object_name.c_str());
  const DefaultContext context(m_job.context.get());

  const std::string xml = ReplaceFirst(m_job.introspection_xml, "%s", m_job.object_name);
  GErrorHolder error;
  const GDBusNodeInfoPtr node(g_dbus_node_info_new_for_xml(xml.c_str(), error.Out()));
  if (node == nullptr) {
    if (error.Get() != nullptr) {
      LogBusError("error return ", error.Get());
    } else {
      TAV_LOGE("introspection created error");
    }
    return;
  }
  const std::string name = kNamePrefix + m_job.object_name;
  TAV_LOGI("owning name %s.", name.c_str());
  // The object first: whoever sees the name finds it.
  const guint object = m_OnbusAcquired(name.c_str(), node->interfaces[0]);
  const guint owner = g_bus_own_name_on_connection(m_job.connection.get(), name.c_str(), kNameFlags,
                                                   m_OnnameAcquired, nullptr, nullptr, nullptr);
  g_main_loop_run(m_pMainLoop.get());

  g_bus_unown_name(owner);
  if (object != 0) g_dbus_connection_unregister_object(m_job.connection.get(), object);
} catch (const std::exception& error) {
  TAV_LOGE("the monitor failed: %s", error.what());
}

// Registers the client's object. Its id on the connection; 0, and nobody is told, on a failure.
guint TavBusMonitor::m_OnbusAcquired(const char* name, GDBusInterfaceInfo* interface) {
  GDBusConnection* connection = m_job.connection.get();
  TAV_LOGI("onbus acquired! %s", name);
  TAV_LOGI("manager proxy on bus acquired! connection %d", GPOINTER_TO_INT(connection));
  const std::string path = kPathPrefix + m_job.object_name;
  TAV_LOGI("server is [%s], client is [%s]", m_job.server.c_str(), m_job.client.c_str());
  if (interface == nullptr) {
    TAV_LOGE("register id error");
    return 0;
  }
  GErrorHolder error;
  const guint id = g_dbus_connection_register_object(connection, path.c_str(), interface,
                                                     &m_job.vtable, nullptr, nullptr, error.Out());
  if (id == 0) {
    if (error.Get() != nullptr) {
      LogBusError("register object error ", error.Get());
    } else {
      TAV_LOGE("register id error");
    }
    return 0;
  }
  TAV_LOGI("register object succeed,Created monitor!");
  m_job.on_ready(id);
  return id;
}

void TavBusMonitor::m_OnnameAcquired(GDBusConnection* /*connection*/, const char* name,
                                     void* /*self*/) {
  TAV_LOGI("on name acquired! %s", name);
}
