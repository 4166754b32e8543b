// SPDX-License-Identifier: Apache-2.0
#include "bus.h"

#include <stdexcept>

#include "bare.h"

namespace bench {
namespace {

constexpr char kName[] = "org.tizen.tv.tavcore.server";
constexpr char kPath[] = "/org/tizen/tv/tavcore/server";
constexpr char kRequests[] = "org.tizen.tv.tavcore.server.interface";
constexpr char kBenchmark[] = "org.tizen.tv.tavcore.server.benchmark";
constexpr int kTimeout = 10000;
constexpr int kPage = 1000;

[[noreturn]] void Throw(GError* error) {
  const tav_device::GErrorHandle owned(error);
  throw std::runtime_error(error->message);
}

tav_device::ConnectionHandle Connect() {
  GError* error = nullptr;
  const tav_device::GTextHandle address(
      g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, &error));
  if (!address) Throw(error);
  tav_device::ConnectionHandle connection(g_dbus_connection_new_for_address_sync(
      address.get(),
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
      nullptr, nullptr, &error));
  if (!connection) Throw(error);
  return connection;
}

}  // namespace

BusClient::BusClient() : m_connection(Connect()) {
  for (const Field& field : kTexts) m_fields[Column[field.column]].push_back(&field);
  for (const Field& field : kIntegers) m_fields[Column[field.column]].push_back(&field);
}

tav_device::GVariantHandle BusClient::Call(const char* interface, const char* method,
                                           GVariant* parameters) {
  GError* error = nullptr;
  tav_device::GVariantHandle reply(
      g_dbus_connection_call_sync(m_connection.get(), kName, kPath, interface, method, parameters,
                                  nullptr, G_DBUS_CALL_FLAGS_NONE, kTimeout, nullptr, &error));
  if (!reply) Throw(error);
  return reply;
}

void BusClient::Read(GVariant* dictionary, tav_app_info_s* info, int locked_from) const {
  GVariantIter values;
  g_variant_iter_init(&values, dictionary);
  const char* name = nullptr;
  GVariant* value = nullptr;
  while (g_variant_iter_loop(&values, "{&sv}", &name, &value) != FALSE) {
    const auto found = m_fields.find(name);
    if (found == m_fields.end()) continue;
    const bool is_text = g_variant_is_of_type(value, G_VARIANT_TYPE_STRING) != FALSE;
    for (const Field* field : found->second) {
      if (is_text) {
        SetText(info, *field, g_variant_get_string(value, nullptr));
      } else {
        SetInteger(info, *field, g_variant_get_int32(value));
      }
    }
  }
  info->is_lock = info->is_lock != 0 || info->app_age_limit >= locked_from ? 1 : 0;
}

int BusClient::Lookup(const std::string& id, tav_app_info_s* info) {
  if (IsRefused()) return -1;
  const auto reply = Call(kBenchmark, "app", g_variant_new("(s)", id.c_str()));
  const tav_device::GVariantHandle dictionary(g_variant_get_child_value(reply.get(), 0));
  if (g_variant_n_children(dictionary.get()) == 0) return -1;
  *info = {};
  Read(dictionary.get(), info, LockedFrom());
  return 0;
}

std::vector<tav_app_info_s> BusClient::List() {
  std::vector<tav_app_info_s> list;
  if (IsRefused()) return list;
  const int locked_from = LockedFrom();
  for (gsize read = kPage; read == kPage;) {
    const auto reply =
        Call(kBenchmark, "apps", g_variant_new("(ii)", static_cast<int>(list.size()), kPage));
    const tav_device::GVariantHandle apps(g_variant_get_child_value(reply.get(), 0));
    read = g_variant_n_children(apps.get());
    for (gsize app = 0; app < read; ++app) {
      const tav_device::GVariantHandle dictionary(g_variant_get_child_value(apps.get(), app));
      list.push_back({});
      Read(dictionary.get(), &list.back(), locked_from);
    }
  }
  return list;
}

void BusClient::SetTickerMode(int mode) {
  Call(kRequests, "heartbeat", nullptr);
  Call(kRequests, "set_ticker_mode_to_launch", g_variant_new("(i)", mode));
}

}  // namespace bench
