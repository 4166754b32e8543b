// SPDX-License-Identifier: Apache-2.0
//
// Finds the default seed beside the running program.
#include "default_seed.h"

#include <filesystem>

#include "device/error.h"

std::string DefaultSeedPath() {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) throw tav_device::DeviceError("/proc/self/exe: " + error.message());
  return (program.parent_path() / TAV_SEED_FROM_PROGRAM).lexically_normal().string();
}
