// SPDX-License-Identifier: Apache-2.0
//
// A device of the test's own: a device root in a temporary directory, gone with the test.
#ifndef TESTS_SUPPORT_DEVICE_H_
#define TESTS_SUPPORT_DEVICE_H_

#include <filesystem>
#include <string>
#include <vector>

#include "support/app.h"
#include "support/log.h"

namespace test {

// One device for each process: the library keeps its first connection, so that a second device
// would be answered from the first one's database. ctest runs every test in its own process.
class Device {
 public:
  // A device with an empty database, no settings but "no factory reset", and a log that writes
  // every level.
  Device();
  ~Device();
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;

  Device& Install(const App& app);
  // The same for many, in one transaction.
  Device& InstallAll(const std::vector<App>& apps);
  Device& Configure(const std::string& name, const std::string& value);
  Device& Sql(const std::string& statements);
  Device& Setting(const std::string& key, int value);
  Device& Setting(const std::string& key, const std::string& value);
  Device& Unset(const std::string& key);
  Device& FactoryReset(int type) { return Setting("db/tav/factory_reset", type); }
  Device& Write(const std::string& path, const std::string& content);

  const std::filesystem::path& Root() const { return m_root; }
  std::filesystem::path DatabaseFile() const;
  const Log& GetLog() const { return m_log; }
  Log& GetLog() { return m_log; }

 private:
  std::filesystem::path m_root;
  Log m_log;
};

}  // namespace test

#endif  // TESTS_SUPPORT_DEVICE_H_
