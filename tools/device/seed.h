// SPDX-License-Identifier: Apache-2.0
//
// What a device is made from: plain records, filled by hand in a test or from a JSON file.
#ifndef TOOLS_DEVICE_SEED_H_
#define TOOLS_DEVICE_SEED_H_

#include <array>
#include <map>
#include <string>
#include <variant>
#include <vector>

#include "device/schema.h"

namespace tav_device {

// A value of the apps table; the first alternative is SQL NULL.
using Cell = std::variant<std::monostate, int, std::string>;

// A setting or a feature.
using Scalar = std::variant<int, std::string>;

// One row of the apps table, its cells in the order of kAppColumns.
struct App {
  std::array<Cell, kAppColumnCount> cells;

  App();  // every column at its first value
};

struct Package {
  std::string version;
  std::string icon;
};

struct Seed {
  std::vector<App> apps;  // in the order in which their rows are added
  std::map<std::string, std::string> config;
  std::map<std::string, Scalar> settings;
  std::map<std::string, Scalar> custom_features;
  std::map<int, int> value_features;
  std::map<std::string, Package> packages;
  std::vector<std::string> blacklist;
};

// Reads a seed from a JSON file. Throws DeviceError, whose text names the file, the line, the
// column and the field at fault.
Seed ReadSeedFile(const std::string& path);

}  // namespace tav_device

#endif  // TOOLS_DEVICE_SEED_H_
