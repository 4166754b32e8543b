// SPDX-License-Identifier: Apache-2.0
#include "support/device.h"

#include <vconf.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "device/schema.h"
#include "support/database.h"

namespace test {
namespace {

std::filesystem::path MakeRoot() {
  static bool has_device = false;
  if (has_device) throw std::logic_error("one device for each process: run the tests with ctest");
  has_device = true;

  std::string place = (std::filesystem::temp_directory_path() / "tav-test-XXXXXX").string();
  if (mkdtemp(place.data()) == nullptr) throw std::runtime_error("no temporary directory");
  setenv("TAV_DEVICE_ROOT", place.c_str(), 1);
  setenv("DLOG_FILE", (place + "/log").c_str(), 1);
  setenv("DLOG_LEVEL", "V", 1);
  return place;
}

void Require(int result, const std::string& what) {
  if (result != 0) throw std::runtime_error(what);
}

}  // namespace

Device::Device() : m_root(MakeRoot()), m_log(m_root / "log") {
  std::filesystem::create_directories(DatabaseFile().parent_path());
  Database(DatabaseFile()).CreateTables();
  Write("log", "");
  FactoryReset(0);
}

Device::~Device() {
  std::error_code ignored;
  std::filesystem::remove_all(m_root, ignored);
}

std::filesystem::path Device::DatabaseFile() const {
  return m_root / tav_device::kDatabaseFile;
}

Device& Device::Install(const App& app) {
  Database(DatabaseFile()).Insert(app);
  return *this;
}

Device& Device::InstallAll(const std::vector<App>& apps) {
  Database database(DatabaseFile());
  database.Run("begin");
  for (const App& app : apps) database.Insert(app);
  database.Run("commit");
  return *this;
}

Device& Device::Configure(const std::string& name, const std::string& value) {
  Database(DatabaseFile())
      .Run("insert or replace into TAVConfigTable (name, value) values (?, ?)", {name, value});
  return *this;
}

Device& Device::Sql(const std::string& statements) {
  Database(DatabaseFile()).Run(statements);
  return *this;
}

Device& Device::Setting(const std::string& key, int value) {
  Require(vconf_set_int(key.c_str(), value), "set " + key);
  return *this;
}

Device& Device::Setting(const std::string& key, const std::string& value) {
  Require(vconf_set_str(key.c_str(), value.c_str()), "set " + key);
  return *this;
}

Device& Device::Unset(const std::string& key) {
  Require(vconf_unset(key.c_str()), "unset " + key);
  return *this;
}

Device& Device::Write(const std::string& path, const std::string& content) {
  const std::filesystem::path file = m_root / path;
  std::filesystem::create_directories(file.parent_path());
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  out << content;
  if (!out.flush()) throw std::runtime_error("write " + file.string());
  return *this;
}

}  // namespace test
