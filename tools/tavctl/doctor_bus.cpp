// SPDX-License-Identifier: Apache-2.0
//
// tavctl doctor: the way to the service.
#include <gio/gio.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "device/handles.h"
#include "doctor.h"
#include "platform.h"
#include "tavcore-sim/names.h"

namespace {

constexpr char kBus[] = "system bus";
constexpr char kService[] = "service";
constexpr char kHeartbeat[] = "heartbeat";
constexpr char kBusName[] = "org.freedesktop.DBus";
constexpr char kBusPath[] = "/org/freedesktop/DBus";

constexpr int kTimeoutMsec = 10000;  // the library's own

using tav_device::ConnectionHandle;
using tav_device::GErrorHandle;
using tav_device::GTextHandle;
using tav_device::GVariantHandle;
using tav_device::LoopHandle;

struct SourceDeleter {
  void operator()(GSource* source) const {
    g_source_destroy(source);
    g_source_unref(source);
  }
};
using GSourcePtr = std::unique_ptr<GSource, SourceDeleter>;

std::string TextOf(const GErrorHandle& error) {
  g_dbus_error_strip_remote_error(error.get());
  return error->message;
}

// A bus that takes the connection and says nothing would hold a synchronous call for ever.
struct Attempt {
  LoopHandle loop{g_main_loop_new(nullptr, FALSE)};
  ConnectionHandle connection;
  GErrorHandle error;

  static void OnConnected(GObject* /*source*/, GAsyncResult* result, gpointer data) {
    auto* attempt = static_cast<Attempt*>(data);
    GError* error = nullptr;
    attempt->connection.reset(g_dbus_connection_new_for_address_finish(result, &error));
    attempt->error.reset(error);
    g_main_loop_quit(attempt->loop.get());
  }
  static gboolean OnTimeout(gpointer loop) {
    g_main_loop_quit(static_cast<GMainLoop*>(loop));
    return G_SOURCE_REMOVE;
  }
};

ConnectionHandle Connect(const char* address, std::string& failure) {
  auto attempt = std::make_unique<Attempt>();
  g_dbus_connection_new_for_address(
      address,
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
      nullptr, nullptr, Attempt::OnConnected, attempt.get());
  const GSourcePtr limit(g_timeout_source_new(kTimeoutMsec));
  g_source_set_callback(limit.get(), Attempt::OnTimeout, attempt->loop.get(), nullptr);
  g_source_attach(limit.get(), nullptr);
  g_main_loop_run(attempt->loop.get());
  if (attempt->error != nullptr) {
    failure = TextOf(attempt->error);
  } else if (attempt->connection == nullptr) {
    failure = "no answer within 10 s";
    static_cast<void>(attempt.release());  // GLib still works on it, until the process ends
    return nullptr;
  }
  return std::move(attempt->connection);
}

GVariantHandle Call(const ConnectionHandle& connection, const char* name, const char* path,
                    const char* interface, const char* method, GVariant* parameters,
                    GErrorHandle& failure) {
  GError* error = nullptr;
  GVariantHandle reply(g_dbus_connection_call_sync(
      connection.get(), name, path, interface, method, parameters, nullptr,
      G_DBUS_CALL_FLAGS_NO_AUTO_START, kTimeoutMsec, nullptr, &error));
  failure.reset(error);
  return reply;
}

// Whether one of the bus's own methods names the service; nothing when the bus does not answer it.
std::optional<bool> BusSays(const ConnectionHandle& connection, const char* method) {
  GErrorHandle ignored;
  const GVariantHandle reply =
      Call(connection, kBusName, kBusPath, kBusName, method, nullptr, ignored);
  if (reply == nullptr || !g_variant_is_of_type(reply.get(), G_VARIANT_TYPE("(as)"))) {
    return std::nullopt;
  }
  const GVariantHandle list(g_variant_get_child_value(reply.get(), 0));
  const std::unique_ptr<const char*, decltype(&g_free)> names(
      g_variant_get_strv(list.get(), nullptr), g_free);
  return g_strv_contains(names.get(), tavcore::kServiceName) != FALSE;
}

bool ExamineService(const ConnectionHandle& connection, Findings& findings) {
  const std::optional<bool> is_there = BusSays(connection, "ListNames");
  if (is_there == true) {
    findings.push_back({Health::kGood, kService, tavcore::kServiceName, ""});
    return true;
  }
  if (!is_there) {
    findings.push_back({Health::kProblem, kBus, "does not say who is on it", ""});
  } else if (BusSays(connection, "ListActivatableNames") == true) {
    findings.push_back({Health::kNote, kService,
                        std::string(tavcore::kServiceName) +
                            " does not run; the bus starts it with the first request",
                        ""});
  } else {
    findings.push_back({Health::kProblem, kService,
                        "nobody on the bus has the name " + std::string(tavcore::kServiceName) +
                            ": every request fails",
                        kIsOnPc ? "run the program in tav-sandbox, or start tavcore-sim" : ""});
  }
  return false;
}

// The service answered, though with an error: the library's requests go on after that.
bool IsAnswer(const GErrorHandle& error) {
  if (g_dbus_error_is_remote_error(error.get()) == FALSE) return false;
  for (const int code : {G_DBUS_ERROR_NO_REPLY, G_DBUS_ERROR_TIMEOUT, G_DBUS_ERROR_SERVICE_UNKNOWN,
                         G_DBUS_ERROR_NAME_HAS_NO_OWNER, G_DBUS_ERROR_DISCONNECTED}) {
    if (g_error_matches(error.get(), G_DBUS_ERROR, code) != FALSE) return false;
  }
  return true;
}

void ExamineHeartbeat(const ConnectionHandle& connection, Findings& findings) {
  const auto start = std::chrono::steady_clock::now();
  GErrorHandle error;
  const GVariantHandle reply = Call(connection, tavcore::kServiceName, tavcore::kServicePath,
                                    tavcore::kServiceInterface, kHeartbeat, nullptr, error);
  const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now() - start);
  if (reply != nullptr) {
    findings.push_back({Health::kGood, kHeartbeat,
                        "answered within " + std::to_string(time.count() + 1) + " ms", ""});
  } else if (g_error_matches(error.get(), G_DBUS_ERROR, G_DBUS_ERROR_ACCESS_DENIED) != FALSE) {
    findings.push_back({Health::kProblem, kHeartbeat, TextOf(error),
                        "the bus's policy must let this user send to the service"});
  } else if (IsAnswer(error)) {
    findings.push_back({Health::kNote, kHeartbeat,
                        "answered with an error, after which requests go on: " + TextOf(error),
                        ""});
  } else {
    findings.push_back({Health::kProblem, kHeartbeat, TextOf(error),
                        "the service is there and does not answer: start it anew"});
  }
}

}  // namespace

void ExamineBus(Findings& findings) {
  GError* error = nullptr;
  const GTextHandle address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, &error));
  const GErrorHandle no_address(error);
  if (address == nullptr) {
    findings.push_back({Health::kProblem, kBus, TextOf(no_address), ""});
    return;
  }
  std::string failure;
  const ConnectionHandle connection = Connect(address.get(), failure);
  if (connection == nullptr) {
    findings.push_back({Health::kProblem, kBus, std::string(address.get()) + ": " + failure,
                        kIsOnPc ? "run the program in tav-sandbox, which brings a bus, or set "
                                  "DBUS_SYSTEM_BUS_ADDRESS"
                                : ""});
    return;
  }
  findings.push_back({Health::kGood, kBus, address.get(), ""});
  if (ExamineService(connection, findings)) ExamineHeartbeat(connection, findings);
}
