// SPDX-License-Identifier: Apache-2.0
//
// Writes the database of a device.
#ifndef TOOLS_DEVICE_DATABASE_H_
#define TOOLS_DEVICE_DATABASE_H_

#include <string>

#include "device/seed.h"

namespace tav_device {

// Makes a new database file with the apps and the configuration values of the seed, in one
// transaction. Throws DeviceError.
void WriteDatabase(const std::string& path, const Seed& seed);

}  // namespace tav_device

#endif  // TOOLS_DEVICE_DATABASE_H_
