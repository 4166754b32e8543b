// SPDX-License-Identifier: Apache-2.0
//
// GDBus on the default main context; a late answer is a source of its own there, so that no
// request waits for another's delay.
#include "service.h"

#include <glib-unix.h>
#include <unistd.h>
#include <vconf.h>

#include <cstdlib>

#include "device/error.h"
#include "names.h"
#include "say.h"

namespace tavcore {
namespace {

using tav_device::DeviceError;
using tav_device::GErrorHandle;

constexpr char kBootStatusKey[] = "memory/tav/boot_status";
constexpr int kCrashed = 3;
constexpr int kBooted = 1;

DeviceError Failure(const std::string& what, GError* error) {
  const GErrorHandle owned(error);
  g_dbus_error_strip_remote_error(error);
  return DeviceError(what + ": " + error->message);
}

// A connection of its own: the shared one would end the process when the bus goes.
tav_device::ConnectionHandle Connect() {
  constexpr auto kFlags =
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  GError* error = nullptr;
  const tav_device::GTextHandle address(
      g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, &error));
  if (!address) throw Failure("the system bus has no address", error);
  tav_device::ConnectionHandle connection(
      g_dbus_connection_new_for_address_sync(address.get(), kFlags, nullptr, nullptr, &error));
  if (!connection) throw Failure("no connection to the system bus", error);
  g_dbus_connection_set_exit_on_close(connection.get(), FALSE);
  return connection;
}

struct LateAnswer {
  GDBusMethodInvocation* invocation;
  GVariant* reply;
};

gboolean SendLateAnswer(gpointer data) {
  const auto* late = static_cast<const LateAnswer*>(data);
  g_dbus_method_invocation_return_value(late->invocation, late->reply);
  g_variant_unref(late->reply);
  return G_SOURCE_REMOVE;
}

void AnswerLater(GDBusMethodInvocation* invocation, GVariant* reply, int milliseconds) {
  g_timeout_add_full(G_PRIORITY_DEFAULT, static_cast<guint>(milliseconds), &SendLateAnswer,
                     new LateAnswer{invocation, g_variant_ref_sink(reply)},
                     [](gpointer data) { delete static_cast<LateAnswer*>(data); });
}

// Past the checks of GDBus, which keep an answer to its method's type.
void AnswerUnchecked(GDBusMethodInvocation* invocation, GVariant* reply) {
  const tav_device::MessageHandle message(
      g_dbus_message_new_method_reply(g_dbus_method_invocation_get_message(invocation)));
  g_dbus_message_set_body(message.get(), reply);
  g_dbus_connection_send_message(g_dbus_method_invocation_get_connection(invocation), message.get(),
                                 G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
  g_object_unref(invocation);
}

int RandomUpTo(int highest) {
  return static_cast<int>(g_random_double_range(0, highest + 1.0));
}

gboolean QuitLoop(gpointer loop) {
  g_main_loop_quit(static_cast<GMainLoop*>(loop));
  return G_SOURCE_CONTINUE;
}

}  // namespace

Service::Service(const Options& options)
    : m_options(options),
      m_methods(AppDatabase(options.busy_milliseconds), options.ticker_mode, options.uninstalling),
      m_calls(options.is_verbose),
      m_control{m_options.faults, m_calls},
      m_ready_file(options.ready_file),
      m_loop(g_main_loop_new(nullptr, FALSE)),
      m_connection(Connect()) {
  m_calls.Listen(m_connection.get());
  Register(Methods::Introspection());
  Register(Control::Introspection());
  if (m_options.is_benchmark) Register(Benchmark::Introspection());
}

Service::~Service() {
  // Sends what is still to be sent.
  g_dbus_connection_close_sync(m_connection.get(), nullptr, nullptr);
}

void Service::Register(const char* introspection) {
  static const GDBusInterfaceVTable kTable = {&Service::OnCall, nullptr, nullptr, {}};
  GError* error = nullptr;
  const tav_device::NodeHandle node(g_dbus_node_info_new_for_xml(introspection, &error));
  if (!node ||
      g_dbus_connection_register_object(m_connection.get(), kServicePath, node->interfaces[0],
                                        &kTable, this, nullptr, &error) == 0) {
    throw Failure("the object cannot be put on the bus", error);
  }
}

void Service::Run() {
  const guint terminated = g_unix_signal_add(SIGTERM, &QuitLoop, m_loop.get());
  const guint interrupted = g_unix_signal_add(SIGINT, &QuitLoop, m_loop.get());
  const guint owner = g_bus_own_name_on_connection(
      m_connection.get(), kServiceName, G_BUS_NAME_OWNER_FLAGS_DO_NOT_QUEUE,
      &Service::OnNameAcquired, &Service::OnNameLost, this, nullptr);
  g_main_loop_run(m_loop.get());
  g_bus_unown_name(owner);
  g_source_remove(terminated);
  g_source_remove(interrupted);
  if (!m_failure.empty()) throw DeviceError(m_failure);
}

void Service::OnNameAcquired(GDBusConnection*, const char*, gpointer self) {
  auto* service = static_cast<Service*>(self);
  service->m_is_owner = true;
  service->BeReady();
}

void Service::OnNameLost(GDBusConnection*, const char*, gpointer self) {
  auto* service = static_cast<Service*>(self);
  if (g_dbus_connection_is_closed(service->m_connection.get())) {
    service->m_failure = "the bus is gone";
  } else if (service->m_is_owner) {
    service->m_failure = std::string("the name ") + kServiceName + " is lost";
  } else {
    service->m_failure = std::string("the name ") + kServiceName + " is taken";
  }
  g_main_loop_quit(service->m_loop.get());
}

void Service::BeReady() {
  if (vconf_set_int(kBootStatusKey, kBooted) != VCONF_OK) {
    Say(std::string("the setting ") + kBootStatusKey + " cannot be written");
  }
  m_ready_file.Create();
  if (m_options.is_verbose) Say("ready");
  if (m_options.ready_descriptor < 0) return;
  if (write(m_options.ready_descriptor, "ready\n", 6) != 6) {
    Say("nobody waits at the descriptor of --ready-fd");
  }
  close(m_options.ready_descriptor);
}

void Service::OnCall(GDBusConnection*, const char*, const char*, const char* interface,
                     const char* method, GVariant* parameters, GDBusMethodInvocation* invocation,
                     gpointer self) {
  auto* service = static_cast<Service*>(self);
  if (std::string(interface) == kControlInterface) {
    service->m_control.Answer(method, parameters, invocation);
  } else if (std::string(interface) == kBenchmarkInterface) {
    service->m_benchmark.Answer(method, parameters, invocation);
  } else {
    service->Answer(method, parameters, invocation);
  }
}

void Service::Answer(const std::string& method, GVariant* parameters,
                     GDBusMethodInvocation* invocation) {
  const Fault fault = m_options.faults.Of(method);
  switch (fault.kind) {
    case Fault::Kind::kNone:
      g_dbus_method_invocation_return_value(invocation, m_methods.Run(method, parameters));
      break;
    case Fault::Kind::kDelay:
      AnswerLater(invocation, m_methods.Run(method, parameters), fault.number);
      break;
    case Fault::Kind::kRandomDelay:
      AnswerLater(invocation, m_methods.Run(method, parameters), RandomUpTo(fault.number));
      break;
    case Fault::Kind::kError:
      g_dbus_method_invocation_return_dbus_error(invocation, fault.name.c_str(),
                                                 "a fault on demand");
      break;
    case Fault::Kind::kStatus:
      g_dbus_method_invocation_return_value(invocation, m_methods.WithStatus(method, fault.number));
      break;
    case Fault::Kind::kWrongType:
      AnswerUnchecked(invocation, Methods::OfAnotherType(method));
      break;
    case Fault::Kind::kNoReply:
      g_object_unref(invocation);
      break;
    case Fault::Kind::kExit:
      std::_Exit(kCrashed);
  }
}

}  // namespace tavcore
