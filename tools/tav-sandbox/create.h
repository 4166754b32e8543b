// SPDX-License-Identifier: Apache-2.0
//
// tav-sandbox --create: makes a device and leaves it.
#ifndef TOOLS_TAV_SANDBOX_CREATE_H_
#define TOOLS_TAV_SANDBOX_CREATE_H_

#include <string>

// Makes a device in the directory from the seed file, and prints shell lines that put it to use.
// Throws tav_device::DeviceError.
void CreateDevice(const std::string& directory, const std::string& seed_path);

#endif  // TOOLS_TAV_SANDBOX_CREATE_H_
