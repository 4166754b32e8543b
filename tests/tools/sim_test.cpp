// SPDX-License-Identifier: Apache-2.0
#include "sim_test.h"

#include <sqlite3.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace test {

SimTest::SimTest() : peer(bus.Address()) {
  device.Install(App(kClock).TizenId("Ab1.clock").Set("use_count", 4).Set("is_need_update", 1));
}

Answer SimTest::Ask(const std::string& method, const std::string& parameters,
                    int timeout_milliseconds, GDBusCallFlags flags) const {
  return Send(Service::kInterface, method, parameters, timeout_milliseconds, flags);
}

Answer SimTest::Steer(const std::string& method, const std::string& parameters) const {
  return Send("org.tizen.tv.tavcore.server.control", method, parameters, 20000,
              G_DBUS_CALL_FLAGS_NONE);
}

Answer SimTest::Send(const std::string& interface, const std::string& method,
                     const std::string& parameters, int timeout_milliseconds,
                     GDBusCallFlags flags) const {
  GError* error = nullptr;
  GVariant* body = nullptr;
  if (!parameters.empty()) {
    body = g_variant_parse(nullptr, parameters.c_str(), nullptr, nullptr, &error);
    if (body == nullptr) throw std::runtime_error(error->message);
  }
  const tav_device::GVariantHandle owned_body(body);
  const tav_device::GVariantHandle reply(g_dbus_connection_call_sync(
      peer.Connection(), Service::kName, Service::kPath, interface.c_str(), method.c_str(), body,
      nullptr, flags, timeout_milliseconds, nullptr, &error));
  if (reply) return tav_device::GTextHandle(g_variant_print(reply.get(), FALSE)).get();

  const tav_device::GErrorHandle owned_error(error);
  if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT)) return "timeout";
  const tav_device::GTextHandle name(g_dbus_error_get_remote_error(error));
  return name ? name.get() : error->message;
}

std::string SimTest::Column(const std::string& name) const {
  sqlite3* database = nullptr;
  sqlite3_stmt* statement = nullptr;
  const std::string sql = "select " + name + " from widgetinfo where id = '" + kClock + "'";
  std::string value = "no row";
  if (sqlite3_open(device.DatabaseFile().c_str(), &database) == SQLITE_OK &&
      sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr) == SQLITE_OK &&
      sqlite3_step(statement) == SQLITE_ROW) {
    value = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
  }
  sqlite3_finalize(statement);
  sqlite3_close(database);
  return value;
}

std::string SimTest::Setting(const std::string& key) const {
  std::ifstream file(device.Root() / "vconf" / key);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

}  // namespace test
