// SPDX-License-Identifier: Apache-2.0
//
// The client's side of the system bus: a connection of its own to call the service on, and a
// monitor that owns the client's name on it, so that the service can see this client.
#ifndef TAV_COMMON_TAV_PROXY_H_
#define TAV_COMMON_TAV_PROXY_H_

#include <gio/gio.h>
#include <pthread.h>
#include <sys/types.h>

#include <atomic>
#include <map>
#include <memory>
#include <string>

#include "tav_common/tav_glib_handles.h"
#include "tav_common/tav_mutex.h"

// A pending asynchronous event. This library delivers none.
struct _TAV_PROXY_ASYNC_EVENT {
  int id;
  std::string payload;
};

class TavBusMonitor;

// Any operation may be called from any thread of the process that made the object. In a forked
// child GetProxy returns false, and nothing else is to be called: the bus connection and the
// threads behind it are the parent's.
class CTAVGdbus {
 public:
  // client is a name for the log. server is the service's: "tavcore" forms its bus name, its
  // path and its interface. Nothing on the bus is touched.
  CTAVGdbus(const std::string& client, const std::string& server,
            void (*cb)(const _TAV_PROXY_ASYNC_EVENT&, void*), void* userData);
  ~CTAVGdbus();
  CTAVGdbus(const CTAVGdbus&) = delete;
  CTAVGdbus& operator=(const CTAVGdbus&) = delete;

  // Makes sure that there is a connection with a monitor: asks the service for a heartbeat, and
  // connects anew where that fails and the connection is closed. True when MethodCall may
  // follow. introspectionXml describes the client's object; its first "%s" becomes the object's
  // name. Waits up to 10 s each for the heartbeat and for a new connection's monitor; for the
  // connection 10 s, and 25 s more when the bus lets the client in and falls silent then.
  bool GetProxy(const char* introspectionXml, GDBusInterfaceVTable vtable);

  // Calls a method of the service and waits for its reply, at most timeoutMsec. parameters may
  // be null, and is consumed when it is floating. *reply receives the reply, which the caller
  // unreferences, or null. timedOut may be null; 1 is stored there when no reply came in time.
  // True when the call returned no error.
  bool MethodCall(const std::string& method, GVariant* parameters, GVariant** reply,
                  int timeoutMsec, int* timedOut);

  // Ends the monitor and lets the connection go.
  void GiveProxy();

  // Takes the client's object off the bus, as the destructor does first. For an object that lives
  // on while its process exits: waits for nobody, frees nothing that another thread may use, and
  // does nothing in a forked child.
  void Withdraw();

 private:
  bool HasHeartbeat();
  bool IsConnected();
  bool Connect(GMainContext* context) REQUIRES(m_tProxyMutex);
  bool StartMonitor(GMainContext* context) REQUIRES(m_tProxyMutex);
  void WaitForMonitor();
  void ReleaseProxy() REQUIRES(m_tProxyMutex);
  void OnMonitorReady(guint registration);

  GObjectPtr<GDBusConnection> Connection();
  void SetConnection(GObjectPtr<GDBusConnection> connection);

  const std::string m_strClient;
  const pid_t m_nProcess;
  std::string m_strServer;  // settled by the constructor
  std::string m_strProcessName;
  std::map<int, _TAV_PROXY_ASYNC_EVENT> m_mapAsyncEvent;
  [[maybe_unused]] void (*m_pfnAsyncCb)(const _TAV_PROXY_ASYNC_EVENT&, void*);
  [[maybe_unused]] void* m_pUserData;

  // Serialises the slow way of GetProxy; taken before any of the others.
  TavMutex m_tProxyMutex;
  std::string m_strIntrospectionXml GUARDED_BY(m_tProxyMutex);
  GDBusInterfaceVTable m_tInterfaceVTable GUARDED_BY(m_tProxyMutex) = {};
  std::unique_ptr<TavBusMonitor> m_pMonitor GUARDED_BY(m_tProxyMutex);

  std::atomic<bool> m_bProxyCreated{false};
  // Guards what other callers read while a connection is being replaced.
  TavMutex m_tStateMutex;
  std::string m_strObjName GUARDED_BY(m_tStateMutex);
  GObjectPtr<GDBusConnection> m_pConnection GUARDED_BY(m_tStateMutex);
  guint m_nRegistrationId GUARDED_BY(m_tStateMutex) = 0;  // of the client's object on it

  // The handshake with the monitor. It lives as long as the object: the monitor may be late.
  pthread_mutex_t m_tCreateMutex = PTHREAD_MUTEX_INITIALIZER;
  pthread_cond_t m_tCreateCond;
  int m_nWaitMonitor = 1;  // until the first monitor has registered its object
};

// The name of the calling process: of an app's directory when its program is
// "…/apps/…/<name>/bin/…", else the path of its program, else "no_name".
std::string getProcessName();

#endif  // TAV_COMMON_TAV_PROXY_H_
