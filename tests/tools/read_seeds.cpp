// SPDX-License-Identifier: Apache-2.0
//
// read_seeds: reads the seeds whose paths come on standard input, a line each, and says of each
// "good" or what is wrong with it, on a line. With --columns it says the columns of the apps table.
#include <iostream>
#include <string>

#include "device/error.h"
#include "device/seed.h"

int main(int argc, char**) {
  if (argc > 1) {
    for (const tav_device::Column& column : tav_device::kAppColumns) {
      const bool is_text = column.kind == tav_device::ColumnKind::kText;
      std::cout << column.name << (is_text ? " text " : " number ") << column.initial << "\n";
    }
    return 0;
  }
  std::string path;
  while (std::getline(std::cin, path)) {
    try {
      tav_device::ReadSeedFile(path);
      std::cout << "good\n";
    } catch (const tav_device::DeviceError& error) {
      std::cout << error.what() << "\n";
    }
  }
  return 0;
}
