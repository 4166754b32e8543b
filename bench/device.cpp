// SPDX-License-Identifier: Apache-2.0
#include "device.h"

#include <sqlite3.h>
#include <stdlib.h>

#include <filesystem>
#include <stdexcept>

#include "device/database.h"
#include "device/root.h"
#include "device/seed.h"

namespace bench {
namespace {

constexpr std::chrono::seconds kStartTime(10);

std::string MakeDirectory() {
  std::string place = (std::filesystem::temp_directory_path() / "tav-bench-XXXXXX").string();
  if (mkdtemp(place.data()) == nullptr) throw std::runtime_error("no temporary directory");
  return place;
}

std::string Numbered(const std::string& text, int app) {
  const std::string digits = std::to_string(app);
  return text + std::string(5 - digits.size(), '0') + digits;
}

// Texts of the lengths that a service writes; every column of the record has a value.
tav_device::App MakeApp(int number) {
  tav_device::App app;
  const auto set = [&](const char* column, tav_device::Cell value) {
    app.cells.at(tav_device::FindColumn(column).value()) = std::move(value);
  };
  set("id", IdOf(number));
  set("title", Numbered("An app for the evening ", number));
  set("run_title", RunTitleOf(number));
  set("version", "1." + std::to_string(number % 40) + ".3");
  set("install_date", "2024-05-17 18:30:00");
  set("launch_date", "2024-06-01 20:15:00");
  set("tizen_id", Numbered("exampleapp", number) + ".main");
  set("pkgname", Numbered("exampleapp", number));
  set("size", 1000 + number);
  set("app_index", (number * 7919) % 100003);
  set("app_featured", 1);
  set("app_type", 2);
  set("limit_age", number % 19);
  set("use_count", number % 50);
  set("icon_path", "/opt/usr/apps/" + Numbered("exampleapp", number) + "/shared/res/icon.png");
  set("install_path", "/opt/usr/apps/" + Numbered("exampleapp", number) + "/res/wgt");
  set("widget_category", "lifestyle");
  set("install_type", "web");
  set("hbbTV", "off");
  set("hybrid_app", Numbered("org.example.native", number));
  set("reserved_string_1", "mandatory");
  set("reserved_string_2", "splash");
  set("reserved_string_4", "yes");
  set("reserved_string_6", "{\"from\":\"home\"}");
  set("reserved_string_9", Numbered("content", number));
  set("reserved_string_16", Numbered("android", number));
  set("reserved_string_24", "store");
  set("is_removable", 1);
  set("is_network", 1);
  set("is_multi_screen2", number % 2);
  set("reserved_tinyint_1", 1);
  set("reserved_int_1", 4);
  return app;
}

tav_device::Seed MakeSeed(int apps) {
  tav_device::Seed seed;
  seed.settings = {{"db/tav/factory_reset", 0},
                   {"db/appstore/ratingvalue", std::string("15+")},
                   {"db/tav/app_sync_status", 1},
                   {"memory/tav/boot_status", 1}};
  for (int app = 0; app < apps; ++app) seed.apps.push_back(MakeApp(app));
  return seed;
}

void Run(const std::string& file, const std::string& statements) {
  sqlite3* opened = nullptr;
  const int result = sqlite3_open(file.c_str(), &opened);
  const std::unique_ptr<sqlite3, int (*)(sqlite3*)> database(opened, sqlite3_close);
  if (result != SQLITE_OK ||
      sqlite3_exec(opened, statements.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(opened));
  }
}

}  // namespace

std::string IdOf(int app) {
  return Numbered("org.example.app", app);
}

std::string RunTitleOf(int app) {
  return Numbered("run", app);
}

Device::Device() : m_directory(MakeDirectory()) {
  unsetenv("DLOG_LEVEL");
  unsetenv("DLOG_FILE");
  m_root = tav_device::CreateDeviceRoot(m_directory + "/device", MakeSeed(0));
  setenv(tav_device::kRootVariable, m_root.c_str(), 1);
}

Device::~Device() {
  m_service.reset();
  m_bus.reset();
  std::error_code ignored;
  std::filesystem::remove_all(m_directory, ignored);
}

std::string Device::DatabaseFile() const {
  return File(tav_device::kDatabaseFile);
}

// In the same file, since the library keeps its connection to it.
void Device::Fill(int apps) {
  if (apps == m_apps) return;
  m_apps = apps;
  const std::string filled = m_directory + "/filled.db";
  std::filesystem::remove(filled);
  tav_device::WriteDatabase(filled, MakeSeed(apps));
  Run(DatabaseFile(), "attach '" + filled +
                          "' as filled; delete from main.widgetinfo;"
                          "insert into main.widgetinfo select * from filled.widgetinfo;"
                          "detach filled; vacuum");
}

void Device::StartService() {
  m_bus = std::make_unique<tav_device::PrivateBus>(m_directory);
  setenv(tav_device::kBusVariable, m_bus->Address().c_str(), 1);
  tav_device::Launch launch;
  launch.arguments = {TAVCORE_SIM, "--ready-file", "none", "--benchmark"};
  m_service = tav_device::StartUntilReady(launch, "--ready-fd", kStartTime).child;
}

}  // namespace bench
