// SPDX-License-Identifier: Apache-2.0
//
// Another process's part in the tests: sets a setting to each number from 1 to the given one, or
// to a text with each of them behind it.
#include <vconf.h>

#include <cstdlib>
#include <string>

int main(int argc, char** argv) {
  if (argc != 3 && argc != 4) return 2;
  const int last = static_cast<int>(std::strtol(argv[2], nullptr, 10));
  for (int value = 1; value <= last; ++value) {
    const int result = argc == 3
                           ? vconf_set_int(argv[1], value)
                           : vconf_set_str(argv[1], (argv[3] + std::to_string(value)).c_str());
    if (result != VCONF_OK) return 1;
  }
  return 0;
}
