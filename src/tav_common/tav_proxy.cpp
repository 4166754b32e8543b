// SPDX-License-Identifier: Apache-2.0
#include "tav_common/tav_proxy.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <ctime>
#include <exception>
#include <utility>

#include "tav_common/tav_log.h"
#include "tav_common/tav_proxy_connection.h"
#include "tav_common/tav_proxy_error.h"
#include "tav_common/tav_proxy_monitor.h"

namespace {

constexpr char kLightVariant[] = "org.tizen.litetavcore";
constexpr char kFullService[] = "tavcore";
constexpr char kHeartbeat[] = "heartbeat";
// The bus must not start the service to answer these.
constexpr const char* kNotStarting[] = {kHeartbeat, "notify_app_launch_status",
                                        "notify_special_app"};
constexpr char kTimeoutText[] = "Timeout was reached";
constexpr char kFastBootMarker[] = "/tmp/FACTORY_PRODCUTION";  // the misspelling is kept

constexpr int kCallTimeoutMsec = 10000;
constexpr int kConnectTimeoutMsec = 10000;
constexpr time_t kMonitorTimeoutSec = 10;

// What GLib opens at once for a call and for a connection, and some more.
constexpr int kCallDescriptors = 2;
constexpr int kConnectDescriptors = 10;

GDBusCallFlags FlagsOf(const std::string& method) {
  if (std::find(std::begin(kNotStarting), std::end(kNotStarting), method) ==
      std::end(kNotStarting)) {
    return G_DBUS_CALL_FLAGS_NONE;
  }
  TAV_LOGI("set G_DBUS_CALL_FLAGS_NO_AUTO_START to[%s]", method.c_str());
  return G_DBUS_CALL_FLAGS_NO_AUTO_START;
}

// The text is translated in a localised process, so the code counts as well.
bool IsTimeout(const GError* error) {
  return g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT) ||
         std::strstr(error->message, kTimeoutText) != nullptr;
}

// Says what is known of a call that failed for another reason than time.
void LogBootMode() {
  struct stat status;
  if (stat(kFastBootMarker, &status) == 0) {
    TAV_LOGE("/tmp/FACTORY_PRODCUTION exists, it is fast boot mode");
  } else {
    TAV_LOGE("/tmp/FACTORY_PRODCUTION does not exist, need to check other reasons");
  }
}

}  // namespace

CTAVGdbus::CTAVGdbus(const std::string& client, const std::string& server,
                     void (*cb)(const _TAV_PROXY_ASYNC_EVENT&, void*), void* userData)
    : m_strClient(client),
      m_nProcess(getpid()),
      m_strServer(server),
      m_pfnAsyncCb(cb),
      m_pUserData(userData) {
  TAV_LOGI("CTAVGdbus [%s] constructor.", m_strClient.c_str());
  m_strProcessName = getProcessName();
  if (m_strProcessName.empty()) m_strProcessName = "no_name";
  if (m_strProcessName.find(kLightVariant) != std::string::npos) {
    m_strServer = kFullService;
    TAV_LOGW("Reset dbus receiver to [%s].", m_strServer.c_str());
  }
  pthread_condattr_t attributes;
  pthread_condattr_init(&attributes);
  pthread_condattr_setclock(&attributes, CLOCK_MONOTONIC);
  pthread_cond_init(&m_tCreateCond, &attributes);
  pthread_condattr_destroy(&attributes);
  TAV_LOGI("CTAVGdbus [%s] constructor end", m_strClient.c_str());
}

CTAVGdbus::~CTAVGdbus() {
  Withdraw();
  {
    const TavLock lock(m_tProxyMutex);
    m_pMonitor.reset();
  }
  pthread_cond_destroy(&m_tCreateCond);
}

void CTAVGdbus::Withdraw() {
  if (getpid() != m_nProcess) return;
  TAV_LOGI("CTAVGdbus [%s] destructor...", m_strClient.c_str());
  // Another thread may hold the lock; the bus then drops the object with the connection.
  if (m_tStateMutex.TryLock()) {
    const GObjectPtr<GDBusConnection> connection = Share(m_pConnection.get());
    const guint id = std::exchange(m_nRegistrationId, 0);
    m_tStateMutex.Unlock();
    if (connection != nullptr && id != 0) g_dbus_connection_unregister_object(connection.get(), id);
  }
  TAV_LOGI("CTAVGdbus [%s] destructor end", m_strClient.c_str());
}

bool CTAVGdbus::GetProxy(const char* introspectionXml, GDBusInterfaceVTable vtable) {
  TAV_LOGI("Start");
  // Before any lock: a thread of the parent may have held it.
  if (getpid() != m_nProcess) {
    TAV_LOGE("the process that forked this one has used the bus, so this one cannot");
    return false;
  }
  if (!HasFreeDescriptors(kCallDescriptors)) return false;
  if (m_bProxyCreated && HasHeartbeat()) {
    TAV_LOGI("Gdbus proxy has been created");
    return true;
  }
  const TavLock lock(m_tProxyMutex);
  m_bProxyCreated = false;
  m_strIntrospectionXml = introspectionXml;
  m_tInterfaceVTable = vtable;
  // Deliberate: with the connection open, a service that does not answer is asked again by the
  // call itself, without a further heartbeat.
  if (IsConnected()) {
    TAV_LOGI("g_dbus connection is not closed");
    return true;
  }
  // The bus is gone, and with it the name and the object of the monitor.
  SetConnection(nullptr);
  m_pMonitor.reset();
  if (!HasFreeDescriptors(kConnectDescriptors)) return false;
  const GMainContextPtr context(g_main_context_new());
  if (!Connect(context.get())) return false;
  if (!StartMonitor(context.get())) {
    TAV_LOGE("failed to create thread");
    ReleaseProxy();
    IterateToTheEnd(context.get());
    return false;
  }
  WaitForMonitor();
  TAV_LOGI("create monitor success");
  m_bProxyCreated = true;
  TAV_LOGI("End");
  return true;
}

bool CTAVGdbus::HasHeartbeat() {
  GVariant* reply = nullptr;
  const bool is_alive = MethodCall(kHeartbeat, nullptr, &reply, kCallTimeoutMsec, nullptr);
  const GVariantPtr owner(reply);
  return is_alive;
}

bool CTAVGdbus::IsConnected() {
  const GObjectPtr<GDBusConnection> connection = Connection();
  return connection != nullptr && g_dbus_connection_is_closed(connection.get()) == FALSE;
}

bool CTAVGdbus::Connect(GMainContext* context) {
  TAV_LOGI("getting gdus connection.");
  GErrorHolder error;
  GObjectPtr<GDBusConnection> connection = ConnectToSystemBus(context, kConnectTimeoutMsec, error);
  if (connection == nullptr) {
    if (error.Get() != nullptr) {
      LogBusError("get sync system bus error ", error.Get());
    } else {
      TAV_LOGE("get sync system bus pConnection == NULL");
    }
    return false;
  }
  TAV_LOGI("got gdus connection success");
  SetConnection(std::move(connection));
  return true;
}

// A connection without a monitor would be taken for a whole one from then on, so nothing may
// leave but by the result.
bool CTAVGdbus::StartMonitor(GMainContext* context) try {
  const std::string object_name = "obj" + std::to_string(getpid());
  {
    const TavLock lock(m_tStateMutex);
    m_strObjName = object_name;
  }
  m_pMonitor = std::make_unique<TavBusMonitor>(
      TavBusMonitorJob{GMainContextPtr(g_main_context_ref(context)), Connection(), object_name,
                       m_strIntrospectionXml, m_tInterfaceVTable, m_strClient, m_strServer,
                       [this](guint registration) { OnMonitorReady(registration); }});
  return m_pMonitor->Start();
} catch (const std::exception& error) {
  TAV_LOGE("no monitor: %s", error.what());
  return false;
}

// Waits once: deliberate, a time-out, a spurious wake-up and the signal are handled alike.
void CTAVGdbus::WaitForMonitor() {
  TAV_LOGI("wait for create monitor success(10s timeout)");
  timespec deadline;
  clock_gettime(CLOCK_MONOTONIC, &deadline);
  deadline.tv_sec += kMonitorTimeoutSec;
  pthread_mutex_lock(&m_tCreateMutex);
  if (m_nWaitMonitor != 0) pthread_cond_timedwait(&m_tCreateCond, &m_tCreateMutex, &deadline);
  pthread_mutex_unlock(&m_tCreateMutex);
}

void CTAVGdbus::OnMonitorReady(guint registration) {
  {
    const TavLock lock(m_tStateMutex);
    m_nRegistrationId = registration;
  }
  TAV_LOGI("give Begin.");
  pthread_mutex_lock(&m_tCreateMutex);
  m_nWaitMonitor = 0;
  TAV_LOGI("give cond_signal start.");
  pthread_cond_signal(&m_tCreateCond);
  TAV_LOGI("give cond_signal end.");
  pthread_mutex_unlock(&m_tCreateMutex);
  TAV_LOGI("give End.");
}

bool CTAVGdbus::MethodCall(const std::string& method, GVariant* parameters, GVariant** reply,
                           int timeoutMsec, int* timedOut) {
  const GVariantPtr owned(parameters != nullptr ? g_variant_ref_sink(parameters) : nullptr);
  *reply = nullptr;
  std::string object_name;
  {
    const TavLock lock(m_tStateMutex);
    object_name = m_strObjName;
  }
  TAV_LOGI("obj %s , method call %s", object_name.c_str(), method.c_str());
  // A reference of the call's own: another thread may replace the connection meanwhile.
  const GObjectPtr<GDBusConnection> connection = Connection();
  if (connection == nullptr) {
    TAV_LOGE("connection is NULL");
    return false;
  }
  if (!HasFreeDescriptors(kCallDescriptors)) return false;
  const GDBusCallFlags flags = FlagsOf(method);
  const std::string name = "org.tizen.tv." + m_strServer + ".server";
  const std::string path = "/org/tizen/tv/" + m_strServer + "/server";
  const std::string interface = name + ".interface";
  GErrorHolder error;
  *reply = g_dbus_connection_call_sync(connection.get(), name.c_str(), path.c_str(),
                                       interface.c_str(), method.c_str(), owned.get(), nullptr,
                                       flags, timeoutMsec, nullptr, error.Out());
  TAV_LOGI("method call end");
  if (error.Get() == nullptr) return true;
  if (IsTimeout(error.Get())) {
    TAV_LOGE("gdbus timeout");
    if (timedOut != nullptr) *timedOut = 1;
  } else {
    LogBootMode();
  }
  LogBusError("method call false.", error.Get());
  return false;
}

void CTAVGdbus::GiveProxy() {
  const TavLock lock(m_tProxyMutex);
  ReleaseProxy();
}

void CTAVGdbus::ReleaseProxy() {
  TAV_LOGI("Start");
  if (Connection() != nullptr) {
    TAV_LOGW("release the tav api gdbus connection.");
    SetConnection(nullptr);
  }
  m_pMonitor.reset();
  m_bProxyCreated = false;
  TAV_LOGI("End");
}

GObjectPtr<GDBusConnection> CTAVGdbus::Connection() {
  const TavLock lock(m_tStateMutex);
  return Share(m_pConnection.get());
}

void CTAVGdbus::SetConnection(GObjectPtr<GDBusConnection> connection) {
  const TavLock lock(m_tStateMutex);
  m_nRegistrationId = 0;
  m_pConnection.swap(connection);  // the old one ends with the argument, outside the lock
}
