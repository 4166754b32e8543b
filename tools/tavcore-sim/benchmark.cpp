// SPDX-License-Identifier: Apache-2.0
//
// Queries with SQLite itself. A dictionary has an entry for each column that the library selects.
#include "benchmark.h"

#include <tzplatform_config.h>

#include "device/error.h"
#include "device/schema.h"
#include "names.h"

namespace tavcore {
namespace {

constexpr std::size_t kColumns = 71;  // the others are not part of a record
constexpr char kFailed[] = "org.freedesktop.DBus.Error.Failed";

constexpr char kBenchmarkIntrospection[] = R"xml(<node>
  <interface name="org.tizen.tv.tavcore.server.benchmark">
    <method name="app">
      <arg type="s" name="app" direction="in"/>
      <arg type="a{sv}" name="record" direction="out"/>
    </method>
    <method name="apps">
      <arg type="i" name="first" direction="in"/>
      <arg type="i" name="count" direction="in"/>
      <arg type="aa{sv}" name="records" direction="out"/>
    </method>
  </interface>
</node>)xml";

std::string Select() {
  std::string columns;
  for (std::size_t i = 0; i < kColumns; ++i) {
    columns += std::string(i == 0 ? "" : ",") + tav_device::kAppColumns[i].name;
  }
  return "select " + columns + " from " + tav_device::kAppsTable +
         " where install_state = 3 and is_app_available = 1 and is_need_reset = 0 ";
}

tav_device::StatementHandle Prepare(sqlite3* database, const std::string& sql) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
    throw tav_device::DeviceError(sqlite3_errmsg(database));
  }
  return tav_device::StatementHandle(statement);
}

// The current row as the entries of a dictionary.
void AddRow(GVariantBuilder* dictionary, sqlite3_stmt* row) {
  for (std::size_t i = 0; i < kColumns; ++i) {
    const tav_device::Column& column = tav_device::kAppColumns[i];
    const int position = static_cast<int>(i);
    if (column.kind == tav_device::ColumnKind::kInteger) {
      g_variant_builder_add(dictionary, "{sv}", column.name,
                            g_variant_new_int32(sqlite3_column_int(row, position)));
    } else {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, position));
      g_variant_builder_add(dictionary, "{sv}", column.name,
                            g_variant_new_string(text != nullptr ? text : ""));
    }
  }
}

GVariant* App(sqlite3* database, GVariant* parameters) {
  const char* id = nullptr;
  g_variant_get(parameters, "(&s)", &id);
  const auto rows = Prepare(database, Select() + "and (id = ?1 or tizen_id = ?1)");
  sqlite3_bind_text(rows.get(), 1, id, -1, SQLITE_STATIC);
  GVariantBuilder dictionary;
  g_variant_builder_init(&dictionary, G_VARIANT_TYPE_VARDICT);
  if (sqlite3_step(rows.get()) == SQLITE_ROW) AddRow(&dictionary, rows.get());
  return g_variant_new("(a{sv})", &dictionary);
}

GVariant* Apps(sqlite3* database, GVariant* parameters) {
  gint32 first = 0;
  gint32 count = 0;
  g_variant_get(parameters, "(ii)", &first, &count);
  const auto rows =
      Prepare(database, Select() + "and is_hidden = 0 order by app_index asc limit ?,?");
  sqlite3_bind_int(rows.get(), 1, first);
  sqlite3_bind_int(rows.get(), 2, count);
  GVariantBuilder list;
  g_variant_builder_init(&list, G_VARIANT_TYPE("aa{sv}"));
  while (sqlite3_step(rows.get()) == SQLITE_ROW) {
    g_variant_builder_open(&list, G_VARIANT_TYPE_VARDICT);
    AddRow(&list, rows.get());
    g_variant_builder_close(&list);
  }
  return g_variant_new("(aa{sv})", &list);
}

}  // namespace

const char* Benchmark::Introspection() {
  return kBenchmarkIntrospection;
}

sqlite3* Benchmark::Database() {
  if (m_database) return m_database.get();
  const char* directory = tzplatform_getenv(TZPLATFORM_DATABASE_DIRECTORY);
  if (directory == nullptr) throw tav_device::DeviceError("there is no directory of databases");
  sqlite3* database = nullptr;
  const int result = sqlite3_open_v2((std::string(directory) + kDatabaseName).c_str(), &database,
                                     SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
  tav_device::DatabaseHandle opened(database);
  if (result != SQLITE_OK) throw tav_device::DeviceError(sqlite3_errmsg(database));
  m_database = std::move(opened);
  return database;
}

void Benchmark::Answer(const std::string& method, GVariant* parameters,
                       GDBusMethodInvocation* invocation) {
  try {
    const auto answer = method == "app" ? App : Apps;
    g_dbus_method_invocation_return_value(invocation, answer(Database(), parameters));
  } catch (const tav_device::DeviceError& error) {
    g_dbus_method_invocation_return_dbus_error(invocation, kFailed, error.what());
  }
}

}  // namespace tavcore
