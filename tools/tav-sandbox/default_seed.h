// SPDX-License-Identifier: Apache-2.0
//
// Where the seed lies that a device is made from when nobody names one.
#ifndef TOOLS_TAV_SANDBOX_DEFAULT_SEED_H_
#define TOOLS_TAV_SANDBOX_DEFAULT_SEED_H_

#include <string>

// The path of device.json, found from the program's own place so that an installed tree may be
// moved. Throws tav_device::DeviceError when the program cannot find its own place.
std::string DefaultSeedPath();

#endif  // TOOLS_TAV_SANDBOX_DEFAULT_SEED_H_
