// SPDX-License-Identifier: Apache-2.0
//
// Makes a device and says how to use it.
#include "create.h"

#include <iostream>

#include "device/handles.h"
#include "device/root.h"
#include "device/seed.h"

void CreateDevice(const std::string& directory, const std::string& seed_path) {
  const tav_device::Seed seed = tav_device::ReadSeedFile(seed_path);
  const std::string root = tav_device::CreateDeviceRoot(directory, seed);

  // The output is itself a shell script, so that eval can take it.
  const tav_device::GTextHandle quoted(g_shell_quote(root.c_str()));
  std::cout << "# The device is made; apps in it: " << seed.apps.size() << ". To use it:\n"
            << "export " << tav_device::kRootVariable << "=" << quoted.get() << "\n";
}
