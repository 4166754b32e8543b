// SPDX-License-Identifier: Apache-2.0
// Another process's part in the tests: sets an int key to each number from 1 to the given one.
#include <vconf.h>

#include <cstdlib>

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const int last = static_cast<int>(std::strtol(argv[2], nullptr, 10));
  for (int value = 1; value <= last; ++value) {
    if (vconf_set_int(argv[1], value) != VCONF_OK) return 1;
  }
  return 0;
}
