// SPDX-License-Identifier: Apache-2.0
//
// The service on the bus: its name, its object, its answers.
#ifndef TOOLS_TAVCORE_SIM_SERVICE_H_
#define TOOLS_TAVCORE_SIM_SERVICE_H_

#include <gio/gio.h>

#include <string>

#include "benchmark.h"
#include "calls.h"
#include "control.h"
#include "device/handles.h"
#include "methods.h"
#include "options.h"
#include "ready_file.h"

namespace tavcore {

class Service {
 public:
  // Connects to the system bus and puts the object there. Throws tav_device::DeviceError.
  explicit Service(const Options& options);
  ~Service();
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;

  // Takes the name and answers until SIGTERM or SIGINT. Throws tav_device::DeviceError when the
  // name cannot be had, or is lost.
  void Run();

 private:
  static void OnCall(GDBusConnection* connection, const char* sender, const char* path,
                     const char* interface, const char* method, GVariant* parameters,
                     GDBusMethodInvocation* invocation, gpointer self);
  static void OnNameAcquired(GDBusConnection* connection, const char* name, gpointer self);
  static void OnNameLost(GDBusConnection* connection, const char* name, gpointer self);

  void Register(const char* introspection);
  void Answer(const std::string& method, GVariant* parameters, GDBusMethodInvocation* invocation);
  void BeReady();

  Options m_options;
  Methods m_methods;
  CallRecord m_calls;
  Control m_control;
  Benchmark m_benchmark;  // answers nothing unless it was asked for
  ReadyFile m_ready_file;
  tav_device::LoopHandle m_loop;
  tav_device::ConnectionHandle m_connection;
  bool m_is_owner = false;
  std::string m_failure;
};

}  // namespace tavcore

#endif  // TOOLS_TAVCORE_SIM_SERVICE_H_
