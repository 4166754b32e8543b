// SPDX-License-Identifier: Apache-2.0
//
// Makes a device root: the directory from which the host's platform libraries read everything
// that a device would have.
#ifndef TOOLS_DEVICE_ROOT_H_
#define TOOLS_DEVICE_ROOT_H_

#include <string>

#include "device/seed.h"

namespace tav_device {

// The environment variable that tells the platform libraries where the device root is.
inline constexpr char kRootVariable[] = "TAV_DEVICE_ROOT";

// Makes the device at a directory that does not exist yet or is empty, and returns the
// directory's absolute path. It appears there whole or not at all. The directory is its owner's
// alone. Throws DeviceError. While it runs, TAV_DEVICE_ROOT points at the unfinished device: no
// other thread may use the environment or the platform libraries meanwhile.
std::string CreateDeviceRoot(const std::string& directory, const Seed& seed);

}  // namespace tav_device

#endif  // TOOLS_DEVICE_ROOT_H_
